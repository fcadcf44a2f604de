#include "Platform/Linux/Direct3D/Shader.h"

#include "Platform/Linux/Direct3D/PipelineCache.h"
#include "Platform/Linux/Direct3D/SpirvModule.h"

#include <cstring>

namespace Platform::Direct3D {

namespace {

// SPIR-V, version 1.6: 3.3 (execution models).
constexpr std::uint32_t modelVertex = 0;
constexpr std::uint32_t modelFragment = 4;
constexpr std::uint32_t modelCompute = 5;

std::uint32_t ModelOf(VkShaderStageFlagBits stage) {
    switch (stage) {
        case VK_SHADER_STAGE_VERTEX_BIT:
            return modelVertex;
        case VK_SHADER_STAGE_FRAGMENT_BIT:
            return modelFragment;
        default:
            return modelCompute;
    }
}

std::uint64_t NextId() {
    static std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace

std::string FindEntryPoint(std::span<const std::uint32_t> words, VkShaderStageFlagBits stage) {
    for (const Spirv::Instruction& each : Spirv::Read(words).value_or(std::vector<Spirv::Instruction>())) {
        // Words: operation, execution model, function, name.
        if (each.op != Spirv::OpEntryPoint || each.words.size() <= 3 || each.words[1] != ModelOf(stage)) continue;
        const std::span name = each.words.subspan(3);
        const auto* const text = reinterpret_cast<const char*>(name.data());
        return {text, strnlen(text, name.size_bytes())};
    }
    return {};
}

ShaderModule::ShaderModule(GraphicsDevice& device, std::span<const std::uint32_t> words) : device_(device) {
    auto info = Typed<VkShaderModuleCreateInfo>(VK_STRUCTURE_TYPE_SHADER_MODULE_CREATE_INFO);
    info.codeSize = words.size_bytes();
    info.pCode = words.data();
    Check(vkCreateShaderModule(device.Handle(), &info, nullptr, &handle_));
}

ShaderModule::~ShaderModule() {
    vkDestroyShaderModule(device_.Handle(), handle_, nullptr);
}

ShaderCode::ShaderCode(GraphicsDevice& device, std::vector<std::uint32_t> words, std::string entryPoint)
    : device_(device), words_(std::move(words)), entryPoint_(std::move(entryPoint)), id_(NextId()) {}

ShaderCode::~ShaderCode() {
    device_.Pipelines().Forget(id_);
}

}  // namespace Platform::Direct3D
