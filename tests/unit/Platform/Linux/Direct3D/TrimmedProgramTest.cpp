#include "Platform/Linux/Direct3D/TrimmedProgram.h"

#include "DeviceFixture.h"
#include "Platform/Linux/Direct3D/PipelineCache.h"
#include "Platform/Linux/Direct3D/Shader.h"
#include "Platform/Linux/Direct3D/SpirvModule.h"
#include "Programs.h"

#include <algorithm>
#include <vector>

using namespace Platform::Direct3D;

namespace {

using Words = std::vector<std::uint32_t>;
// Where Terms.hlsl has its outputs.
constexpr std::uint32_t coordinates = 0;
constexpr std::uint32_t wave = 1;
constexpr std::uint32_t turned = 2;

Words WithOutputs(const Words& read) {
    return WithoutUnreadOutputs(Programs::terms, read);
}

bool IsWhole(const Words& program) {
    return std::ranges::equal(program, Programs::terms);
}

TEST(TrimmedProgramTest, APixelProgramTellsTheLocationsThatItReads) {
    EXPECT_EQ(InputLocations(Programs::coordinates), Words{coordinates});
    EXPECT_EQ(InputLocations(Programs::waves), Words{wave});
    EXPECT_EQ(InputLocations(Programs::constant), Words{});
    EXPECT_EQ(InputLocations({}), std::nullopt);
    EXPECT_EQ(InputLocations(Words{1, 2, 3, 4, 5, 6, 7}), std::nullopt);
}

TEST(TrimmedProgramTest, WhatIsReadStays) {
    EXPECT_TRUE(IsWhole(WithOutputs({coordinates, wave, turned})));
}

TEST(TrimmedProgramTest, WhatServesUnreadOutputsAloneGoes) {
    const std::size_t whole = Programs::terms.size();
    const std::size_t withWave = WithOutputs({coordinates, wave}).size();
    const std::size_t plain = WithOutputs({coordinates}).size();
    EXPECT_LT(withWave, whole);
    EXPECT_LT(plain, withWave);
    EXPECT_LT(WithOutputs({}).size(), plain);
    EXPECT_FALSE(FindEntryPoint(WithOutputs({}), VK_SHADER_STAGE_VERTEX_BIT).empty());
}

TEST(TrimmedProgramTest, WhatIsTrimmedOnceStaysSo) {
    const Words once = WithOutputs({wave});
    EXPECT_EQ(WithoutUnreadOutputs(once, Words{wave}), once);
}

TEST(TrimmedProgramTest, WordsThatAreNoProgramStayAsTheyAre) {
    const Words nothing;
    EXPECT_EQ(WithoutUnreadOutputs(nothing, Words{}), nothing);
    const Words numbers{1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(WithoutUnreadOutputs(numbers, Words{}), numbers);
    Words tooLong(Programs::terms.begin(), Programs::terms.end());
    tooLong.pop_back();  // The last instruction has one word; the one before it then ends the program too early.
    tooLong.push_back(0x00020000U | 253U);
    EXPECT_EQ(WithoutUnreadOutputs(tooLong, Words{}), tooLong);
}

// Each word in turn is wrong, and the reading of it may not leave the words.
TEST(TrimmedProgramTest, ADamagedProgramIsRead) {
    const Words whole(Programs::terms.begin(), Programs::terms.end());
    std::size_t trimmed = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const std::uint32_t wrong : {0U, 0x00010005U, 0x00010047U, 0x0003003BU, 0xFFFFFFFFU}) {
            Words damaged = whole;
            damaged[at] = wrong;
            trimmed += WithoutUnreadOutputs(damaged, Words{}).size() < whole.size() ? 1U : 0U;
        }
    }
    EXPECT_GT(trimmed, 0U) << "Most of the damage doesn't concern what is trimmed.";
}

// Functions of GLSL.std.450 by their numbers.
TEST(TrimmedProgramTest, MathematicsThatWriteThroughAPointerAreNoMereResult) {
    constexpr std::uint32_t mathematics = 1;
    const auto isPure = [](std::uint32_t set, std::uint32_t function) {
        const Words words = {7U << 16 | Spirv::OpExtInst, 2, 3, set, function, 4, 5};
        return Spirv::IsPure({Spirv::OpExtInst, words}, mathematics);
    };
    EXPECT_TRUE(isPure(mathematics, 26));   // pow
    EXPECT_FALSE(isPure(mathematics, 35));  // modf
    EXPECT_TRUE(isPure(mathematics, 36));   // modf's result as a structure
    EXPECT_FALSE(isPure(mathematics, 51));  // frexp
    EXPECT_FALSE(isPure(mathematics, 76));  // interpolation at the centroid
    EXPECT_FALSE(isPure(9, 26)) << "of another set";
}

using TrimmedDrawingTest = DeviceFixture;

TEST_F(TrimmedDrawingTest, OneVertexProgramServesPixelProgramsThatReadDifferentThings) {
    const auto texture = MakeTexture(8, 8, D3D11_BIND_RENDER_TARGET);
    const auto target = MakeTarget(texture.Get());
    const auto constants = MakeConstants();
    SetStrip(context.Get(), target.Get(), 8, 8);
    ComPtr<ID3D11VertexShader> vertex;
    ASSERT_EQ(device->CreateVertexShader(Programs::terms.data(), Programs::terms.size_bytes(), nullptr,
                                         vertex.GetAddressOf()),
              S_OK);
    context->VSSetShader(vertex.Get(), nullptr, 0);
    context->VSSetConstantBuffers(0, 1, constants.GetAddressOf());
    WriteColor(context.Get(), constants.Get(), {1, 0.5F, 0, 0});

    context->PSSetShader(MakePixelShader(Programs::coordinates).Get(), nullptr, 0);
    context->Draw(4, 0);
    EXPECT_EQ(Pixel(texture.Get(), 0, 0) & 0xFF0000FFU, 0xFF000000U);
    EXPECT_GT(Pixel(texture.Get(), 7, 0) >> 16 & 0xFF, 0xE0U);

    context->PSSetShader(MakePixelShader(Programs::waves).Get(), nullptr, 0);
    context->Draw(4, 0);
    EXPECT_EQ(Pixel(texture.Get(), 7, 7) & 0xFFFF00FFU, 0x00FF0000U) << "With no turn of the loop it is the colour.";
    context->ClearState();
}

TEST_F(TrimmedDrawingTest, ProgramsWithTheSameWordsAreOneAsLongAsTheyLive) {
    PipelineCache& pipelines = GraphicsDevice::From(device.Get())->Pipelines();
    const Words words(Programs::constant.begin(), Programs::constant.end());
    auto first = pipelines.Code(words, "main");
    EXPECT_EQ(pipelines.Code(words, "main"), first);
    EXPECT_NE(pipelines.Code({Programs::waves.begin(), Programs::waves.end()}, "main"), first);
    EXPECT_NE(pipelines.Code(words, "other"), first) << "Another entry point is another program.";
    const std::uint64_t id = first->Id();
    first.reset();
    EXPECT_NE(pipelines.Code(words, "main")->Id(), id);
}

}  // namespace
