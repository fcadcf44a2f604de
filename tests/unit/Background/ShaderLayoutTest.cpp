// The compiled programs and the records that are written for them agree on every offset.
#include "Background/LiquidMetalSurface.h"
#include "Background/ShaderConstants.h"
#include "Background/ShaderPrograms.h"
#include "SpirvLayout.h"

#include <gtest/gtest.h>

namespace {

using Tamborel::BlitConstants;
using Offsets = std::map<std::string, std::uint32_t>;

TEST(ShaderLayout, BlitConstantsLieWhereTheVertexProgramReadsThemForTheBlit) {
    const Offsets expected = {
        {"SdrWhiteScale", offsetof(BlitConstants, SdrWhiteScale)},
        {"UseThemeBackground", offsetof(BlitConstants, UseThemeBackground)},
        {"IsMaximized", offsetof(BlitConstants, IsMaximized)},
        {"MaximizedChromePolicy", offsetof(BlitConstants, MaximizedChromePolicy)},
        {"WindowMetrics", offsetof(BlitConstants, WindowMetrics)},
        {"ChromeMetrics", offsetof(BlitConstants, ChromeMetrics)},
        {"ClientFrameExtension", offsetof(BlitConstants, ClientFrameExtension)},
        {"TitleBarFill", offsetof(BlitConstants, TitleBarFill)},
        {"FrameFill", offsetof(BlitConstants, FrameFill)},
        {"InnerBorderColor", offsetof(BlitConstants, InnerBorderColor)},
        {"FlatInteriorFill", offsetof(BlitConstants, FlatInteriorFill)},
        {"ColorGrade", offsetof(BlitConstants, ColorGrade)},
    };
    EXPECT_EQ(MemberOffsets(Tamborel::BackgroundVertexProgram(), "BlitConstants"), expected);
}

TEST(ShaderLayout, ConstantsLieWhereTheProgramsReadThem) {
    using Tamborel::Constants;
    const Offsets expected = {
        {"iResolution", offsetof(Constants, iResolution)},
        {"iChannelResolution", offsetof(Constants, iChannelResolution)},
        {"rangeMin", offsetof(Constants, rangeMin)},
        {"rangeMax", offsetof(Constants, rangeMax)},
        {"diffuseColor", offsetof(Constants, diffuseColor)},
        {"iMouse", offsetof(Constants, iMouse)},
        {"iTime", offsetof(Constants, iTime)},
        {"opacity", offsetof(Constants, opacity)},
        {"colorHueDegrees", offsetof(Constants, colorHueDegrees)},
        {"colorSaturation", offsetof(Constants, colorSaturation)},
        {"colorBrightness", offsetof(Constants, colorBrightness)},
        {"colorContrast", offsetof(Constants, colorContrast)},
        {"iFrame", offsetof(Constants, iFrame)},
        {"sunriseGlow", offsetof(Constants, sunriseGlow)},
        {"pad4", offsetof(Constants, pad4)},
        {"pad5", offsetof(Constants, pad5)},
        {"pad6", offsetof(Constants, pad6)},
        {"pad7", offsetof(Constants, pad7)},
    };
    EXPECT_EQ(MemberOffsets(Tamborel::BackgroundVertexProgram(), "Constants"), expected);
    for (const auto& program : Tamborel::BackgroundPixelPrograms()) {
        const auto offsets = MemberOffsets(program, "Constants");
        // A program that takes all it needs from the vertex program has none of its own.
        if (!offsets.empty()) {
            EXPECT_EQ(offsets, expected);
        }
    }
}

TEST(ShaderLayout, LiquidMetalConstantsLieWhereBothStagesReadThem) {
    using Tamborel::LiquidMetalConstants;
    const Offsets expected = {
        {"iResolution", offsetof(LiquidMetalConstants, iResolution)},
        {"gridDimensions", offsetof(LiquidMetalConstants, gridDimensions)},
        {"pointerPositionUV", offsetof(LiquidMetalConstants, pointerPositionUV)},
        {"iTime", offsetof(LiquidMetalConstants, iTime)},
        {"emberStrength", offsetof(LiquidMetalConstants, emberStrength)},
        {"pointerStrength", offsetof(LiquidMetalConstants, pointerStrength)},
        {"viewScale", offsetof(LiquidMetalConstants, viewScale)},
        {"fineDetail", offsetof(LiquidMetalConstants, fineDetail)},
        {"sampleSpacing", offsetof(LiquidMetalConstants, sampleSpacing)},
        {"reserved", offsetof(LiquidMetalConstants, reserved)},
    };
    EXPECT_EQ(MemberOffsets(Tamborel::SurfaceComputeProgram(), "LiquidMetalConstants"), expected);
    EXPECT_EQ(MemberOffsets(Tamborel::SurfacePixelProgram(), "LiquidMetalConstants"), expected);
}

TEST(ShaderLayout, EveryKindUpToTheSunriseHasAProgram) {
    for (const auto& program : Tamborel::BackgroundPixelPrograms()) {
        ASSERT_GE(program.size, 20U);
        EXPECT_EQ(*static_cast<const std::uint32_t*>(program.data), 0x07230203U);
    }
}

}  // namespace
