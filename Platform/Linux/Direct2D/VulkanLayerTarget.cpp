#include "Platform/Linux/Direct2D/VulkanLayerTarget.h"

#include "Platform/Linux/Direct3D/SurfaceAccess.h"

#include <utility>

namespace Platform::Direct2D {

using Direct3D::Texture;

namespace {

VkRect2D RectOf(const PixelRect& rect) {
    return {{rect.left, rect.top},
            {static_cast<std::uint32_t>(rect.Width()), static_cast<std::uint32_t>(rect.Height())}};
}

}  // namespace

VulkanLayerTarget::VulkanLayerTarget(IDXGISurface* surface, std::shared_ptr<Direct3D::GraphicsDevice> device)
    : surface_(surface), device_(std::move(device)), pipeline_(LayPipeline::Of(device_)) {
    if (const std::shared_ptr<Texture> image = Direct3D::TextureOf(surface)) {
        size_ = {image->Size().width, image->Size().height};
    }
}

HRESULT VulkanLayerTarget::Compose(const LayerFrame& frame) noexcept try {
    const std::shared_ptr<Texture> image = Direct3D::TextureOf(surface_.Get());
    if (!image) return D2DERR_RECREATE_TARGET;
    const auto lock = device_->Lock();
    Upload(frame);
    if (frame.clear || !frame.painted.empty()) Lay(frame, image);
    return S_OK;
} catch (...) {
    layer_.reset();
    return Direct3D::CurrentFailure();
}

void VulkanLayerTarget::Upload(const LayerFrame& frame) {
    if (frame.changed.empty()) return;
    if (!layer_) layer_ = Texture::Make(*device_, {size_.width, size_.height}, DXGI_FORMAT_B8G8R8A8_UNORM, 0);
    for (const PixelRect& rect : frame.changed) {
        const std::uint8_t* const first =
            frame.pixels + static_cast<std::size_t>(rect.top) * frame.stride + static_cast<std::size_t>(rect.left) * 4;
        device_->Upload(layer_,
                        {static_cast<UINT>(rect.left), static_cast<UINT>(rect.top), static_cast<UINT>(rect.Width()),
                         static_cast<UINT>(rect.Height())},
                        first, frame.stride);
    }
}

void VulkanLayerTarget::Lay(const LayerFrame& frame, const std::shared_ptr<Texture>& image) {
    device_->Keep(pipeline_);
    device_->Record([&](VkCommandBuffer commands) {
        image->Prepare(commands, Direct3D::Use::renderTarget);
        if (layer_) layer_->Prepare(commands, Direct3D::Use::sampled);

        VkRenderingAttachmentInfo color{VK_STRUCTURE_TYPE_RENDERING_ATTACHMENT_INFO};
        color.imageView = image->View();
        color.imageLayout = VK_IMAGE_LAYOUT_COLOR_ATTACHMENT_OPTIMAL;
        color.loadOp = frame.clear ? VK_ATTACHMENT_LOAD_OP_CLEAR : VK_ATTACHMENT_LOAD_OP_LOAD;
        color.storeOp = VK_ATTACHMENT_STORE_OP_STORE;
        if (frame.clear) color.clearValue.color = {{frame.clear->r, frame.clear->g, frame.clear->b, frame.clear->a}};
        VkRenderingInfo rendering{VK_STRUCTURE_TYPE_RENDERING_INFO};
        rendering.renderArea = {{0, 0}, {size_.width, size_.height}};
        rendering.layerCount = 1;
        rendering.colorAttachmentCount = 1;
        rendering.pColorAttachments = &color;
        vkCmdBeginRendering(commands, &rendering);
        if (layer_ && !frame.painted.empty()) {
            const VkDescriptorSet set = device_->MakeDescriptorSet(pipeline_->SetLayout());
            const VkDescriptorImageInfo picture{VK_NULL_HANDLE, layer_->View(),
                                                VK_IMAGE_LAYOUT_SHADER_READ_ONLY_OPTIMAL};
            VkWriteDescriptorSet write{VK_STRUCTURE_TYPE_WRITE_DESCRIPTOR_SET};
            write.dstSet = set;
            write.dstBinding = LayPipeline::layerBinding;
            write.descriptorCount = 1;
            write.descriptorType = VK_DESCRIPTOR_TYPE_SAMPLED_IMAGE;
            write.pImageInfo = &picture;
            vkUpdateDescriptorSets(device_->Handle(), 1, &write, 0, nullptr);
            vkCmdBindPipeline(commands, VK_PIPELINE_BIND_POINT_GRAPHICS, pipeline_->Handle());
            vkCmdBindDescriptorSets(commands, VK_PIPELINE_BIND_POINT_GRAPHICS, pipeline_->Layout(), 0, 1, &set, 0,
                                    nullptr);
            const VkViewport viewport{0.0F, 0.0F, static_cast<float>(size_.width), static_cast<float>(size_.height),
                                      0.0F, 1.0F};
            vkCmdSetViewport(commands, 0, 1, &viewport);
            for (const PixelRect& rect : frame.painted) {
                const VkRect2D scissor = RectOf(rect);
                vkCmdSetScissor(commands, 0, 1, &scissor);
                vkCmdDraw(commands, 3, 1, 0, 0);
            }
        }
        vkCmdEndRendering(commands);
    });
}

}  // namespace Platform::Direct2D
