// BareLoop: images, constants, pipelines, descriptor sets.
#include "BareLoop.h"

#include "Background/LiquidMetalSurface.h"
#include "Background/OffscreenSize.h"
#include "Background/ShaderConstants.h"
#include "CopyProgram.h"

namespace BackgroundBench {

namespace {

// Where the build puts the registers b0, t0, s0 and u0.
constexpr std::uint32_t kConstantBinding = 0;
// Where the vertex program looks for what it works out for all pixels: the blit's constants and a kind's.
constexpr std::uint32_t kBlitBinding = 1;
constexpr std::uint32_t kKindBinding = 2;
constexpr std::uint32_t kTextureBinding = 16;
constexpr std::uint32_t kSamplerBinding = 32;
constexpr std::uint32_t kStorageBinding = 48;
constexpr std::uint32_t kPasses = 4;

template <class Record>
std::span<const std::byte> BytesOf(const Record& record) {
    return std::as_bytes(std::span(&record, 1));
}

Tamborel::BlitConstants BlitConstantsOf(const Scenario& scenario) {
    const Tamborel::BlitFrameRecord record = scenario.Record();
    Tamborel::BlitConstants constants;
    constants.UseThemeBackground = Tamborel::IsFullSizeKind(scenario.kind) ? 2.0F : 1.0F;
    constants.WindowMetrics = record.windowMetrics;
    constants.ChromeMetrics = {record.chromeMetrics[0], record.chromeMetrics[1], record.chromeMetrics[2], 1.0F};
    constants.TitleBarFill = record.titleBarFill;
    constants.FrameFill = record.frameFill;
    constants.InnerBorderColor = record.innerBorderColor;
    constants.ColorGrade = kGrade;
    return constants;
}

}  // namespace

BareLoop::BareLoop() {
    MakeLayout();
    auto sampler = Typed<VkSamplerCreateInfo>(VK_STRUCTURE_TYPE_SAMPLER_CREATE_INFO);
    sampler.magFilter = sampler.minFilter = VK_FILTER_LINEAR;
    sampler.mipmapMode = VK_SAMPLER_MIPMAP_MODE_LINEAR;
    sampler.addressModeU = sampler.addressModeV = sampler.addressModeW = VK_SAMPLER_ADDRESS_MODE_CLAMP_TO_EDGE;
    sampler.maxLod = VK_LOD_CLAMP_NONE;
    Check(vkCreateSampler(vulkan_.Device(), &sampler, nullptr, &sampler_));
    const auto vertex = Tamborel::BackgroundVertexProgram();
    vertexModule_ = vulkan_.MakeModule(vertex.data, vertex.size);
    vertices_ = vulkan_.MakeBuffer(BytesOf(Tamborel::kStrip), VK_BUFFER_USAGE_VERTEX_BUFFER_BIT);
    frameCommands_ = vulkan_.MakeCommands();
    stageCommands_ = vulkan_.MakeCommands();
    blitCommands_ = vulkan_.MakeCommands();
    copyCommands_ = vulkan_.MakeCommands();
}

BareLoop::~BareLoop() {
    Clean();
    vulkan_.Destroy(vertices_);
    vkDestroyShaderModule(vulkan_.Device(), vertexModule_, nullptr);
    vkDestroySampler(vulkan_.Device(), sampler_, nullptr);
    vkDestroyPipelineLayout(vulkan_.Device(), layout_, nullptr);
    vkDestroyDescriptorSetLayout(vulkan_.Device(), setLayout_, nullptr);
}

void BareLoop::MakeLayout() {
    const VkShaderStageFlags stages = VK_SHADER_STAGE_FRAGMENT_BIT | VK_SHADER_STAGE_COMPUTE_BIT;
    const std::array<VkDescriptorSetLayoutBinding, 6> bindings = {{
        {kConstantBinding, VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER, 1, stages, nullptr},
        {kBlitBinding, VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER, 1, VK_SHADER_STAGE_VERTEX_BIT, nullptr},
        {kKindBinding, VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER, 1, VK_SHADER_STAGE_VERTEX_BIT, nullptr},
        {kTextureBinding, VK_DESCRIPTOR_TYPE_SAMPLED_IMAGE, 1, stages, nullptr},
        {kSamplerBinding, VK_DESCRIPTOR_TYPE_SAMPLER, 1, stages, nullptr},
        {kStorageBinding, VK_DESCRIPTOR_TYPE_STORAGE_IMAGE, 1, stages, nullptr},
    }};
    auto info = Typed<VkDescriptorSetLayoutCreateInfo>(VK_STRUCTURE_TYPE_DESCRIPTOR_SET_LAYOUT_CREATE_INFO);
    info.bindingCount = static_cast<std::uint32_t>(bindings.size());
    info.pBindings = bindings.data();
    Check(vkCreateDescriptorSetLayout(vulkan_.Device(), &info, nullptr, &setLayout_));
    auto layout = Typed<VkPipelineLayoutCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_LAYOUT_CREATE_INFO);
    layout.setLayoutCount = 1;
    layout.pSetLayouts = &setLayout_;
    Check(vkCreatePipelineLayout(vulkan_.Device(), &layout, nullptr, &layout_));
}

void BareLoop::MakeImages(const Scenario& scenario) {
    constexpr VkImageUsageFlags drawn = VK_IMAGE_USAGE_COLOR_ATTACHMENT_BIT | VK_IMAGE_USAGE_SAMPLED_BIT;
    const auto size = Tamborel::OffscreenSizeFor(scenario.kind, scenario.width, scenario.height);
    window_ = vulkan_.MakeImage(scenario.width, scenario.height, VK_FORMAT_B8G8R8A8_UNORM, drawn);
    source_ = vulkan_.MakeImage(scenario.width, scenario.height, VK_FORMAT_B8G8R8A8_UNORM, drawn);
    offscreen_ = vulkan_.MakeImage(size.width, size.height, VK_FORMAT_R16G16B16A16_SFLOAT, drawn);
    const auto spacing = static_cast<std::uint32_t>(scenario.Tuning().sampleSpacing);
    const auto grid = Tamborel::SurfaceGridSizeFor(scenario.width, scenario.height, spacing);
    groups_ = {grid.groupsX, grid.groupsY};
    grid_ = vulkan_.MakeImage(grid.width, grid.height, VK_FORMAT_R16G16B16A16_SFLOAT,
                              VK_IMAGE_USAGE_STORAGE_BIT | VK_IMAGE_USAGE_SAMPLED_BIT);

    const std::array<VkDescriptorPoolSize, 4> sizes = {{
        {VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER, 3 * kPasses},
        {VK_DESCRIPTOR_TYPE_SAMPLED_IMAGE, kPasses},
        {VK_DESCRIPTOR_TYPE_SAMPLER, kPasses},
        {VK_DESCRIPTOR_TYPE_STORAGE_IMAGE, kPasses},
    }};
    auto info = Typed<VkDescriptorPoolCreateInfo>(VK_STRUCTURE_TYPE_DESCRIPTOR_POOL_CREATE_INFO);
    info.maxSets = kPasses;
    info.poolSizeCount = static_cast<std::uint32_t>(sizes.size());
    info.pPoolSizes = sizes.data();
    Check(vkCreateDescriptorPool(vulkan_.Device(), &info, nullptr, &pool_));
}

void BareLoop::MakeConstants(const Scenario& scenario) {
    time_ = 0.0F;
    frame_ = 0;
    Tamborel::Constants kind;
    kind.iResolution = {static_cast<float>(offscreen_.width), static_cast<float>(offscreen_.height), 0.0F, 0.0F};
    kindConstants_ = vulkan_.MakeBuffer(BytesOf(kind), VK_BUFFER_USAGE_UNIFORM_BUFFER_BIT);

    const Tamborel::BackgroundTuning tuning = scenario.Tuning();
    Tamborel::LiquidMetalConstants grid;
    grid.iResolution = {static_cast<float>(scenario.width), static_cast<float>(scenario.height)};
    grid.gridDimensions = {static_cast<float>(grid_.width), static_cast<float>(grid_.height)};
    grid.emberStrength = tuning.emberStrength;
    grid.pointerStrength = tuning.pointerStrength;
    grid.viewScale = tuning.viewScale;
    grid.fineDetail = tuning.fineDetail;
    grid.sampleSpacing = static_cast<float>(tuning.sampleSpacing);
    gridConstants_ = vulkan_.MakeBuffer(BytesOf(grid), VK_BUFFER_USAGE_UNIFORM_BUFFER_BIT);

    blitConstants_ = vulkan_.MakeBuffer(BytesOf(BlitConstantsOf(scenario)), VK_BUFFER_USAGE_UNIFORM_BUFFER_BIT);
}

VkDescriptorSet BareLoop::MakeSet(const BareBuffer* constants, const BareImage* texture, const BareImage* storage) {
    auto info = Typed<VkDescriptorSetAllocateInfo>(VK_STRUCTURE_TYPE_DESCRIPTOR_SET_ALLOCATE_INFO);
    info.descriptorPool = pool_;
    info.descriptorSetCount = 1;
    info.pSetLayouts = &setLayout_;
    VkDescriptorSet set = VK_NULL_HANDLE;
    Check(vkAllocateDescriptorSets(vulkan_.Device(), &info, &set));

    // Lavapipe looks at every binding of the layout, also at those that the program doesn't read.
    const VkDescriptorBufferInfo buffer{(constants ? *constants : kindConstants_).buffer, 0, VK_WHOLE_SIZE};
    const VkDescriptorImageInfo read{sampler_, (texture ? *texture : grid_).view,
                                     VK_IMAGE_LAYOUT_SHADER_READ_ONLY_OPTIMAL};
    const VkDescriptorImageInfo written{VK_NULL_HANDLE, (storage ? *storage : grid_).view, VK_IMAGE_LAYOUT_GENERAL};
    const VkDescriptorBufferInfo blit{blitConstants_.buffer, 0, VK_WHOLE_SIZE};
    const VkDescriptorBufferInfo kind{kindConstants_.buffer, 0, VK_WHOLE_SIZE};
    std::array<VkWriteDescriptorSet, 6> writes{};
    for (auto& write : writes) {
        write = Typed<VkWriteDescriptorSet>(VK_STRUCTURE_TYPE_WRITE_DESCRIPTOR_SET);
        write.dstSet = set;
        write.descriptorCount = 1;
        write.pBufferInfo = &buffer;
        write.pImageInfo = &read;
    }
    writes[0].dstBinding = kConstantBinding;
    writes[0].descriptorType = VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER;
    writes[1].dstBinding = kTextureBinding;
    writes[1].descriptorType = VK_DESCRIPTOR_TYPE_SAMPLED_IMAGE;
    writes[2].dstBinding = kSamplerBinding;
    writes[2].descriptorType = VK_DESCRIPTOR_TYPE_SAMPLER;
    writes[3].dstBinding = kStorageBinding;
    writes[3].descriptorType = VK_DESCRIPTOR_TYPE_STORAGE_IMAGE;
    writes[3].pImageInfo = &written;
    writes[4].dstBinding = kBlitBinding;
    writes[5].dstBinding = kKindBinding;
    writes[4].descriptorType = writes[5].descriptorType = VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER;
    writes[4].pBufferInfo = &blit;
    writes[5].pBufferInfo = &kind;
    vkUpdateDescriptorSets(vulkan_.Device(), static_cast<std::uint32_t>(writes.size()), writes.data(), 0, nullptr);
    return set;
}

VkPipeline BareLoop::MakePipeline(Tamborel::ShaderBytecode pixel, VkFormat format) {
    const VkShaderModule module = vulkan_.MakeModule(pixel.data, pixel.size);
    std::array<VkPipelineShaderStageCreateInfo, 2> stages{};
    stages[0].sType = stages[1].sType = VK_STRUCTURE_TYPE_PIPELINE_SHADER_STAGE_CREATE_INFO;
    stages[0].stage = VK_SHADER_STAGE_VERTEX_BIT;
    stages[0].module = vertexModule_;
    stages[1].stage = VK_SHADER_STAGE_FRAGMENT_BIT;
    stages[1].module = module;
    stages[0].pName = stages[1].pName = "main";

    using Tamborel::BackgroundVertex;
    const VkVertexInputBindingDescription binding{0, sizeof(BackgroundVertex), VK_VERTEX_INPUT_RATE_VERTEX};
    const std::array<VkVertexInputAttributeDescription, 3> attributes = {{
        {0, 0, VK_FORMAT_R32G32B32A32_SFLOAT, offsetof(BackgroundVertex, color)},
        {1, 0, VK_FORMAT_R32G32_SFLOAT, offsetof(BackgroundVertex, position)},
        {2, 0, VK_FORMAT_R32G32_SFLOAT, offsetof(BackgroundVertex, textureCoordinate)},
    }};
    auto input = Typed<VkPipelineVertexInputStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_VERTEX_INPUT_STATE_CREATE_INFO);
    input.vertexBindingDescriptionCount = 1;
    input.pVertexBindingDescriptions = &binding;
    input.vertexAttributeDescriptionCount = static_cast<std::uint32_t>(attributes.size());
    input.pVertexAttributeDescriptions = attributes.data();
    auto assembly =
        Typed<VkPipelineInputAssemblyStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_INPUT_ASSEMBLY_STATE_CREATE_INFO);
    assembly.topology = VK_PRIMITIVE_TOPOLOGY_TRIANGLE_STRIP;
    auto view = Typed<VkPipelineViewportStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_VIEWPORT_STATE_CREATE_INFO);
    view.viewportCount = view.scissorCount = 1;
    auto raster =
        Typed<VkPipelineRasterizationStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_RASTERIZATION_STATE_CREATE_INFO);
    raster.lineWidth = 1.0F;
    auto samples =
        Typed<VkPipelineMultisampleStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_MULTISAMPLE_STATE_CREATE_INFO);
    samples.rasterizationSamples = VK_SAMPLE_COUNT_1_BIT;
    VkPipelineColorBlendAttachmentState attachment{};
    attachment.colorWriteMask = 0xF;
    auto blend = Typed<VkPipelineColorBlendStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_COLOR_BLEND_STATE_CREATE_INFO);
    blend.attachmentCount = 1;
    blend.pAttachments = &attachment;
    const std::array dynamicStates = {VK_DYNAMIC_STATE_VIEWPORT, VK_DYNAMIC_STATE_SCISSOR};
    auto dynamic = Typed<VkPipelineDynamicStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_DYNAMIC_STATE_CREATE_INFO);
    dynamic.dynamicStateCount = static_cast<std::uint32_t>(dynamicStates.size());
    dynamic.pDynamicStates = dynamicStates.data();
    auto rendering = Typed<VkPipelineRenderingCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_RENDERING_CREATE_INFO);
    rendering.colorAttachmentCount = 1;
    rendering.pColorAttachmentFormats = &format;

    auto info = Typed<VkGraphicsPipelineCreateInfo>(VK_STRUCTURE_TYPE_GRAPHICS_PIPELINE_CREATE_INFO);
    info.pNext = &rendering;
    info.stageCount = static_cast<std::uint32_t>(stages.size());
    info.pStages = stages.data();
    info.pVertexInputState = &input;
    info.pInputAssemblyState = &assembly;
    info.pViewportState = &view;
    info.pRasterizationState = &raster;
    info.pMultisampleState = &samples;
    info.pColorBlendState = &blend;
    info.pDynamicState = &dynamic;
    info.layout = layout_;
    VkPipeline pipeline = VK_NULL_HANDLE;
    Check(vkCreateGraphicsPipelines(vulkan_.Device(), VK_NULL_HANDLE, 1, &info, nullptr, &pipeline));
    vkDestroyShaderModule(vulkan_.Device(), module, nullptr);
    return pipeline;
}

VkPipeline BareLoop::MakeComputePipeline(Tamborel::ShaderBytecode program) {
    const VkShaderModule module = vulkan_.MakeModule(program.data, program.size);
    auto info = Typed<VkComputePipelineCreateInfo>(VK_STRUCTURE_TYPE_COMPUTE_PIPELINE_CREATE_INFO);
    info.stage.sType = VK_STRUCTURE_TYPE_PIPELINE_SHADER_STAGE_CREATE_INFO;
    info.stage.stage = VK_SHADER_STAGE_COMPUTE_BIT;
    info.stage.module = module;
    info.stage.pName = "main";
    info.layout = layout_;
    VkPipeline pipeline = VK_NULL_HANDLE;
    Check(vkCreateComputePipelines(vulkan_.Device(), VK_NULL_HANDLE, 1, &info, nullptr, &pipeline));
    vkDestroyShaderModule(vulkan_.Device(), module, nullptr);
    return pipeline;
}

void BareLoop::Clean() {
    for (Pass* pass : {&compute_, &stage_, &blit_, &copy_}) {
        vkDestroyPipeline(vulkan_.Device(), pass->pipeline, nullptr);
        *pass = {};
    }
    vkDestroyDescriptorPool(vulkan_.Device(), pool_, nullptr);
    pool_ = VK_NULL_HANDLE;
    for (BareImage* image : {&window_, &offscreen_, &grid_, &source_}) vulkan_.Destroy(*image);
    for (BareBuffer* buffer : {&kindConstants_, &gridConstants_, &blitConstants_}) vulkan_.Destroy(*buffer);
}

}  // namespace BackgroundBench
