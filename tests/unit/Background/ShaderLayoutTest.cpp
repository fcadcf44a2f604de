// The compiled programs and the records that are written for them agree on every offset.
#include "Background/ShaderConstants.h"
#include "Background/ShaderPrograms.h"
#include "SpirvLayout.h"

#include <gtest/gtest.h>

namespace {

using Tamborel::BlitConstants;
using Offsets = std::map<std::string, std::uint32_t>;

TEST(ShaderLayout, BlitConstantsLieWhereTheProgramReadsThem) {
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
    EXPECT_EQ(MemberOffsets(Tamborel::BlitPixelProgram(), "BlitConstants"), expected);
}

TEST(ShaderLayout, EveryKindUpToTheSunriseHasAProgram) {
    for (const auto& program : Tamborel::BackgroundPixelPrograms()) {
        ASSERT_GE(program.size, 20U);
        EXPECT_EQ(*static_cast<const std::uint32_t*>(program.data), 0x07230203U);
    }
}

}  // namespace
