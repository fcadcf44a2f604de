#include "Platform/Linux/Direct3D/PipelineCache.h"

#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/Direct3D/Shader.h"
#include "Platform/Linux/Direct3D/TrimmedProgram.h"

#include <algorithm>

namespace Platform::Direct3D {

namespace {

VkCullModeFlags CullOf(D3D11_CULL_MODE mode) {
    switch (mode) {
        case D3D11_CULL_FRONT:
            return VK_CULL_MODE_FRONT_BIT;
        case D3D11_CULL_BACK:
            return VK_CULL_MODE_BACK_BIT;
        case D3D11_CULL_NONE:
            break;
    }
    return VK_CULL_MODE_NONE;
}

VkBlendFactor FactorOf(D3D11_BLEND blend) {
    switch (blend) {
        case D3D11_BLEND_ONE:
            return VK_BLEND_FACTOR_ONE;
        case D3D11_BLEND_SRC_COLOR:
            return VK_BLEND_FACTOR_SRC_COLOR;
        case D3D11_BLEND_INV_SRC_COLOR:
            return VK_BLEND_FACTOR_ONE_MINUS_SRC_COLOR;
        case D3D11_BLEND_SRC_ALPHA:
            return VK_BLEND_FACTOR_SRC_ALPHA;
        case D3D11_BLEND_INV_SRC_ALPHA:
            return VK_BLEND_FACTOR_ONE_MINUS_SRC_ALPHA;
        case D3D11_BLEND_DEST_ALPHA:
            return VK_BLEND_FACTOR_DST_ALPHA;
        case D3D11_BLEND_INV_DEST_ALPHA:
            return VK_BLEND_FACTOR_ONE_MINUS_DST_ALPHA;
        case D3D11_BLEND_DEST_COLOR:
            return VK_BLEND_FACTOR_DST_COLOR;
        case D3D11_BLEND_INV_DEST_COLOR:
            return VK_BLEND_FACTOR_ONE_MINUS_DST_COLOR;
        case D3D11_BLEND_ZERO:
            break;
    }
    return VK_BLEND_FACTOR_ZERO;
}

VkPipelineColorBlendAttachmentState BlendOf(const DrawingKey& key) {
    // The bits of the write mask are the same in both: red 1, green 2, blue 4, alpha 8.
    VkPipelineColorBlendAttachmentState state{};
    state.colorWriteMask = key.writeMask;
    if (!key.blends) return state;
    state.blendEnable = VK_TRUE;
    state.srcColorBlendFactor = FactorOf(key.factors[0]);
    state.dstColorBlendFactor = FactorOf(key.factors[1]);
    state.colorBlendOp = VK_BLEND_OP_ADD;
    state.srcAlphaBlendFactor = FactorOf(key.factors[2]);
    state.dstAlphaBlendFactor = FactorOf(key.factors[3]);
    state.alphaBlendOp = VK_BLEND_OP_ADD;
    return state;
}

VkPipelineShaderStageCreateInfo StageOf(VkShaderStageFlagBits stage, const ShaderModule& module,
                                        const ShaderCode& code) {
    auto info = Typed<VkPipelineShaderStageCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_SHADER_STAGE_CREATE_INFO);
    info.stage = stage;
    info.module = module.Handle();
    info.pName = code.EntryPoint();
    return info;
}

std::vector<std::uint32_t> TrimmedFor(const ShaderCode& pixel, const ShaderCode& vertex) {
    const auto read = InputLocations(pixel.Words());
    if (!read) return {vertex.Words().begin(), vertex.Words().end()};
    return WithoutUnreadOutputs(vertex.Words(), *read);
}

}  // namespace

Pipeline::~Pipeline() {
    vkDestroyPipeline(device_.Handle(), handle_, nullptr);
}

PipelineCache::PipelineCache(GraphicsDevice& device) : device_(device) {
    drawing_ = MakeLayouts(VK_SHADER_STAGE_VERTEX_BIT | VK_SHADER_STAGE_FRAGMENT_BIT, Storage::No);
    computing_ = MakeLayouts(VK_SHADER_STAGE_COMPUTE_BIT, Storage::Yes);
}

PipelineCache::~PipelineCache() {
    for (const Layouts& each : {drawing_, computing_}) {
        vkDestroyPipelineLayout(device_.Handle(), each.pipeline, nullptr);
        vkDestroyDescriptorSetLayout(device_.Handle(), each.set, nullptr);
    }
}

PipelineCache::Layouts PipelineCache::MakeLayouts(VkShaderStageFlags stages, Storage storage) {
    std::vector<VkDescriptorSetLayoutBinding> bindings;
    const auto add = [&](std::uint32_t first, std::uint32_t count, VkDescriptorType type) {
        for (std::uint32_t i = 0; i < count; ++i) bindings.push_back({first + i, type, 1, stages, nullptr});
    };
    add(constantBinding, constantSlots, VK_DESCRIPTOR_TYPE_UNIFORM_BUFFER);
    add(textureBinding, textureSlots, VK_DESCRIPTOR_TYPE_SAMPLED_IMAGE);
    add(samplerBinding, samplerSlots, VK_DESCRIPTOR_TYPE_SAMPLER);
    if (storage == Storage::Yes) add(storageBinding, storageSlots, VK_DESCRIPTOR_TYPE_STORAGE_IMAGE);

    Layouts made;
    auto set = Typed<VkDescriptorSetLayoutCreateInfo>(VK_STRUCTURE_TYPE_DESCRIPTOR_SET_LAYOUT_CREATE_INFO);
    set.bindingCount = static_cast<std::uint32_t>(bindings.size());
    set.pBindings = bindings.data();
    Check(vkCreateDescriptorSetLayout(device_.Handle(), &set, nullptr, &made.set));
    auto layout = Typed<VkPipelineLayoutCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_LAYOUT_CREATE_INFO);
    layout.setLayoutCount = 1;
    layout.pSetLayouts = &made.set;
    Check(vkCreatePipelineLayout(device_.Handle(), &layout, nullptr, &made.pipeline));
    return made;
}

std::shared_ptr<const ShaderCode> PipelineCache::Code(std::vector<std::uint32_t> words, std::string entryPoint) {
    const auto lock = device_.Lock();
    std::erase_if(codes_, [](const auto& each) { return each.expired(); });
    for (const auto& each : codes_) {
        auto code = each.lock();
        if (code && entryPoint == code->EntryPoint() && std::ranges::equal(words, code->Words())) return code;
    }
    auto made = std::make_shared<const ShaderCode>(device_, std::move(words), std::move(entryPoint));
    codes_.push_back(made);
    return made;
}

VkPipeline PipelineCache::Drawing(const DrawingKey& key, const ShaderCode& vertex, const ShaderCode& pixel) {
    std::shared_ptr<const Pipeline>& entry = drawings_[key];
    if (!entry) entry = MakeDrawing(key, vertex, pixel);
    return entry->Handle();
}

std::shared_ptr<const Pipeline> PipelineCache::MakeDrawing(const DrawingKey& key, const ShaderCode& vertex,
                                                           const ShaderCode& pixel) {
    const ShaderModule vertexModule(device_, TrimmedFor(pixel, vertex));
    const ShaderModule pixelModule(device_, pixel.Words());
    const std::array stages = {StageOf(VK_SHADER_STAGE_VERTEX_BIT, vertexModule, vertex),
                               StageOf(VK_SHADER_STAGE_FRAGMENT_BIT, pixelModule, pixel)};

    std::vector<VkVertexInputAttributeDescription> attributes;
    std::vector<VkVertexInputBindingDescription> streams;
    std::array<bool, vertexSlots> isListed{};
    for (const VertexElement& each : key.elements) {
        attributes.push_back({static_cast<std::uint32_t>(attributes.size()), each.slot, each.format, each.offset});
        if (std::exchange(isListed[each.slot], true)) continue;
        streams.push_back({each.slot, key.strides[each.slot], VK_VERTEX_INPUT_RATE_VERTEX});
    }
    auto input = Typed<VkPipelineVertexInputStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_VERTEX_INPUT_STATE_CREATE_INFO);
    input.vertexBindingDescriptionCount = static_cast<std::uint32_t>(streams.size());
    input.pVertexBindingDescriptions = streams.data();
    input.vertexAttributeDescriptionCount = static_cast<std::uint32_t>(attributes.size());
    input.pVertexAttributeDescriptions = attributes.data();

    auto assembly =
        Typed<VkPipelineInputAssemblyStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_INPUT_ASSEMBLY_STATE_CREATE_INFO);
    assembly.topology = key.topology == D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP ? VK_PRIMITIVE_TOPOLOGY_TRIANGLE_STRIP
                                                                               : VK_PRIMITIVE_TOPOLOGY_TRIANGLE_LIST;
    auto viewport = Typed<VkPipelineViewportStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_VIEWPORT_STATE_CREATE_INFO);
    viewport.viewportCount = 1;
    viewport.scissorCount = 1;
    auto raster =
        Typed<VkPipelineRasterizationStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_RASTERIZATION_STATE_CREATE_INFO);
    raster.depthClampEnable = key.clampsDepth ? VK_TRUE : VK_FALSE;
    raster.polygonMode = VK_POLYGON_MODE_FILL;
    raster.cullMode = CullOf(key.cull);
    // The viewport is upside down (Player), which leaves the winding on the target as Direct3D has it.
    raster.frontFace = key.frontIsCounterClockwise ? VK_FRONT_FACE_COUNTER_CLOCKWISE : VK_FRONT_FACE_CLOCKWISE;
    raster.lineWidth = 1;
    auto samples =
        Typed<VkPipelineMultisampleStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_MULTISAMPLE_STATE_CREATE_INFO);
    samples.rasterizationSamples = VK_SAMPLE_COUNT_1_BIT;
    const VkPipelineColorBlendAttachmentState attachment = BlendOf(key);
    auto blend = Typed<VkPipelineColorBlendStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_COLOR_BLEND_STATE_CREATE_INFO);
    blend.attachmentCount = 1;
    blend.pAttachments = &attachment;
    const std::array dynamicStates = {VK_DYNAMIC_STATE_VIEWPORT, VK_DYNAMIC_STATE_SCISSOR};
    auto dynamic = Typed<VkPipelineDynamicStateCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_DYNAMIC_STATE_CREATE_INFO);
    dynamic.dynamicStateCount = static_cast<std::uint32_t>(dynamicStates.size());
    dynamic.pDynamicStates = dynamicStates.data();
    auto rendering = Typed<VkPipelineRenderingCreateInfo>(VK_STRUCTURE_TYPE_PIPELINE_RENDERING_CREATE_INFO);
    rendering.colorAttachmentCount = 1;
    rendering.pColorAttachmentFormats = &key.targetFormat;

    auto info = Typed<VkGraphicsPipelineCreateInfo>(VK_STRUCTURE_TYPE_GRAPHICS_PIPELINE_CREATE_INFO);
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
    info.layout = drawing_.pipeline;
    VkPipeline made = VK_NULL_HANDLE;
    Check(vkCreateGraphicsPipelines(device_.Handle(), VK_NULL_HANDLE, 1, &info, nullptr, &made));
    return std::make_shared<const Pipeline>(device_, made);
}

VkPipeline PipelineCache::Computing(const ShaderCode& program) {
    std::shared_ptr<const Pipeline>& entry = computings_[program.Id()];
    if (!entry) {
        auto info = Typed<VkComputePipelineCreateInfo>(VK_STRUCTURE_TYPE_COMPUTE_PIPELINE_CREATE_INFO);
        const ShaderModule module(device_, program.Words());
        info.stage = StageOf(VK_SHADER_STAGE_COMPUTE_BIT, module, program);
        info.layout = computing_.pipeline;
        VkPipeline made = VK_NULL_HANDLE;
        Check(vkCreateComputePipelines(device_.Handle(), VK_NULL_HANDLE, 1, &info, nullptr, &made));
        entry = std::make_shared<const Pipeline>(device_, made);
    }
    return entry->Handle();
}

void PipelineCache::Forget(std::uint64_t program) noexcept {
    const auto lock = device_.Lock();
    const auto drop = [&](std::shared_ptr<const Pipeline>& pipeline) {
        try {
            if (pipeline) device_.Keep(pipeline);
        } catch (...) {
            vkDeviceWaitIdle(device_.Handle());
        }
    };
    for (auto each = drawings_.begin(); each != drawings_.end();) {
        if (each->first.vertexProgram != program && each->first.pixelProgram != program) {
            ++each;
            continue;
        }
        drop(each->second);
        each = drawings_.erase(each);
    }
    if (const auto found = computings_.find(program); found != computings_.end()) {
        drop(found->second);
        computings_.erase(found);
    }
}

}  // namespace Platform::Direct3D
