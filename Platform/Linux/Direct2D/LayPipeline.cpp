#include "Platform/Linux/Direct2D/LayPipeline.h"

#include <array>
#include <map>
#include <mutex>
#include <span>
#include <utility>

namespace Platform::Direct2D {

using Direct3D::Check;

namespace {

#include "Platform/Linux/Direct2D/shaders/compiled/LayFragment.inc"
#include "Platform/Linux/Direct2D/shaders/compiled/LayVertex.inc"

class ShaderModule {
public:
    ShaderModule(VkDevice device, std::span<const std::uint32_t> code) : device_(device) {
        VkShaderModuleCreateInfo info{VK_STRUCTURE_TYPE_SHADER_MODULE_CREATE_INFO};
        info.codeSize = code.size_bytes();
        info.pCode = code.data();
        Check(vkCreateShaderModule(device_, &info, nullptr, &module_));
    }
    ~ShaderModule() { vkDestroyShaderModule(device_, module_, nullptr); }
    ShaderModule(const ShaderModule&) = delete;
    ShaderModule& operator=(const ShaderModule&) = delete;

    VkPipelineShaderStageCreateInfo Stage(VkShaderStageFlagBits stage) const {
        VkPipelineShaderStageCreateInfo info{VK_STRUCTURE_TYPE_PIPELINE_SHADER_STAGE_CREATE_INFO};
        info.stage = stage;
        info.module = module_;
        info.pName = "main";
        return info;
    }

private:
    VkDevice device_;
    VkShaderModule module_ = VK_NULL_HANDLE;
};

}  // namespace

LayPipeline::LayPipeline(std::shared_ptr<Direct3D::GraphicsDevice> device) : device_(std::move(device)) {
    try {
        MakeLayouts();
        MakePipeline();
    } catch (...) {
        Release();
        throw;
    }
}

LayPipeline::~LayPipeline() {
    Release();
}

std::shared_ptr<LayPipeline> LayPipeline::Of(const std::shared_ptr<Direct3D::GraphicsDevice>& device) {
    static std::mutex mutex;
    static std::map<const Direct3D::GraphicsDevice*, std::weak_ptr<LayPipeline>> made;  // guarded by mutex
    const std::lock_guard lock(mutex);
    std::erase_if(made, [](const auto& entry) { return entry.second.expired(); });
    std::weak_ptr<LayPipeline>& entry = made[device.get()];
    std::shared_ptr<LayPipeline> pipeline = entry.lock();
    if (!pipeline) entry = pipeline = std::make_shared<LayPipeline>(device);
    return pipeline;
}

void LayPipeline::MakeLayouts() {
    VkDescriptorSetLayoutBinding binding{};
    binding.binding = layerBinding;
    binding.descriptorType = VK_DESCRIPTOR_TYPE_SAMPLED_IMAGE;
    binding.descriptorCount = 1;
    binding.stageFlags = VK_SHADER_STAGE_FRAGMENT_BIT;
    VkDescriptorSetLayoutCreateInfo set{VK_STRUCTURE_TYPE_DESCRIPTOR_SET_LAYOUT_CREATE_INFO};
    set.bindingCount = 1;
    set.pBindings = &binding;
    Check(vkCreateDescriptorSetLayout(device_->Handle(), &set, nullptr, &setLayout_));
    VkPipelineLayoutCreateInfo layout{VK_STRUCTURE_TYPE_PIPELINE_LAYOUT_CREATE_INFO};
    layout.setLayoutCount = 1;
    layout.pSetLayouts = &setLayout_;
    Check(vkCreatePipelineLayout(device_->Handle(), &layout, nullptr, &layout_));
}

void LayPipeline::MakePipeline() {
    const ShaderModule vertex(device_->Handle(), kLayVertex);
    const ShaderModule fragment(device_->Handle(), kLayFragment);
    const std::array stages{vertex.Stage(VK_SHADER_STAGE_VERTEX_BIT), fragment.Stage(VK_SHADER_STAGE_FRAGMENT_BIT)};

    const VkPipelineVertexInputStateCreateInfo input{VK_STRUCTURE_TYPE_PIPELINE_VERTEX_INPUT_STATE_CREATE_INFO};
    VkPipelineInputAssemblyStateCreateInfo assembly{VK_STRUCTURE_TYPE_PIPELINE_INPUT_ASSEMBLY_STATE_CREATE_INFO};
    assembly.topology = VK_PRIMITIVE_TOPOLOGY_TRIANGLE_LIST;
    VkPipelineViewportStateCreateInfo viewport{VK_STRUCTURE_TYPE_PIPELINE_VIEWPORT_STATE_CREATE_INFO};
    viewport.viewportCount = 1;
    viewport.scissorCount = 1;
    VkPipelineRasterizationStateCreateInfo raster{VK_STRUCTURE_TYPE_PIPELINE_RASTERIZATION_STATE_CREATE_INFO};
    raster.lineWidth = 1.0F;
    VkPipelineMultisampleStateCreateInfo samples{VK_STRUCTURE_TYPE_PIPELINE_MULTISAMPLE_STATE_CREATE_INFO};
    samples.rasterizationSamples = VK_SAMPLE_COUNT_1_BIT;
    // Premultiplied over: the layer, plus what it leaves of the target; the same for alpha.
    VkPipelineColorBlendAttachmentState over{};
    over.blendEnable = VK_TRUE;
    over.srcColorBlendFactor = over.srcAlphaBlendFactor = VK_BLEND_FACTOR_ONE;
    over.dstColorBlendFactor = over.dstAlphaBlendFactor = VK_BLEND_FACTOR_ONE_MINUS_SRC_ALPHA;
    over.colorWriteMask =
        VK_COLOR_COMPONENT_R_BIT | VK_COLOR_COMPONENT_G_BIT | VK_COLOR_COMPONENT_B_BIT | VK_COLOR_COMPONENT_A_BIT;
    VkPipelineColorBlendStateCreateInfo blend{VK_STRUCTURE_TYPE_PIPELINE_COLOR_BLEND_STATE_CREATE_INFO};
    blend.attachmentCount = 1;
    blend.pAttachments = &over;
    const std::array dynamicStates{VK_DYNAMIC_STATE_VIEWPORT, VK_DYNAMIC_STATE_SCISSOR};
    VkPipelineDynamicStateCreateInfo dynamic{VK_STRUCTURE_TYPE_PIPELINE_DYNAMIC_STATE_CREATE_INFO};
    dynamic.dynamicStateCount = static_cast<std::uint32_t>(dynamicStates.size());
    dynamic.pDynamicStates = dynamicStates.data();
    const VkFormat format = VK_FORMAT_B8G8R8A8_UNORM;
    VkPipelineRenderingCreateInfo rendering{VK_STRUCTURE_TYPE_PIPELINE_RENDERING_CREATE_INFO};
    rendering.colorAttachmentCount = 1;
    rendering.pColorAttachmentFormats = &format;

    VkGraphicsPipelineCreateInfo info{VK_STRUCTURE_TYPE_GRAPHICS_PIPELINE_CREATE_INFO};
    info.pNext = &rendering;
    info.stageCount = static_cast<std::uint32_t>(stages.size());
    info.pStages = stages.data();
    info.pVertexInputState = &input;
    info.pInputAssemblyState = &assembly;
    info.pViewportState = &viewport;
    info.pRasterizationState = &raster;
    info.pMultisampleState = &samples;
    info.pColorBlendState = &blend;
    info.pDynamicState = &dynamic;
    info.layout = layout_;
    Check(vkCreateGraphicsPipelines(device_->Handle(), VK_NULL_HANDLE, 1, &info, nullptr, &pipeline_));
}

void LayPipeline::Release() noexcept {
    vkDestroyPipeline(device_->Handle(), pipeline_, nullptr);
    vkDestroyPipelineLayout(device_->Handle(), layout_, nullptr);
    vkDestroyDescriptorSetLayout(device_->Handle(), setLayout_, nullptr);
}

}  // namespace Platform::Direct2D
