#include "Platform/Linux/Direct3D/Batch.h"

#include "Platform/Linux/Direct3D/Bindings.h"

#include <algorithm>
#include <array>

namespace Platform::Direct3D {

namespace {

constexpr VkDeviceSize blockSize = VkDeviceSize{256} * 1024;
// Blocks beyond this size are for one picture, not for every frame: they go when the batch is done.
constexpr VkDeviceSize largestKeptBlock = VkDeviceSize{4} * 1024 * 1024;
constexpr std::uint32_t setsPerPool = 32;

}  // namespace

Batch::Batch(GraphicsDevice& device) : device_(device) {
    auto pool = Typed<VkCommandPoolCreateInfo>(VK_STRUCTURE_TYPE_COMMAND_POOL_CREATE_INFO);
    pool.flags = VK_COMMAND_POOL_CREATE_TRANSIENT_BIT;
    pool.queueFamilyIndex = device.QueueFamily();
    const auto fence = Typed<VkFenceCreateInfo>(VK_STRUCTURE_TYPE_FENCE_CREATE_INFO);
    Check(vkCreateCommandPool(device.Handle(), &pool, nullptr, &pool_));
    auto commands = Typed<VkCommandBufferAllocateInfo>(VK_STRUCTURE_TYPE_COMMAND_BUFFER_ALLOCATE_INFO);
    commands.commandPool = pool_;
    commands.level = VK_COMMAND_BUFFER_LEVEL_PRIMARY;
    commands.commandBufferCount = 1;
    VkResult result = vkAllocateCommandBuffers(device.Handle(), &commands, &commands_);
    if (result == VK_SUCCESS) result = vkCreateFence(device.Handle(), &fence, nullptr, &fence_);
    if (result != VK_SUCCESS) {
        vkDestroyCommandPool(device.Handle(), pool_, nullptr);
        throw VulkanError(result);
    }
}

Batch::~Batch() {
    kept_.clear();
    memory_.clear();
    for (VkDescriptorPool each : descriptorPools_) vkDestroyDescriptorPool(device_.Handle(), each, nullptr);
    vkDestroyFence(device_.Handle(), fence_, nullptr);
    vkDestroyCommandPool(device_.Handle(), pool_, nullptr);
}

VkCommandBuffer Batch::Open() {
    if (state_ == State::Open) return commands_;
    Await();
    auto begin = Typed<VkCommandBufferBeginInfo>(VK_STRUCTURE_TYPE_COMMAND_BUFFER_BEGIN_INFO);
    begin.flags = VK_COMMAND_BUFFER_USAGE_ONE_TIME_SUBMIT_BIT;
    Check(vkBeginCommandBuffer(commands_, &begin));
    state_ = State::Open;
    return commands_;
}

void Batch::Submit(VkSemaphore waitFor, VkPipelineStageFlags2 waitStages, VkSemaphore signal) {
    state_ = State::Idle;
    Check(vkEndCommandBuffer(commands_));
    auto wait = Typed<VkSemaphoreSubmitInfo>(VK_STRUCTURE_TYPE_SEMAPHORE_SUBMIT_INFO);
    wait.semaphore = waitFor;
    wait.stageMask = waitStages;
    auto done = Typed<VkSemaphoreSubmitInfo>(VK_STRUCTURE_TYPE_SEMAPHORE_SUBMIT_INFO);
    done.semaphore = signal;
    done.stageMask = VK_PIPELINE_STAGE_2_ALL_COMMANDS_BIT;
    auto commands = Typed<VkCommandBufferSubmitInfo>(VK_STRUCTURE_TYPE_COMMAND_BUFFER_SUBMIT_INFO);
    commands.commandBuffer = commands_;
    auto submit = Typed<VkSubmitInfo2>(VK_STRUCTURE_TYPE_SUBMIT_INFO_2);
    submit.waitSemaphoreInfoCount = waitFor ? 1 : 0;
    submit.pWaitSemaphoreInfos = &wait;
    submit.commandBufferInfoCount = 1;
    submit.pCommandBufferInfos = &commands;
    submit.signalSemaphoreInfoCount = signal ? 1 : 0;
    submit.pSignalSemaphoreInfos = &done;
    Check(vkQueueSubmit2(device_.Queue(), 1, &submit, fence_));
    state_ = State::Submitted;
}

void Batch::Await() {
    if (state_ == State::Open) return;
    if (state_ == State::Submitted) {
        Check(vkWaitForFences(device_.Handle(), 1, &fence_, VK_TRUE, UINT64_MAX));
        Check(vkResetFences(device_.Handle(), 1, &fence_));
        // What this life had no use for, the next one can do without.
        if (block_ + 1 < memory_.size()) memory_.resize(block_ + 1);
    }
    state_ = State::Idle;
    Check(vkResetCommandPool(device_.Handle(), pool_, 0));
    for (VkDescriptorPool each : descriptorPools_) Check(vkResetDescriptorPool(device_.Handle(), each, 0));
    descriptorPool_ = 0;
    std::erase_if(memory_, [](const auto& block) { return block->Size() > largestKeptBlock; });
    block_ = 0;
    used_ = 0;
    kept_.clear();
}

HostSlice Batch::Reserve(VkDeviceSize size, VkDeviceSize alignment) {
    for (;;) {
        if (block_ == memory_.size())
            memory_.push_back(
                std::make_unique<HostBuffer>(device_, std::max(size, blockSize), HostBuffer::Access::Write));
        const VkDeviceSize offset = (used_ + alignment - 1) / alignment * alignment;
        HostBuffer& block = *memory_[block_];
        if (offset + size <= block.Size()) {
            used_ = offset + size;
            return {block.Handle(), offset, block.Data() + offset};
        }
        if (used_ > 0) {
            ++block_;
            used_ = 0;
        } else {
            // Too small and not in use: a picture that grows with its window would leave one behind at every size.
            memory_.erase(memory_.begin() + static_cast<std::ptrdiff_t>(block_));
        }
    }
}

VkDeviceSize Batch::HeldBytes() const noexcept {
    VkDeviceSize bytes = 0;
    for (const auto& block : memory_) bytes += block->Size();
    return bytes;
}

void Batch::AddDescriptorPool() {
    const std::array sizes = {
        VkDescriptorPoolSize{VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER, setsPerPool * constantSlots},
        VkDescriptorPoolSize{VK_DESCRIPTOR_TYPE_SAMPLED_IMAGE, setsPerPool * textureSlots},
        VkDescriptorPoolSize{VK_DESCRIPTOR_TYPE_SAMPLER, setsPerPool * samplerSlots},
        VkDescriptorPoolSize{VK_DESCRIPTOR_TYPE_STORAGE_IMAGE, setsPerPool * storageSlots},
        // For those who draw on the device with sets of their own.
        VkDescriptorPoolSize{VK_DESCRIPTOR_TYPE_COMBINED_IMAGE_SAMPLER, setsPerPool * textureSlots},
    };
    auto info = Typed<VkDescriptorPoolCreateInfo>(VK_STRUCTURE_TYPE_DESCRIPTOR_POOL_CREATE_INFO);
    info.maxSets = setsPerPool;
    info.poolSizeCount = static_cast<std::uint32_t>(sizes.size());
    info.pPoolSizes = sizes.data();
    VkDescriptorPool pool = VK_NULL_HANDLE;
    Check(vkCreateDescriptorPool(device_.Handle(), &info, nullptr, &pool));
    descriptorPools_.push_back(pool);
}

VkDescriptorSet Batch::MakeDescriptorSet(VkDescriptorSetLayout layout) {
    for (;; ++descriptorPool_) {
        const bool isFresh = descriptorPool_ == descriptorPools_.size();
        if (isFresh) AddDescriptorPool();
        auto info = Typed<VkDescriptorSetAllocateInfo>(VK_STRUCTURE_TYPE_DESCRIPTOR_SET_ALLOCATE_INFO);
        info.descriptorPool = descriptorPools_[descriptorPool_];
        info.descriptorSetCount = 1;
        info.pSetLayouts = &layout;
        VkDescriptorSet set = VK_NULL_HANDLE;
        const VkResult result = vkAllocateDescriptorSets(device_.Handle(), &info, &set);
        if (result == VK_SUCCESS) return set;
        if (isFresh || (result != VK_ERROR_OUT_OF_POOL_MEMORY && result != VK_ERROR_FRAGMENTED_POOL))
            throw VulkanError(result);
    }
}

}  // namespace Platform::Direct3D
