// The same programs with the same constants in a plain Vulkan loop: what a frame costs without the toolkit.
#pragma once

#include "BareVulkan.h"
#include "Scenario.h"

#include "Background/ShaderPrograms.h"

#include <array>

namespace BackgroundBench {

/// Throws std::runtime_error where a call fails.
class BareLoop {
public:
    BareLoop();
    ~BareLoop();

    /// Makes images, constants and commands for frames of this kind and size.
    void Prepare(const Scenario& scenario);

    // Each waits until the device is done.
    void DrawFrame();  ///< Both stages, at the next time.
    void DrawStage();  ///< The background into the offscreen image alone.
    void DrawBlit();   ///< The blit alone, of what the last stage drew.
    void DrawCopy();   ///< A plain textured copy of the window's size into the window's image.

private:
    /// One full-screen draw with its pipeline and descriptor set.
    struct Pass {
        VkPipeline pipeline = VK_NULL_HANDLE;
        VkDescriptorSet set = VK_NULL_HANDLE;
    };

    void MakeLayout();
    void MakeImages(const Scenario& scenario);
    void MakeConstants(const Scenario& scenario);
    void WriteTime();
    VkPipeline MakePipeline(Tamborel::ShaderBytecode pixel, VkFormat format);
    VkPipeline MakeComputePipeline(Tamborel::ShaderBytecode program);
    VkDescriptorSet MakeSet(const BareBuffer* constants, const BareImage* texture, const BareImage* storage);
    void Draw(VkCommandBuffer commands, const Pass& pass, const BareImage& target, bool clear);
    void RecordStage(VkCommandBuffer commands);
    void RecordBlit(VkCommandBuffer commands, const Pass& pass);
    void Clean();

    BareVulkan vulkan_;
    VkDescriptorSetLayout setLayout_ = VK_NULL_HANDLE;
    VkPipelineLayout layout_ = VK_NULL_HANDLE;
    VkSampler sampler_ = VK_NULL_HANDLE;
    VkShaderModule vertexModule_ = VK_NULL_HANDLE;
    BareBuffer vertices_;
    VkCommandBuffer frameCommands_ = VK_NULL_HANDLE;
    VkCommandBuffer stageCommands_ = VK_NULL_HANDLE;
    VkCommandBuffer blitCommands_ = VK_NULL_HANDLE;
    VkCommandBuffer copyCommands_ = VK_NULL_HANDLE;

    // Of the present scenario.
    bool hasGrid_ = false;
    std::array<std::uint32_t, 2> groups_{};
    float time_ = 0.0F;
    std::int32_t frame_ = 0;
    VkDescriptorPool pool_ = VK_NULL_HANDLE;
    BareImage window_;
    BareImage offscreen_;
    BareImage grid_;
    BareImage source_;  // of the copy
    BareBuffer kindConstants_;
    BareBuffer gridConstants_;
    BareBuffer blitConstants_;
    Pass compute_;
    Pass stage_;
    Pass blit_;
    Pass copy_;
};

}  // namespace BackgroundBench
