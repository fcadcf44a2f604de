#pragma once

#include "Platform/Linux/Direct3D/DeviceChild.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Platform::Direct3D {

/// A program as a driver takes it. Pipelines don't need it any more once they are made.
class ShaderModule {
public:
    /// Throws VulkanError.
    ShaderModule(GraphicsDevice& device, std::span<const std::uint32_t> words);
    ~ShaderModule();
    ShaderModule(const ShaderModule&) = delete;
    ShaderModule& operator=(const ShaderModule&) = delete;

    VkShaderModule Handle() const { return handle_; }

private:
    GraphicsDevice& device_;
    VkShaderModule handle_ = VK_NULL_HANDLE;
};

/// A program of one stage, as pipelines need it. Shaders with the same words share one, and so their pipelines.
class ShaderCode {
public:
    /// `words` is a program that FindEntryPoint accepts. PipelineCache::Code makes them.
    ShaderCode(GraphicsDevice& device, std::vector<std::uint32_t> words, std::string entryPoint);
    ~ShaderCode();
    ShaderCode(const ShaderCode&) = delete;
    ShaderCode& operator=(const ShaderCode&) = delete;

    std::span<const std::uint32_t> Words() const { return words_; }
    const char* EntryPoint() const { return entryPoint_.c_str(); }
    /// A number that no other program of the process has or had.
    std::uint64_t Id() const { return id_; }

private:
    GraphicsDevice& device_;
    const std::vector<std::uint32_t> words_;
    const std::string entryPoint_;
    const std::uint64_t id_;
};

/// The entry point of a SPIR-V program for a stage; empty for bytes that are no such program.
std::string FindEntryPoint(std::span<const std::uint32_t> words, VkShaderStageFlagBits stage);

template <class Interface>
class Shader final : public DeviceChild<Interface> {
public:
    Shader(const char* className, IGraphicsObject& owner, std::shared_ptr<const ShaderCode> code)
        : DeviceChild<Interface>(className, owner), code_(std::move(code)) {}

    const ShaderCode& Code() const { return *code_; }

private:
    const std::shared_ptr<const ShaderCode> code_;
};

using VertexShader = Shader<ID3D11VertexShader>;
using PixelShader = Shader<ID3D11PixelShader>;
using ComputeShader = Shader<ID3D11ComputeShader>;

}  // namespace Platform::Direct3D
