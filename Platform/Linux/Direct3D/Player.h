#pragma once

#include "Platform/Linux/Direct3D/GraphicsState.h"

namespace Platform::Direct3D {

/// Turns a context's commands into Vulkan's, in the device's open batch. All members take the device's lock and throw
/// VulkanError. What Direct3D leaves out for want of a target, a program and the like is left out.
class Player {
public:
    explicit Player(GraphicsDevice& device) : device_(device) {}

    void Draw(const GraphicsState& state, UINT vertexCount, UINT firstVertex);
    /// The part of it that falls into `area`, on another image than the state's target has now.
    void Draw(const GraphicsState& state, UINT vertexCount, UINT firstVertex, const std::shared_ptr<Texture>& target,
              const PixelRect& area);
    void Dispatch(const GraphicsState& state, UINT x, UINT y, UINT z);
    void Clear(const std::shared_ptr<Texture>& target, const FLOAT color[4]);
    /// The rectangle lies within the source and, put at (x, y), within the target.
    void Copy(Texture2D& target, UINT x, UINT y, Texture2D& source, const PixelRect& rect);

private:
    VkDescriptorSet BindResources(VkCommandBuffer commands, VkDescriptorSetLayout layout,
                                  const StageResources& resources,
                                  const std::array<ComPtr<Buffer>, constantSlots>* more,
                                  const std::array<ComPtr<UnorderedAccessView>, storageSlots>* storage,
                                  const Texture* written);
    /// Stands in for a register that nothing is bound to: reads give zero.
    const std::shared_ptr<Texture>& Nothing();
    const std::shared_ptr<Sampler>& PlainSampler();
    HostSlice Zeros();

    GraphicsDevice& device_;
    std::shared_ptr<Texture> nothing_;
    std::shared_ptr<Sampler> plainSampler_;
    HostSlice zeros_{};
    std::uint64_t zerosBatch_ = 0;
};

}  // namespace Platform::Direct3D
