// The Vulkan objects that lay one picture over another of the same size.
#pragma once

#include "Platform/Linux/Direct3D/Device.h"

#include <memory>

namespace Platform::Direct2D {

/// One for each device, made at first use. Immutable afterwards.
class LayPipeline {
public:
    /// Where the fragment program's first texture lies in the set.
    static constexpr std::uint32_t layerBinding = 16;

    /// Throws Direct3D::VulkanError.
    explicit LayPipeline(std::shared_ptr<Direct3D::GraphicsDevice> device);
    ~LayPipeline();
    LayPipeline(const LayPipeline&) = delete;
    LayPipeline& operator=(const LayPipeline&) = delete;

    /// The device's own, shared by whoever holds it at the time.
    static std::shared_ptr<LayPipeline> Of(const std::shared_ptr<Direct3D::GraphicsDevice>& device);

    VkPipeline Handle() const noexcept { return pipeline_; }
    VkPipelineLayout Layout() const noexcept { return layout_; }
    VkDescriptorSetLayout SetLayout() const noexcept { return setLayout_; }

private:
    void MakeLayouts();
    void MakePipeline();
    void Release() noexcept;

    std::shared_ptr<Direct3D::GraphicsDevice> device_;
    VkDescriptorSetLayout setLayout_ = VK_NULL_HANDLE;
    VkPipelineLayout layout_ = VK_NULL_HANDLE;
    VkPipeline pipeline_ = VK_NULL_HANDLE;
};

}  // namespace Platform::Direct2D
