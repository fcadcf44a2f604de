// A two-dimensional image on the device: what Direct3D textures, Direct2D targets and composed layers have in common.
#pragma once

#include "Platform/Linux/Direct3D/Vulkan.h"

#include <dxgi.h>

#include <cstddef>
#include <memory>

namespace Platform::Direct3D {

class GraphicsDevice;

/// How the next command uses an image.
struct ImageUse {
    VkImageLayout layout;
    VkPipelineStageFlags2 stages;
    VkAccessFlags2 access;
};

namespace Use {
inline constexpr ImageUse copySource{VK_IMAGE_LAYOUT_TRANSFER_SRC_OPTIMAL, VK_PIPELINE_STAGE_2_TRANSFER_BIT,
                                     VK_ACCESS_2_TRANSFER_READ_BIT};
inline constexpr ImageUse copyTarget{VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, VK_PIPELINE_STAGE_2_TRANSFER_BIT,
                                     VK_ACCESS_2_TRANSFER_WRITE_BIT};
inline constexpr ImageUse renderTarget{VK_IMAGE_LAYOUT_COLOR_ATTACHMENT_OPTIMAL,
                                       VK_PIPELINE_STAGE_2_COLOR_ATTACHMENT_OUTPUT_BIT,
                                       VK_ACCESS_2_COLOR_ATTACHMENT_READ_BIT | VK_ACCESS_2_COLOR_ATTACHMENT_WRITE_BIT};
inline constexpr ImageUse sampled{VK_IMAGE_LAYOUT_SHADER_READ_ONLY_OPTIMAL,
                                  VK_PIPELINE_STAGE_2_FRAGMENT_SHADER_BIT | VK_PIPELINE_STAGE_2_COMPUTE_SHADER_BIT,
                                  VK_ACCESS_2_SHADER_READ_BIT};
inline constexpr ImageUse storage{VK_IMAGE_LAYOUT_GENERAL, VK_PIPELINE_STAGE_2_COMPUTE_SHADER_BIT,
                                  VK_ACCESS_2_SHADER_READ_BIT | VK_ACCESS_2_SHADER_WRITE_BIT};
inline constexpr ImageUse inPlace{VK_IMAGE_LAYOUT_GENERAL, VK_PIPELINE_STAGE_2_HOST_BIT,
                                  VK_ACCESS_2_HOST_READ_BIT | VK_ACCESS_2_HOST_WRITE_BIT};
}  // namespace Use

/// One image of one level and one sample, with its view. Layout and pending accesses are tracked in the order in which
/// commands are recorded, which is the order in which the device's one queue runs them. Must not outlive its device.
class Texture : public std::enable_shared_from_this<Texture> {
public:
    /// An image that starts transparent black (all zero). `extraUsage` comes on top of sampled, copied from and copied
    /// to. The format is one of FormatOf's. Throws VulkanError.
    static std::shared_ptr<Texture> Make(GraphicsDevice& device, VkExtent2D size, DXGI_FORMAT format,
                                         VkImageUsageFlags extraUsage = VK_IMAGE_USAGE_COLOR_ATTACHMENT_BIT);

    /// One of a swap chain's buffers. Whoever presents has drawn over it, so it starts with anything, and its memory
    /// isn't touched before. On a software device its pixels can be read in place.
    static std::shared_ptr<Texture> MakeBuffer(GraphicsDevice& device, VkExtent2D size, DXGI_FORMAT format);
    ~Texture();
    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;

    GraphicsDevice& Device() const noexcept { return device_; }
    VkImage Image() const noexcept { return image_; }
    VkImageView View() const noexcept { return view_; }
    VkExtent2D Size() const noexcept { return size_; }
    DXGI_FORMAT Format() const noexcept { return format_; }
    VkImageLayout Layout() const noexcept { return last_.layout; }

    /// The first row's pixels where they can be read and drawn in place, null elsewhere; rows are Stride() bytes apart.
    /// They are up to date after GraphicsDevice::AwaitPixels, until a command draws on the image again.
    std::byte* Pixels() const noexcept { return pixels_; }
    std::size_t Stride() const noexcept { return stride_; }

    /// Records what has to happen before `use`: the wait for earlier commands and the change of layout. Also keeps the
    /// texture alive until the device has finished the open batch. Outside a rendering pass, with the device locked (as
    /// inside GraphicsDevice::Record).
    void Prepare(VkCommandBuffer commands, const ImageUse& use);

    /// Whether no command has used the image since Settle() was called: its pixels are the host's. With the device
    /// locked.
    bool IsSettled() const noexcept { return settled_; }
    /// All commands so far are done.
    void Settle() noexcept { settled_ = true; }

    /// Whether what was presented here was left out for a later picture's sake. With the device locked.
    bool IsIncomplete() const noexcept { return isIncomplete_; }
    void SetIncomplete(bool isIncomplete) noexcept { isIncomplete_ = isIncomplete; }

private:
    Texture(GraphicsDevice& device, VkExtent2D size, DXGI_FORMAT format);
    void Allocate(VkImageUsageFlags usage, VkImageTiling tiling);
    void AllocateMemory(VkImageTiling tiling);
    void MapPixels();

    GraphicsDevice& device_;
    VkExtent2D size_;
    DXGI_FORMAT format_;
    VkImage image_ = VK_NULL_HANDLE;
    VkDeviceMemory memory_ = VK_NULL_HANDLE;
    VkImageView view_ = VK_NULL_HANDLE;
    std::byte* pixels_ = nullptr;
    std::size_t stride_ = 0;
    ImageUse last_{VK_IMAGE_LAYOUT_UNDEFINED, VK_PIPELINE_STAGE_2_NONE, VK_ACCESS_2_NONE};  // guarded by the device
    bool settled_ = false;                                                                  // guarded by the device
    bool isIncomplete_ = false;                                                             // guarded by the device
};

/// A rectangle in pixels of a texture; it must lie within it.
struct PixelRect {
    UINT x;
    UINT y;
    UINT width;
    UINT height;
};

}  // namespace Platform::Direct3D
