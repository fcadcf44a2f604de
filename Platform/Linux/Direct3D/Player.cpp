#include "Platform/Linux/Direct3D/Player.h"

#include "Platform/Linux/Direct3D/Formats.h"
#include "Platform/Linux/Direct3D/PipelineCache.h"

#include <algorithm>
#include <cstring>

namespace Platform::Direct3D {

namespace {

// What a program without its constants reads; no constant buffer here is larger.
constexpr VkDeviceSize zerosSize = 1024;

DrawingKey KeyOf(const GraphicsState& state, DXGI_FORMAT target, bool hasDepthClamp) {
    const D3D11_RASTERIZER_DESC raster = state.rasterizer ? state.rasterizer->Desc() : DefaultRasterizer();
    const D3D11_RENDER_TARGET_BLEND_DESC blend = state.blend ? state.blend->Desc().RenderTarget[0] : DefaultBlend();
    DrawingKey key{};
    key.vertexProgram = state.vertexShader->Code().Id();
    key.pixelProgram = state.pixelShader->Code().Id();
    if (state.layout) key.elements = state.layout->Desc();
    for (const VertexElement& each : key.elements) key.strides[each.slot] = state.streams[each.slot].stride;
    key.topology = state.topology;
    key.targetFormat = FormatOf(target).value().format;
    key.cull = raster.CullMode;
    key.frontIsCounterClockwise = raster.FrontCounterClockwise != FALSE;
    key.clampsDepth = hasDepthClamp && !raster.DepthClipEnable;
    key.writeMask = blend.RenderTargetWriteMask;
    key.blends = blend.BlendEnable != FALSE;
    if (key.blends) key.factors = {blend.SrcBlend, blend.DestBlend, blend.SrcBlendAlpha, blend.DestBlendAlpha};
    return key;
}

bool HasStreams(const GraphicsState& state) {
    if (!state.layout) return true;
    return std::ranges::all_of(state.layout->Desc(),
                               [&](const VertexElement& each) { return bool(state.streams[each.slot].buffer); });
}

VkBufferImageCopy StagingCopy(const Texture2D& staging, UINT stagingX, UINT stagingY, UINT imageX, UINT imageY,
                              UINT width, UINT height) {
    const UINT pixelBytes = staging.StagingPitch() / staging.Desc().Width;
    VkBufferImageCopy copy{};
    copy.bufferOffset = VkDeviceSize{stagingY} * staging.StagingPitch() + VkDeviceSize{stagingX} * pixelBytes;
    copy.bufferRowLength = staging.Desc().Width;
    copy.imageSubresource = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 0, 1};
    copy.imageOffset = {static_cast<std::int32_t>(imageX), static_cast<std::int32_t>(imageY), 0};
    copy.imageExtent = {width, height, 1};
    return copy;
}

}  // namespace

const std::shared_ptr<Texture>& Player::Nothing() {
    if (!nothing_) nothing_ = Texture::Make(device_, {1, 1}, DXGI_FORMAT_R8G8B8A8_UNORM, 0);
    return nothing_;
}

const std::shared_ptr<Sampler>& Player::PlainSampler() {
    if (!plainSampler_) plainSampler_ = std::make_shared<Sampler>(device_, DefaultSampler());
    return plainSampler_;
}

HostSlice Player::Zeros() {
    if (zerosBatch_ != device_.BatchNumber()) {
        zeros_ =
            device_.Reserve(zerosSize, std::max<VkDeviceSize>(device_.Limits().minUniformBufferOffsetAlignment, 16));
        std::memset(zeros_.data, 0, zerosSize);
        zerosBatch_ = device_.BatchNumber();
    }
    return zeros_;
}

VkDescriptorSet Player::BindResources(VkCommandBuffer commands, VkDescriptorSetLayout layout,
                                      const StageResources& resources,
                                      const std::array<ComPtr<Buffer>, constantSlots>* more,
                                      const std::array<ComPtr<UnorderedAccessView>, storageSlots>* storage,
                                      const Texture* written) {
    const VkDescriptorSet set = device_.MakeDescriptorSet(layout);
    std::array<VkDescriptorBufferInfo, constantSlots> buffers{};
    std::array<VkDescriptorImageInfo, textureSlots> images{};
    std::array<VkDescriptorImageInfo, samplerSlots> samplers{};
    std::array<VkDescriptorImageInfo, storageSlots> stores{};
    std::array<VkWriteDescriptorSet, constantSlots + textureSlots + samplerSlots + storageSlots> writes{};
    std::uint32_t count = 0;
    const auto add = [&](std::uint32_t binding, VkDescriptorType type) -> VkWriteDescriptorSet& {
        VkWriteDescriptorSet& write = writes[count++];
        write.sType = VK_STRUCTURE_TYPE_WRITE_DESCRIPTOR_SET;
        write.dstSet = set;
        write.dstBinding = binding;
        write.descriptorCount = 1;
        write.descriptorType = type;
        return write;
    };

    for (std::uint32_t i = 0; i < constantSlots; ++i) {
        Buffer* buffer = resources.constants[i].Get();
        if (!buffer && more) buffer = (*more)[i].Get();
        const HostSlice slice = buffer ? buffer->Slice() : Zeros();
        buffers[i] = {slice.buffer, slice.offset, buffer ? buffer->Size() : zerosSize};
        add(constantBinding + i, VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER).pBufferInfo = &buffers[i];
    }
    if (storage) {
        for (std::uint32_t i = 0; i < storageSlots; ++i) {
            if (!(*storage)[i]) continue;
            const std::shared_ptr<Texture>& image = (*storage)[i]->Target().Image();
            image->Prepare(commands, Use::storage);
            stores[i] = {VK_NULL_HANDLE, image->View(), VK_IMAGE_LAYOUT_GENERAL};
            add(storageBinding + i, VK_DESCRIPTOR_TYPE_STORAGE_IMAGE).pImageInfo = &stores[i];
            if (!written) written = image.get();
        }
    }
    for (std::uint32_t i = 0; i < textureSlots; ++i) {
        const std::shared_ptr<Texture>& bound =
            resources.textures[i] ? resources.textures[i]->Target().Image() : Nothing();
        // What is being written can't be read at once: Direct3D reads zero there.
        const std::shared_ptr<Texture>& image = bound.get() == written ? Nothing() : bound;
        image->Prepare(commands, Use::sampled);
        images[i] = {VK_NULL_HANDLE, image->View(), VK_IMAGE_LAYOUT_SHADER_READ_ONLY_OPTIMAL};
        add(textureBinding + i, VK_DESCRIPTOR_TYPE_SAMPLED_IMAGE).pImageInfo = &images[i];
    }
    for (std::uint32_t i = 0; i < samplerSlots; ++i) {
        const std::shared_ptr<Sampler>& sampler =
            resources.samplers[i] ? resources.samplers[i]->Handle() : PlainSampler();
        device_.Keep(sampler);
        samplers[i].sampler = sampler->Handle();
        add(samplerBinding + i, VK_DESCRIPTOR_TYPE_SAMPLER).pImageInfo = &samplers[i];
    }
    vkUpdateDescriptorSets(device_.Handle(), count, writes.data(), 0, nullptr);
    return set;
}

void Player::Draw(const GraphicsState& state, UINT vertexCount, UINT firstVertex) {
    if (!state.target) return;
    const auto lock = device_.Lock();
    const std::shared_ptr<Texture>& target = state.target->Target().Image();
    const VkExtent2D size = target->Size();
    Draw(state, vertexCount, firstVertex, target, {0, 0, size.width, size.height});
}

void Player::Draw(const GraphicsState& state, UINT vertexCount, UINT firstVertex,
                  const std::shared_ptr<Texture>& target, const PixelRect& area) {
    if (!state.vertexShader || !state.pixelShader || !HasStreams(state) || vertexCount == 0) return;
    if (state.topology == D3D11_PRIMITIVE_TOPOLOGY_UNDEFINED) return;
    const D3D11_VIEWPORT& view = state.viewport;
    if (!(view.Width > 0) || !(view.Height > 0)) return;

    device_.Record([&](VkCommandBuffer commands) {
        PipelineCache& pipelines = device_.Pipelines();
        const VkPipeline pipeline = pipelines.Drawing(KeyOf(state, target->Format(), device_.HasDepthClamp()),
                                                      state.vertexShader->Code(), state.pixelShader->Code());
        const VkDescriptorSet set =
            BindResources(commands, pipelines.DrawingSet(), state.pixel, &state.vertexConstants, nullptr, target.get());
        target->Prepare(commands, Use::renderTarget);
        for (std::uint32_t slot = 0; slot < vertexSlots; ++slot) {
            const VertexStream& stream = state.streams[slot];
            if (!stream.buffer) continue;
            const HostSlice slice = stream.buffer->Slice();
            const VkDeviceSize offset = slice.offset + stream.offset;
            vkCmdBindVertexBuffers(commands, slot, 1, &slice.buffer, &offset);
        }

        const VkRect2D drawn{{static_cast<std::int32_t>(area.x), static_cast<std::int32_t>(area.y)},
                             {area.width, area.height}};
        // Upside down, since Vulkan's clip space has y running down and Direct3D's has it running up.
        const VkViewport viewport{view.TopLeftX, view.TopLeftY + view.Height, view.Width, -view.Height, view.MinDepth,
                                  view.MaxDepth};
        auto attachment = Typed<VkRenderingAttachmentInfo>(VK_STRUCTURE_TYPE_RENDERING_ATTACHMENT_INFO);
        attachment.imageView = target->View();
        attachment.imageLayout = VK_IMAGE_LAYOUT_COLOR_ATTACHMENT_OPTIMAL;
        attachment.loadOp = VK_ATTACHMENT_LOAD_OP_LOAD;
        attachment.storeOp = VK_ATTACHMENT_STORE_OP_STORE;
        auto rendering = Typed<VkRenderingInfo>(VK_STRUCTURE_TYPE_RENDERING_INFO);
        rendering.renderArea = drawn;
        rendering.layerCount = 1;
        rendering.colorAttachmentCount = 1;
        rendering.pColorAttachments = &attachment;
        vkCmdBeginRendering(commands, &rendering);
        vkCmdBindPipeline(commands, VK_PIPELINE_BIND_POINT_GRAPHICS, pipeline);
        vkCmdBindDescriptorSets(commands, VK_PIPELINE_BIND_POINT_GRAPHICS, pipelines.DrawingLayout(), 0, 1, &set, 0,
                                nullptr);
        vkCmdSetViewport(commands, 0, 1, &viewport);
        vkCmdSetScissor(commands, 0, 1, &drawn);
        vkCmdDraw(commands, vertexCount, 1, firstVertex, 0);
        vkCmdEndRendering(commands);
    });
}

void Player::Dispatch(const GraphicsState& state, UINT x, UINT y, UINT z) {
    // A program that stores nowhere has no effect.
    if (!state.computeShader || std::ranges::none_of(state.storage, [](const auto& each) { return bool(each); }))
        return;
    device_.Record([&](VkCommandBuffer commands) {
        PipelineCache& pipelines = device_.Pipelines();
        const VkPipeline pipeline = pipelines.Computing(state.computeShader->Code());
        const VkDescriptorSet set =
            BindResources(commands, pipelines.ComputingSet(), state.compute, nullptr, &state.storage, nullptr);
        vkCmdBindPipeline(commands, VK_PIPELINE_BIND_POINT_COMPUTE, pipeline);
        vkCmdBindDescriptorSets(commands, VK_PIPELINE_BIND_POINT_COMPUTE, pipelines.ComputingLayout(), 0, 1, &set, 0,
                                nullptr);
        vkCmdDispatch(commands, x, y, z);
    });
}

void Player::Clear(const std::shared_ptr<Texture>& target, const FLOAT color[4]) {
    device_.Record([&](VkCommandBuffer commands) {
        target->Prepare(commands, Use::copyTarget);
        const VkClearColorValue value{{color[0], color[1], color[2], color[3]}};
        const VkImageSubresourceRange whole{VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};
        vkCmdClearColorImage(commands, target->Image(), VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, &value, 1, &whole);
    });
}

void Player::Copy(Texture2D& target, UINT x, UINT y, Texture2D& source, const PixelRect& rect) {
    device_.Record([&](VkCommandBuffer commands) {
        const std::shared_ptr<Texture>& from = source.Image();
        const std::shared_ptr<Texture>& to = target.Image();
        if (from) from->Prepare(commands, Use::copySource);
        if (to) to->Prepare(commands, Use::copyTarget);
        if (from && to) {
            VkImageCopy copy{};
            copy.srcSubresource = copy.dstSubresource = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 0, 1};
            copy.srcOffset = {static_cast<std::int32_t>(rect.x), static_cast<std::int32_t>(rect.y), 0};
            copy.dstOffset = {static_cast<std::int32_t>(x), static_cast<std::int32_t>(y), 0};
            copy.extent = {rect.width, rect.height, 1};
            vkCmdCopyImage(commands, from->Image(), VK_IMAGE_LAYOUT_TRANSFER_SRC_OPTIMAL, to->Image(),
                           VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, 1, &copy);
        } else if (from) {
            device_.Keep(target.Staging());
            const VkBufferImageCopy copy = StagingCopy(target, x, y, rect.x, rect.y, rect.width, rect.height);
            GraphicsDevice::MakeVisibleToHost(commands);  // and after what an earlier copy wrote there
            vkCmdCopyImageToBuffer(commands, from->Image(), VK_IMAGE_LAYOUT_TRANSFER_SRC_OPTIMAL,
                                   target.Staging()->Handle(), 1, &copy);
            GraphicsDevice::MakeVisibleToHost(commands);
        } else if (to) {
            device_.Keep(source.Staging());
            const VkBufferImageCopy copy = StagingCopy(source, rect.x, rect.y, x, y, rect.width, rect.height);
            vkCmdCopyBufferToImage(commands, source.Staging()->Handle(), to->Image(),
                                   VK_IMAGE_LAYOUT_TRANSFER_DST_OPTIMAL, 1, &copy);
        }
    });
}

}  // namespace Platform::Direct3D
