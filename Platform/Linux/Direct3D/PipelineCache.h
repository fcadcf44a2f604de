#pragma once

#include "Platform/Linux/Direct3D/Bindings.h"
#include "Platform/Linux/Direct3D/States.h"
#include "Platform/Linux/Direct3D/Vulkan.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Platform::Direct3D {

class GraphicsDevice;
class ShaderCode;

/// What tells one drawing pipeline from another.
struct DrawingKey {
    std::uint64_t vertexProgram;
    std::uint64_t pixelProgram;
    std::vector<VertexElement> elements;
    std::array<UINT, vertexSlots> strides;
    D3D11_PRIMITIVE_TOPOLOGY topology;
    VkFormat targetFormat;
    D3D11_CULL_MODE cull;
    bool frontIsCounterClockwise;
    bool clampsDepth;
    bool blends;
    std::array<D3D11_BLEND, 4> factors;  ///< Colour source and target, alpha source and target; zero without blending.
    UINT8 writeMask;
    auto operator<=>(const DrawingKey&) const = default;
};

/// A pipeline that ends when nobody refers to it any more.
class Pipeline {
public:
    Pipeline(GraphicsDevice& device, VkPipeline handle) : device_(device), handle_(handle) {}
    ~Pipeline();
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;
    VkPipeline Handle() const { return handle_; }

private:
    GraphicsDevice& device_;
    VkPipeline handle_;
};

/// The pipelines of a device, each made when first needed. With the device locked, but for Code and Forget.
class PipelineCache {
public:
    explicit PipelineCache(GraphicsDevice& device);
    ~PipelineCache();
    PipelineCache(const PipelineCache&) = delete;
    PipelineCache& operator=(const PipelineCache&) = delete;

    /// The program with these words, which FindEntryPoint accepts: one that still is in use, else a new one. Any
    /// thread.
    std::shared_ptr<const ShaderCode> Code(std::vector<std::uint32_t> words, std::string entryPoint);

    VkPipeline Drawing(const DrawingKey& key, const ShaderCode& vertex, const ShaderCode& pixel);
    VkPipeline Computing(const ShaderCode& program);
    /// Lets go of the pipelines of a program that ends, once the device has finished with them. Any thread.
    void Forget(std::uint64_t program) noexcept;

    VkDescriptorSetLayout DrawingSet() const { return drawing_.set; }
    VkPipelineLayout DrawingLayout() const { return drawing_.pipeline; }
    VkDescriptorSetLayout ComputingSet() const { return computing_.set; }
    VkPipelineLayout ComputingLayout() const { return computing_.pipeline; }

private:
    struct Layouts {
        VkDescriptorSetLayout set = VK_NULL_HANDLE;
        VkPipelineLayout pipeline = VK_NULL_HANDLE;
    };
    enum class Storage : bool { No, Yes };
    Layouts MakeLayouts(VkShaderStageFlags stages, Storage storage);
    std::shared_ptr<const Pipeline> MakeDrawing(const DrawingKey& key, const ShaderCode& vertex,
                                                const ShaderCode& pixel);

    GraphicsDevice& device_;
    Layouts drawing_;
    Layouts computing_;
    std::vector<std::weak_ptr<const ShaderCode>> codes_;
    std::map<DrawingKey, std::shared_ptr<const Pipeline>> drawings_;
    std::map<std::uint64_t, std::shared_ptr<const Pipeline>> computings_;
};

}  // namespace Platform::Direct3D
