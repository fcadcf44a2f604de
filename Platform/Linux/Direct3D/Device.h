// The Vulkan device behind a Direct3D device, shared by what draws and composes on it.
#pragma once

#include "Platform/Linux/Direct3D/Texture.h"
#include "Platform/Linux/Direct3D/UnfinishedPicture.h"
#include "Platform/Linux/Direct3D/Vulkan.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace Platform::Direct3D {

class Batch;
class PipelineCache;
struct HostSlice;

/// One device with one queue. Commands are recorded into an open batch in the order of the calls and run in that order;
/// Flush hands the batch to the device. All members may be called on any thread: each call takes the device's lock,
/// which a caller may hold across several of them.
class GraphicsDevice {
public:
    /// The machine's best device: the first that is hardware, else a software one. Throws VulkanError
    /// (VK_ERROR_INCOMPATIBLE_DRIVER) when there is none that offers what is needed here.
    static std::shared_ptr<GraphicsDevice> Create();

    /// Whether Create has ever succeeded in this process. Any thread.
    static bool WasEverMade() noexcept;

    /// The device behind a Direct3D device or DXGI device of ours, or behind any object made by one (texture, surface,
    /// swap chain); null for a foreign object.
    static std::shared_ptr<GraphicsDevice> From(IUnknown* object);

    ~GraphicsDevice();
    GraphicsDevice(const GraphicsDevice&) = delete;
    GraphicsDevice& operator=(const GraphicsDevice&) = delete;

    VkInstance Instance() const noexcept { return instance_; }
    VkPhysicalDevice PhysicalDevice() const noexcept { return physicalDevice_; }
    VkDevice Handle() const noexcept { return device_; }
    VkQueue Queue() const noexcept { return queue_; }
    std::uint32_t QueueFamily() const noexcept { return queueFamily_; }
    const std::string& Name() const noexcept { return name_; }
    /// Whether the processor does the work: then copies through host memory cost no more than an image on the device.
    bool IsSoftware() const noexcept { return isSoftware_; }

    /// The lock under which all recording and submitting happens. It nests. Lock order: this one is taken before that
    /// of handle signals and after any lock of a caller.
    [[nodiscard]] std::unique_lock<std::recursive_mutex> Lock() { return std::unique_lock(mutex_); }

    /// The same lock without an owner object; each Enter is paired with a Leave on the same thread.
    void Enter() { mutex_.lock(); }
    void Leave() { mutex_.unlock(); }

    /// Leaves a picture until its pixels are needed or anything is recorded beside. It takes the place of an earlier
    /// one that was given up; any other is finished first.
    void PutOff(UnfinishedPicture picture);
    /// Sets the device to work on the picture that was put off, without waiting for anything.
    void BeginPicture();
    /// Adds a step to the picture that was put off: `draw` lays something over the buffer's pixels. False if there is
    /// no such picture of this buffer.
    bool AddToPicture(const std::shared_ptr<Texture>& buffer, std::function<void()> draw);
    bool IsPutOff(const Texture& buffer);
    /// The picture of this buffer, if it is put off, isn't wanted any more: the next one may take its place.
    void GiveUp(const Texture& buffer);
    /// Draws the picture that was put off. A step that fails is left out.
    void FinishPicture();
    /// Forgets it, drawn or not, and lets go of what it refers to.
    void DropPicture() noexcept;

    /// Calls `record(VkCommandBuffer)` with the open batch's commands, outside any rendering pass.
    template <class Function>
    void Record(Function&& record) {
        const auto lock = Lock();
        record(OpenCommands());
    }

    /// Keeps an object alive until the device has finished the open batch.
    void Keep(std::shared_ptr<const void> object);

    /// Hands the open batch to the device, if anything was recorded. `waitFor` and `signal` may be null: a semaphore
    /// that the batch waits for ahead of `waitStages`, and one that it signals at its end (for vkQueuePresentKHR).
    void Flush(VkSemaphore waitFor = VK_NULL_HANDLE, VkPipelineStageFlags2 waitStages = VK_PIPELINE_STAGE_2_NONE,
               VkSemaphore signal = VK_NULL_HANDLE);

    /// Flushes, and waits until the device has finished all that was recorded so far.
    void Finish();

    /// Copies rows of pixels into a rectangle of a texture. `pixels` is read before the call returns; `stride` is the
    /// distance of its rows in bytes.
    void Upload(const std::shared_ptr<Texture>& texture, const PixelRect& target, const void* pixels,
                std::size_t stride);

    /// Copies a rectangle of a texture into host memory, waiting for the device.
    void ReadBack(const std::shared_ptr<Texture>& texture, const PixelRect& source, void* pixels, std::size_t stride);

    /// Waits until the pixels of a texture that can be read in place are what was drawn so far. With the device locked
    /// they may be drawn on then. Where the texture's picture was put off, `isUnwanted` is asked between its steps:
    /// true ends the call, which returns false, with the picture still put off.
    bool AwaitPixels(const std::shared_ptr<Texture>& texture, const std::function<bool()>& isUnwanted = nullptr);

    /// Memory for bytes that the open batch reads; it is valid for that batch only. Write with the device locked and
    /// before the batch is flushed.
    HostSlice Reserve(VkDeviceSize size, VkDeviceSize alignment);

    /// Records that what was copied into host memory can be read there once the batch is done.
    static void MakeVisibleToHost(VkCommandBuffer commands);

    /// A descriptor set that is valid for the open batch only.
    VkDescriptorSet MakeDescriptorSet(VkDescriptorSetLayout layout);

    /// Counts up with every batch: what came from Reserve under another number is no longer valid.
    std::uint64_t BatchNumber() const noexcept { return batchNumber_; }

    /// The index of a memory type among `allowed` (a bit mask) with all of `needed` and, if there is one, `wanted`.
    std::uint32_t MemoryType(std::uint32_t allowed, VkMemoryPropertyFlags needed, VkMemoryPropertyFlags wanted) const;
    const VkPhysicalDeviceLimits& Limits() const noexcept { return limits_; }
    /// Whether pipelines may clamp depth (depth clip off).
    bool HasDepthClamp() const noexcept { return hasDepthClamp_; }
    PipelineCache& Pipelines() noexcept { return *pipelines_; }

private:
    GraphicsDevice();
    void ChooseDevice();
    void MakeDevice();
    /// The open batch's command buffer, begun if need be. With the device locked.
    VkCommandBuffer OpenCommands();
    bool Proceed(const std::function<bool()>& isUnwanted);
    void Step();
    void HandOverStep() noexcept;

    std::recursive_mutex mutex_;
    VkInstance instance_ = VK_NULL_HANDLE;
    VkPhysicalDevice physicalDevice_ = VK_NULL_HANDLE;
    VkDevice device_ = VK_NULL_HANDLE;
    VkQueue queue_ = VK_NULL_HANDLE;
    std::uint32_t queueFamily_ = 0;
    std::string name_;
    bool isSoftware_ = false;
    bool hasDepthClamp_ = false;
    VkPhysicalDeviceLimits limits_{};
    VkPhysicalDeviceMemoryProperties memory_{};
    std::unique_ptr<PipelineCache> pipelines_;
    std::vector<std::unique_ptr<Batch>> batches_;  // guarded by mutex_, as all below
    std::size_t current_ = 0;                      ///< Index of the open batch.
    std::uint64_t batchNumber_ = 1;
    UnfinishedPicture unfinished_;
    bool isInStep_ = false;  ///< What is recorded is a step of `unfinished_`.
};

/// A piece of host memory that the device reads.
struct HostSlice {
    VkBuffer buffer;
    VkDeviceSize offset;
    std::byte* data;
};

}  // namespace Platform::Direct3D
