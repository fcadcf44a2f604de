#pragma once

#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/Direct3D/HostBuffer.h"

#include <memory>
#include <vector>

namespace Platform::Direct3D {

/// A run of commands that goes to the device at once, with all that it needs while the device works on it. Reused when
/// the device has finished. With the device locked.
class Batch {
public:
    explicit Batch(GraphicsDevice& device);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    bool IsOpen() const noexcept { return state_ == State::Open; }

    /// The commands, begun if need be; waits for the device if it still works on the batch's former life.
    VkCommandBuffer Open();
    void Submit(VkSemaphore waitFor, VkPipelineStageFlags2 waitStages, VkSemaphore signal);
    /// Waits for the device and lets go of what was kept.
    void Await();

    void Keep(std::shared_ptr<const void> object) { kept_.push_back(std::move(object)); }
    HostSlice Reserve(VkDeviceSize size, VkDeviceSize alignment);
    /// Of the memory behind Reserve, in use or kept for the next life.
    VkDeviceSize HeldBytes() const noexcept;
    VkDescriptorSet MakeDescriptorSet(VkDescriptorSetLayout layout);

private:
    enum class State { Idle, Open, Submitted };
    void AddDescriptorPool();

    GraphicsDevice& device_;
    State state_ = State::Idle;
    VkCommandPool pool_ = VK_NULL_HANDLE;
    VkCommandBuffer commands_ = VK_NULL_HANDLE;
    VkFence fence_ = VK_NULL_HANDLE;
    std::vector<VkDescriptorPool> descriptorPools_;
    std::size_t descriptorPool_ = 0;  ///< Index of the pool in use.
    std::vector<std::unique_ptr<HostBuffer>> memory_;
    std::size_t block_ = 0;  ///< Index of the block in use.
    VkDeviceSize used_ = 0;  ///< Bytes of that block.
    std::vector<std::shared_ptr<const void>> kept_;
};

}  // namespace Platform::Direct3D
