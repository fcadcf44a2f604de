// What one frame records, in which order, and what it writes to the programs' constants.
#include "Background/BackgroundRenderer.h"
#include "Background/ShaderConstants.h"
#include "RecordingDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {

using Microsoft::WRL::ComPtr;
using Tamborel::BackgroundKind;
using Tamborel::BackgroundRenderer;
using Tamborel::BlitConstants;
using Tamborel::BlitFrameRecord;
using Tamborel::Constants;
using Tamborel::Float4;
using Tamborel::SurfaceTarget;
using Lines = std::vector<std::string>;

const Lines kPipeline = {
    "IASetInputLayout InputLayout 0",
    "IASetVertexBuffers 0: Buffer 0 stride 32 offset 0",
    "IASetPrimitiveTopology strip",
    "VSSetShader VertexShader 0",
    "RSSetState RasterizerState 0",
    "PSSetConstantBuffers 0: Buffer 1",
    "PSSetSamplers 0: SamplerState 0",
    "OMSetBlendState BlendState 0 mask 4294967295",
    "OMSetDepthStencilState DepthStencilState 0",
};

Lines operator+(Lines left, const Lines& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

class RecordDraw : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(renderer.InitializeOn(&device), S_OK);
        // The second view of its device, so that its name differs from that of the renderer's first one.
        for (int i = 0; i < 2; ++i) {
            ASSERT_EQ(windowDevice.CreateRenderTargetView(nullptr, nullptr, windowImage.ReleaseAndGetAddressOf()),
                      S_OK);
        }
        surface = {windowImage.Get(), 1280, 720};
        record.useThemeBackground = 1;
    }

    HRESULT Draw(float time = 0.0F, float whiteScale = 1.0F) {
        return renderer.RecordDraw(&surface, time, &context, list.ReleaseAndGetAddressOf(), record, whiteScale);
    }

    /// Draws at `time` and gives what the kind's program is told.
    Constants ConstantsAt(float time) {
        EXPECT_EQ(Draw(time), S_OK);
        return context.Written<Constants>("Buffer 1");
    }

    RecordingDevice windowDevice;  // the window's own image isn't the renderer's: it counts apart
    RecordingDevice device;
    RecordingDeferredContext context;
    ComPtr<ID3D11RenderTargetView> windowImage;
    ComPtr<ID3D11CommandList> list;
    SurfaceTarget surface;
    BlitFrameRecord record;
    BackgroundRenderer renderer;
};

TEST_F(RecordDraw, BackgroundIsDrawnOffscreenThenBlitted) {
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_TRUE(list);
    EXPECT_EQ(context.Take(), kPipeline + Lines({
                                              "ClearRenderTargetView RenderTargetView 0 0 0 0 1",
                                              "OMSetRenderTargets 0: RenderTargetView 0",
                                              "PSSetShaderResources 0: none, none, none, none",
                                              "RSSetViewports 0 0 640 360 0 1",
                                              "Map Buffer 1 discard",
                                              "Unmap Buffer 1",
                                              "VSSetConstantBuffers 2: Buffer 1",
                                              "PSSetShader PixelShader 0",
                                              "Draw 4 0",
                                              "OMSetRenderTargets 0:",
                                              "OMSetRenderTargets 0: RenderTargetView 1",
                                              "RSSetViewports 0 0 1280 720 0 1",
                                              "PSSetShaderResources 0: ShaderResourceView 0",
                                              "Map Buffer 2 discard",
                                              "Unmap Buffer 2",
                                              "PSSetConstantBuffers 0: Buffer 2",
                                              "VSSetConstantBuffers 1: Buffer 2",
                                              "PSSetShader PixelShader 8",
                                              "Draw 4 0",
                                              "OMSetRenderTargets 0:",
                                              "PSSetShaderResources 0: none",
                                              "FinishCommandList restore",
                                          }));
}

TEST_F(RecordDraw, WithoutBackgroundOnlyTheBlitIsRecorded) {
    record.useThemeBackground = 0;
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_TRUE(list);
    EXPECT_EQ(context.Take(), kPipeline + Lines({
                                              "OMSetRenderTargets 0:",
                                              "OMSetRenderTargets 0: RenderTargetView 1",
                                              "RSSetViewports 0 0 1280 720 0 1",
                                              "PSSetShaderResources 0: none",
                                              "Map Buffer 2 discard",
                                              "Unmap Buffer 2",
                                              "PSSetConstantBuffers 0: Buffer 2",
                                              "VSSetConstantBuffers 1: Buffer 2",
                                              "PSSetShader PixelShader 8",
                                              "Draw 4 0",
                                              "OMSetRenderTargets 0:",
                                              "PSSetShaderResources 0: none",
                                              "FinishCommandList restore",
                                          }));
    EXPECT_TRUE(device.textures.empty());
    EXPECT_EQ(context.Written<BlitConstants>("Buffer 2").UseThemeBackground, 0.0F);
}

TEST_F(RecordDraw, SurfaceOfZeroByNRecordsNothing) {
    for (const auto& [width, height] : {std::pair{0U, 720U}, {1280U, 0U}, {0U, 0U}}) {
        surface.width = width;
        surface.height = height;
        EXPECT_EQ(Draw(), S_OK);
        EXPECT_FALSE(list);
    }
    EXPECT_TRUE(context.calls.empty());
    EXPECT_EQ(renderer.FrameCounter(), 0);
}

TEST_F(RecordDraw, NothingIsRecordedWithoutSurfaceContextOrDevice) {
    EXPECT_EQ(renderer.RecordDraw(nullptr, 0.0F, &context, list.GetAddressOf(), record, 1.0F), S_OK);
    EXPECT_EQ(renderer.RecordDraw(&surface, 0.0F, nullptr, list.GetAddressOf(), record, 1.0F), S_OK);
    renderer.ReleaseResources();
    EXPECT_EQ(Draw(), S_OK);
    EXPECT_FALSE(list);
    EXPECT_TRUE(context.calls.empty());
}

TEST_F(RecordDraw, ClearsTheOutputFirst) {
    ID3D11CommandList* output = reinterpret_cast<ID3D11CommandList*>(&context);
    EXPECT_EQ(renderer.RecordDraw(nullptr, 0.0F, &context, &output, record, 1.0F), S_OK);
    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(renderer.RecordDraw(&surface, 0.0F, &context, nullptr, record, 1.0F), E_POINTER);
}

TEST_F(RecordDraw, EachKindDrawsWithItsProgramAndUnknownOnesWithTheFirst) {
    for (const std::uint32_t kind : {1U, 6U, 7U, 9U, 0U}) {
        renderer.SetBackground(static_cast<BackgroundKind>(kind));
        ASSERT_EQ(Draw(), S_OK);
        const Lines calls = context.Take();
        EXPECT_EQ(calls[kPipeline.size() + 7], "PSSetShader PixelShader " + std::to_string(kind % 9)) << kind;
    }
}

TEST_F(RecordDraw, KindChosenBeforeInitializeIsShown) {
    BackgroundRenderer late;
    late.SetBackground(BackgroundKind::SilkRibbons);
    ASSERT_EQ(late.InitializeOn(&windowDevice), S_OK);
    ASSERT_EQ(late.RecordDraw(&surface, 0.0F, &context, list.GetAddressOf(), record, 1.0F), S_OK);
    EXPECT_EQ(context.calls[kPipeline.size() + 7], "PSSetShader PixelShader 4");
}

TEST_F(RecordDraw, OffscreenTextureIsMadeOncePerSize) {
    ASSERT_EQ(Draw(), S_OK);
    ASSERT_EQ(Draw(), S_OK);
    surface.width = 1920;  // the same offscreen size
    surface.height = 1080;
    ASSERT_EQ(Draw(), S_OK);
    ASSERT_EQ(device.textures.size(), 1U);
    EXPECT_EQ(device.textures[0].width, 640U);
    EXPECT_EQ(device.textures[0].height, 360U);
    EXPECT_EQ(device.textures[0].format, DXGI_FORMAT_R16G16B16A16_FLOAT);
    EXPECT_EQ(device.textures[0].bindFlags, static_cast<UINT>(D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE));
    const int alive = device.alive;
    surface.width = surface.height = 900;
    ASSERT_EQ(Draw(), S_OK);
    ASSERT_EQ(device.textures.size(), 2U);
    EXPECT_EQ(device.textures[1].width, 640U);
    EXPECT_EQ(device.textures[1].height, 640U);
    EXPECT_EQ(device.alive, alive);  // the old texture and its views are gone
}

TEST_F(RecordDraw, FullSizeKindDrawsAtTheSurfaceSize) {
    renderer.SetBackground(BackgroundKind::QuietGoldSunrise);
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_EQ(device.textures[0].width, 1280U);
    EXPECT_EQ(device.textures[0].height, 720U);
    EXPECT_EQ(context.Written<Constants>("Buffer 1").iResolution, (Float4{1280.0F, 720.0F, 0.0F, 0.0F}));
    EXPECT_EQ(context.Written<BlitConstants>("Buffer 2").UseThemeBackground, 2.0F);
}

TEST_F(RecordDraw, FailedOffscreenObjectSkipsTheDrawKeepsTheSizeAndIsTriedAgain) {
    ASSERT_EQ(Draw(), S_OK);
    context.Take();
    const int withoutOffscreen = device.alive - 3;
    surface.width = surface.height = 900;
    for (const std::size_t object : {0U, 1U, 2U}) {
        device.failAt = device.created.size() + object;
        EXPECT_EQ(Draw(), E_OUTOFMEMORY);
        EXPECT_FALSE(list);
        EXPECT_TRUE(context.calls.empty());
        EXPECT_EQ(device.alive, withoutOffscreen);
        EXPECT_EQ(renderer.OffscreenTextureSize(), (Tamborel::OffscreenSize{640, 360}));
    }
    EXPECT_EQ(renderer.FrameCounter(), 1);
    device.failAt.reset();
    EXPECT_EQ(Draw(), S_OK);
    EXPECT_TRUE(list);
    EXPECT_EQ(renderer.OffscreenTextureSize(), (Tamborel::OffscreenSize{640, 640}));
}

TEST_F(RecordDraw, ConstantsAreWrittenWhole) {
    renderer.SetColorGrade({21.0F, 0.45F, 0.1F, 1.5F});  // the blit's, not the program's
    renderer.SetSunriseParameters(1.0F, 2.5F);
    const Constants c = ConstantsAt(3.5F);
    EXPECT_EQ(c.iResolution, (Float4{640.0F, 360.0F, 0.0F, 0.0F}));
    EXPECT_EQ(c.iChannelResolution, (std::array<Float4, 4>{}));
    EXPECT_EQ(c.rangeMin, (Float4{0.0F, 0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(c.rangeMax, (Float4{1.0F, 1.0F, 1.0F, 1.0F}));
    EXPECT_EQ(c.diffuseColor, (Float4{1.0F, 1.0F, 1.0F, 1.0F}));
    EXPECT_EQ(c.iMouse, (Float4{}));
    EXPECT_EQ(c.iTime, 3.5F);
    EXPECT_EQ(c.opacity, 1.0F);
    EXPECT_EQ(c.colorHueDegrees, 0.0F);
    EXPECT_EQ(c.colorSaturation, 1.0F);
    EXPECT_EQ(c.colorBrightness, 0.0F);
    EXPECT_EQ(c.colorContrast, 1.0F);
    EXPECT_EQ(c.iFrame, 0);
    EXPECT_EQ(c.sunriseGlow, 2.5F);
    EXPECT_EQ(c.pad4 | c.pad5 | c.pad6 | c.pad7, 0);
}

TEST_F(RecordDraw, BlitConstantsComeFromRecordAndGrade) {
    record = {1,
              1,
              1,
              2,
              {800, 600, 4, 30},
              {8, 42, 0.5F},
              {1, 2, 3, 4},
              {.1F, .2F, .3F, .4F},
              {.5F, .6F, .7F, .8F},
              {.9F, .8F, .7F, .6F},
              {.5F, .4F, .3F, .2F}};
    renderer.SetColorGrade({21.0F, 0.45F, 0.1F, 1.5F});
    ASSERT_EQ(Draw(0.0F, 2.5F), S_OK);
    const auto c = context.Written<BlitConstants>("Buffer 2");
    EXPECT_EQ(c.SdrWhiteScale, 2.5F);
    EXPECT_EQ(c.UseThemeBackground, 1.0F);
    EXPECT_EQ(c.IsMaximized, 1.0F);
    EXPECT_EQ(c.MaximizedChromePolicy, 2.0F);
    EXPECT_EQ(c.WindowMetrics, record.windowMetrics);
    EXPECT_EQ(c.ChromeMetrics, (Float4{8.0F, 42.0F, 0.5F, 1.0F}));
    EXPECT_EQ(c.ClientFrameExtension, record.clientFrameExtension);
    EXPECT_EQ(c.TitleBarFill, record.titleBarFill);
    EXPECT_EQ(c.FrameFill, record.frameFill);
    EXPECT_EQ(c.InnerBorderColor, record.innerBorderColor);
    EXPECT_EQ(c.FlatInteriorFill, record.flatInteriorFill);
    EXPECT_EQ(c.ColorGrade, (Tamborel::ColorGrade{21.0F, 0.45F, 0.1F, 1.5F}));
    record = {};
    ASSERT_EQ(Draw(), S_OK);
    const auto flat = context.Written<BlitConstants>("Buffer 2");
    EXPECT_EQ(flat.IsMaximized, 0.0F);
    EXPECT_EQ(flat.ChromeMetrics[3], 0.0F);
}

TEST_F(RecordDraw, WhiteScaleOfZeroOrLessIsOne) {
    for (const float scale : {0.0F, -2.0F, std::numeric_limits<float>::quiet_NaN()}) {
        ASSERT_EQ(Draw(0.0F, scale), S_OK);
        EXPECT_EQ(context.Written<BlitConstants>("Buffer 2").SdrWhiteScale, 1.0F) << scale;
    }
}

TEST_F(RecordDraw, FailedMapSkipsTheWriteAndTheFrameGoesOn) {
    context.mapResult = E_FAIL;
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_TRUE(list);
    const Lines calls = context.Take();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Draw 4 0"), 2);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "PSSetConstantBuffers 0: Buffer 2"), 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Unmap Buffer 1"), 0);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Unmap Buffer 2"), 0);
}

TEST_F(RecordDraw, FailureToFinishIsReturnedWithoutAList) {
    context.finishResult = static_cast<HRESULT>(0x887A0005);
    EXPECT_EQ(Draw(), static_cast<HRESULT>(0x887A0005));
    EXPECT_FALSE(list);
}

TEST_F(RecordDraw, LightKindsReadTheCallersTimeAndTheFrameCounter) {
    EXPECT_EQ(ConstantsAt(1.5F).iFrame, 0);
    const Constants c = ConstantsAt(2.5F);
    EXPECT_EQ(c.iTime, 2.5F);
    EXPECT_EQ(c.iFrame, 1);
    renderer.SetFrameCounter(41);
    EXPECT_EQ(ConstantsAt(2.5F).iFrame, 41);
    renderer.SetFrameCounter(std::numeric_limits<std::int32_t>::max());
    ASSERT_EQ(Draw(), S_OK);
    EXPECT_EQ(renderer.FrameCounter(), std::numeric_limits<std::int32_t>::min());
}

TEST_F(RecordDraw, LightKindsShowTimeZeroAndTheFrameCountStandsStillWithAnimateFalse) {
    ConstantsAt(1.0F);
    renderer.SetAnimate(false);
    for (std::uint32_t kind = 0; kind <= 6; ++kind) {
        renderer.SetBackground(static_cast<BackgroundKind>(kind));
        const Constants c = ConstantsAt(5.0F);
        EXPECT_EQ(c.iTime, 0.0F) << kind;
        EXPECT_EQ(c.iFrame, 0) << kind;
    }
    EXPECT_EQ(renderer.FrameCounter(), 1);
}

TEST_F(RecordDraw, SunriseRunsOnAClockAndAFrameNumberOfItsOwn) {
    renderer.SetBackground(BackgroundKind::QuietGoldSunrise);
    renderer.SetSunriseParameters(2.0F, 0.0F);
    renderer.SetSunriseClock(10.0, 7);
    EXPECT_EQ(ConstantsAt(100.0F).iTime, 10.0F);  // the first frame adds nothing
    Constants c = ConstantsAt(100.5F);
    EXPECT_EQ(c.iTime, 11.0F);
    EXPECT_EQ(c.iFrame, 8);
    EXPECT_EQ(ConstantsAt(99.0F).iTime, 11.0F);  // time going back counts as none
    EXPECT_EQ(ConstantsAt(99.25F).iTime, 11.5F);
    renderer.SetAnimate(false);
    c = ConstantsAt(200.0F);
    EXPECT_EQ(c.iTime, 11.5F);
    EXPECT_EQ(c.iFrame, 11);
    EXPECT_EQ(renderer.SunriseFrame(), 11);
}

TEST_F(RecordDraw, SunriseOfRateZeroStandsStill) {
    renderer.SetBackground(BackgroundKind::QuietGoldSunrise);
    renderer.SetSunriseParameters(0.0F, 0.0F);
    ConstantsAt(1.0F);
    const Constants c = ConstantsAt(2.0F);
    EXPECT_EQ(c.iTime, 0.0F);
    EXPECT_EQ(c.iFrame, 0);
    EXPECT_EQ(renderer.FrameCounter(), 2);
}

TEST_F(RecordDraw, SwitchingKindsAddsNoTimeAndSettingTheSameKindLosesNone) {
    renderer.SetBackground(BackgroundKind::QuietGoldSunrise);
    ConstantsAt(1.0F);
    renderer.SetBackground(BackgroundKind::QuietGoldSunrise);
    EXPECT_EQ(ConstantsAt(2.0F).iTime, 1.0F);
    renderer.SetBackground(BackgroundKind::DawnGrid);
    ConstantsAt(50.0F);
    renderer.SetBackground(BackgroundKind::QuietGoldSunrise);
    EXPECT_EQ(ConstantsAt(100.0F).iTime, 1.0F);
    EXPECT_EQ(ConstantsAt(101.0F).iTime, 2.0F);
}

TEST_F(RecordDraw, SettingTheSunriseClockAddsNoTimeAtTheNextFrame) {
    renderer.SetBackground(BackgroundKind::QuietGoldSunrise);
    ConstantsAt(1.0F);
    renderer.SetSunriseClock(5.0, 0);
    EXPECT_EQ(ConstantsAt(9.0F).iTime, 5.0F);
}

TEST_F(RecordDraw, SteadyStateMakesNoObjects) {
    ASSERT_EQ(Draw(), S_OK);
    const std::size_t made = device.created.size();
    for (int i = 0; i < 10; ++i) ASSERT_EQ(Draw(static_cast<float>(i)), S_OK);
    EXPECT_EQ(device.created.size(), made);
}

}  // namespace
