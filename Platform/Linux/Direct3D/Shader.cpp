#include "Platform/Linux/Direct3D/Shader.h"

#include "Platform/Linux/Direct3D/PipelineCache.h"

#include <cstring>

namespace Platform::Direct3D {

namespace {

// SPIR-V, version 1.6: 2.3 (physical layout), 3.3 (execution models).
constexpr std::uint32_t magicNumber = 0x07230203;
constexpr std::size_t headerWords = 5;
constexpr std::uint32_t opEntryPoint = 15;
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
    if (words.size() <= headerWords || words[0] != magicNumber) return {};
    for (std::size_t at = headerWords; at < words.size();) {
        const std::size_t length = words[at] >> 16;
        if (length == 0 || length > words.size() - at) return {};
        // Words: operation, execution model, function, name.
        if ((words[at] & 0xFFFF) == opEntryPoint && length > 3 && words[at + 1] == ModelOf(stage)) {
            const std::span name = words.subspan(at + 3, length - 3);
            const auto* const text = reinterpret_cast<const char*>(name.data());
            return {text, strnlen(text, name.size_bytes())};
        }
        at += length;
    }
    return {};
}

ShaderCode::ShaderCode(GraphicsDevice& device, std::span<const std::uint32_t> words, std::string entryPoint)
    : device_(device), entryPoint_(std::move(entryPoint)), id_(NextId()) {
    auto info = Typed<VkShaderModuleCreateInfo>(VK_STRUCTURE_TYPE_SHADER_MODULE_CREATE_INFO);
    info.codeSize = words.size_bytes();
    info.pCode = words.data();
    Check(vkCreateShaderModule(device.Handle(), &info, nullptr, &module_));
}

ShaderCode::~ShaderCode() {
    device_.Pipelines().Forget(id_);
    vkDestroyShaderModule(device_.Handle(), module_, nullptr);
}

}  // namespace Platform::Direct3D
