// BareLoop: frames. What they are made of is in BareLoopObjects.cpp.
#include "BareLoop.h"

#include "Background/LiquidMetalSurface.h"
#include "Background/ShaderConstants.h"
#include "CopyProgram.h"

namespace BackgroundBench {

namespace {

void Await(VkCommandBuffer commands, const BareImage& image, VkImageLayout from, VkImageLayout to,
           VkPipelineStageFlags2 before, VkAccessFlags2 written, VkPipelineStageFlags2 after, VkAccessFlags2 read) {
    auto barrier = Typed<VkImageMemoryBarrier2>(VK_STRUCTURE_TYPE_IMAGE_MEMORY_BARRIER_2);
    barrier.srcStageMask = before;
    barrier.srcAccessMask = written;
    barrier.dstStageMask = after;
    barrier.dstAccessMask = read;
    barrier.oldLayout = from;
    barrier.newLayout = to;
    barrier.srcQueueFamilyIndex = barrier.dstQueueFamilyIndex = VK_QUEUE_FAMILY_IGNORED;
    barrier.image = image.image;
    barrier.subresourceRange = {VK_IMAGE_ASPECT_COLOR_BIT, 0, 1, 0, 1};
    auto dependency = Typed<VkDependencyInfo>(VK_STRUCTURE_TYPE_DEPENDENCY_INFO);
    dependency.imageMemoryBarrierCount = 1;
    dependency.pImageMemoryBarriers = &barrier;
    vkCmdPipelineBarrier2(commands, &dependency);
}

void BeginDrawing(VkCommandBuffer commands, const BareImage& image) {
    Await(commands, image, VK_IMAGE_LAYOUT_UNDEFINED, VK_IMAGE_LAYOUT_COLOR_ATTACHMENT_OPTIMAL,
          VK_PIPELINE_STAGE_2_ALL_GRAPHICS_BIT, VK_ACCESS_2_NONE, VK_PIPELINE_STAGE_2_COLOR_ATTACHMENT_OUTPUT_BIT,
          VK_ACCESS_2_COLOR_ATTACHMENT_WRITE_BIT | VK_ACCESS_2_COLOR_ATTACHMENT_READ_BIT);
}

void BeginReading(VkCommandBuffer commands, const BareImage& image) {
    Await(commands, image, VK_IMAGE_LAYOUT_COLOR_ATTACHMENT_OPTIMAL, VK_IMAGE_LAYOUT_SHADER_READ_ONLY_OPTIMAL,
          VK_PIPELINE_STAGE_2_COLOR_ATTACHMENT_OUTPUT_BIT, VK_ACCESS_2_COLOR_ATTACHMENT_WRITE_BIT,
          VK_PIPELINE_STAGE_2_FRAGMENT_SHADER_BIT, VK_ACCESS_2_SHADER_SAMPLED_READ_BIT);
}

void Begin(VkCommandBuffer commands) {
    const auto begin = Typed<VkCommandBufferBeginInfo>(VK_STRUCTURE_TYPE_COMMAND_BUFFER_BEGIN_INFO);
    Check(vkBeginCommandBuffer(commands, &begin));
}

}  // namespace

void BareLoop::Draw(VkCommandBuffer commands, const Pass& pass, const BareImage& target, bool clear) {
    auto attachment = Typed<VkRenderingAttachmentInfo>(VK_STRUCTURE_TYPE_RENDERING_ATTACHMENT_INFO);
    attachment.imageView = target.view;
    attachment.imageLayout = VK_IMAGE_LAYOUT_COLOR_ATTACHMENT_OPTIMAL;
    attachment.loadOp = clear ? VK_ATTACHMENT_LOAD_OP_CLEAR : VK_ATTACHMENT_LOAD_OP_DONT_CARE;
    attachment.storeOp = VK_ATTACHMENT_STORE_OP_STORE;
    attachment.clearValue.color.float32[3] = 1.0F;
    auto rendering = Typed<VkRenderingInfo>(VK_STRUCTURE_TYPE_RENDERING_INFO);
    rendering.renderArea.extent = {target.width, target.height};
    rendering.layerCount = 1;
    rendering.colorAttachmentCount = 1;
    rendering.pColorAttachments = &attachment;
    vkCmdBeginRendering(commands, &rendering);
    const auto width = static_cast<float>(target.width);
    const auto height = static_cast<float>(target.height);
    const VkViewport viewport{0.0F, height, width, -height, 0.0F, 1.0F};
    vkCmdSetViewport(commands, 0, 1, &viewport);
    vkCmdSetScissor(commands, 0, 1, &rendering.renderArea);
    vkCmdBindPipeline(commands, VK_PIPELINE_BIND_POINT_GRAPHICS, pass.pipeline);
    vkCmdBindDescriptorSets(commands, VK_PIPELINE_BIND_POINT_GRAPHICS, layout_, 0, 1, &pass.set, 0, nullptr);
    const VkDeviceSize offset = 0;
    vkCmdBindVertexBuffers(commands, 0, 1, &vertices_.buffer, &offset);
    vkCmdDraw(commands, 4, 1, 0, 0);
    vkCmdEndRendering(commands);
}

void BareLoop::RecordStage(VkCommandBuffer commands) {
    if (hasGrid_) {
        Await(commands, grid_, VK_IMAGE_LAYOUT_UNDEFINED, VK_IMAGE_LAYOUT_GENERAL,
              VK_PIPELINE_STAGE_2_FRAGMENT_SHADER_BIT, VK_ACCESS_2_NONE, VK_PIPELINE_STAGE_2_COMPUTE_SHADER_BIT,
              VK_ACCESS_2_SHADER_STORAGE_WRITE_BIT);
        vkCmdBindPipeline(commands, VK_PIPELINE_BIND_POINT_COMPUTE, compute_.pipeline);
        vkCmdBindDescriptorSets(commands, VK_PIPELINE_BIND_POINT_COMPUTE, layout_, 0, 1, &compute_.set, 0, nullptr);
        vkCmdDispatch(commands, groups_[0], groups_[1], 1);
        Await(commands, grid_, VK_IMAGE_LAYOUT_GENERAL, VK_IMAGE_LAYOUT_SHADER_READ_ONLY_OPTIMAL,
              VK_PIPELINE_STAGE_2_COMPUTE_SHADER_BIT, VK_ACCESS_2_SHADER_STORAGE_WRITE_BIT,
              VK_PIPELINE_STAGE_2_FRAGMENT_SHADER_BIT, VK_ACCESS_2_SHADER_SAMPLED_READ_BIT);
    }
    BeginDrawing(commands, offscreen_);
    Draw(commands, stage_, offscreen_, true);
    BeginReading(commands, offscreen_);
}

void BareLoop::RecordBlit(VkCommandBuffer commands, const Pass& pass) {
    BeginDrawing(commands, window_);
    Draw(commands, pass, window_, false);
}

void BareLoop::Prepare(const Scenario& scenario) {
    Clean();
    MakeImages(scenario);
    MakeConstants(scenario);

    hasGrid_ = scenario.kind == Tamborel::BackgroundKind::LiquidMetalSurface;
    if (hasGrid_) {
        compute_ = {MakeComputePipeline(Tamborel::SurfaceComputeProgram()), MakeSet(&gridConstants_, nullptr, &grid_)};
        stage_ = {MakePipeline(Tamborel::SurfacePixelProgram(), VK_FORMAT_R16G16B16A16_SFLOAT),
                  MakeSet(&gridConstants_, &grid_, nullptr)};
    } else {
        const auto program = Tamborel::BackgroundPixelPrograms()[static_cast<std::size_t>(scenario.kind)];
        stage_ = {MakePipeline(program, VK_FORMAT_R16G16B16A16_SFLOAT), MakeSet(&kindConstants_, nullptr, nullptr)};
    }
    blit_ = {MakePipeline(Tamborel::BlitPixelProgram(), VK_FORMAT_B8G8R8A8_UNORM),
             MakeSet(&blitConstants_, &offscreen_, nullptr)};
    copy_ = {MakePipeline(CopyProgram(), VK_FORMAT_B8G8R8A8_UNORM), MakeSet(nullptr, &source_, nullptr)};

    Begin(stageCommands_);
    RecordStage(stageCommands_);
    Check(vkEndCommandBuffer(stageCommands_));
    Begin(blitCommands_);
    RecordBlit(blitCommands_, blit_);
    Check(vkEndCommandBuffer(blitCommands_));
    Begin(copyCommands_);
    RecordBlit(copyCommands_, copy_);
    Check(vkEndCommandBuffer(copyCommands_));

    // What the copy reads needs contents: the frame's own.
    Begin(frameCommands_);
    RecordStage(frameCommands_);
    BeginDrawing(frameCommands_, source_);
    Draw(frameCommands_, blit_, source_, false);
    BeginReading(frameCommands_, source_);
    Check(vkEndCommandBuffer(frameCommands_));
    vulkan_.Run(frameCommands_);
    Begin(frameCommands_);
    RecordStage(frameCommands_);
    RecordBlit(frameCommands_, blit_);
    Check(vkEndCommandBuffer(frameCommands_));
}

void BareLoop::WriteTime() {
    time_ += kFrameTime;
    ++frame_;
    auto* const kind = reinterpret_cast<Tamborel::Constants*>(kindConstants_.data);
    kind->iTime = time_;
    kind->iFrame = frame_;
    reinterpret_cast<Tamborel::LiquidMetalConstants*>(gridConstants_.data)->iTime = time_;
}

void BareLoop::DrawFrame() {
    WriteTime();
    vulkan_.Run(frameCommands_);
}

void BareLoop::DrawStage() {
    WriteTime();
    vulkan_.Run(stageCommands_);
}

void BareLoop::DrawBlit() {
    vulkan_.Run(blitCommands_);
}

void BareLoop::DrawCopy() {
    vulkan_.Run(copyCommands_);
}

}  // namespace BackgroundBench
