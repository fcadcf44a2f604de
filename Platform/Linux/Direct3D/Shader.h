#pragma once

#include "Platform/Linux/Direct3D/DeviceChild.h"

#include <span>
#include <string>

namespace Platform::Direct3D {

/// A program of one stage, as pipelines need it.
class ShaderCode {
public:
    /// `words` is a program that FindEntryPoint accepts. Throws VulkanError.
    ShaderCode(GraphicsDevice& device, std::span<const std::uint32_t> words, std::string entryPoint);
    ~ShaderCode();
    ShaderCode(const ShaderCode&) = delete;
    ShaderCode& operator=(const ShaderCode&) = delete;

    VkShaderModule Module() const { return module_; }
    const char* EntryPoint() const { return entryPoint_.c_str(); }
    /// A number that no other program of the process has or had.
    std::uint64_t Id() const { return id_; }

private:
    GraphicsDevice& device_;
    VkShaderModule module_ = VK_NULL_HANDLE;
    const std::string entryPoint_;
    const std::uint64_t id_;
};

/// The entry point of a SPIR-V program for a stage; empty for bytes that are no such program.
std::string FindEntryPoint(std::span<const std::uint32_t> words, VkShaderStageFlagBits stage);

template <class Interface>
class Shader final : public DeviceChild<Interface> {
public:
    Shader(const char* className, IGraphicsObject& owner, std::span<const std::uint32_t> words, std::string entryPoint)
        : DeviceChild<Interface>(className, owner), code_(*owner.Graphics(), words, std::move(entryPoint)) {}

    const ShaderCode& Code() const { return code_; }

private:
    ShaderCode code_;
};

using VertexShader = Shader<ID3D11VertexShader>;
using PixelShader = Shader<ID3D11PixelShader>;
using ComputeShader = Shader<ID3D11ComputeShader>;

}  // namespace Platform::Direct3D
