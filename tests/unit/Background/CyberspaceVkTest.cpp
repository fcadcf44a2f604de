// "Cyberspace" on the real device: the numbers of its field against a calculation of their own, then whole pictures.
#include "CyberspaceReference.h"
#include "ShaderBench.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

#include "tests/unit/Background/shaders/compiled/CyberspaceCells.inc"
#include "tests/unit/Background/shaders/compiled/CyberspaceTiles.inc"

using Tamborel::BackgroundKind;

constexpr Tamborel::ShaderBytecode kCells = {kCyberspaceCells, sizeof(kCyberspaceCells)};
constexpr Tamborel::ShaderBytecode kTiles = {kCyberspaceTiles, sizeof(kCyberspaceTiles)};
constexpr UINT kWidth = 320;
constexpr UINT kHeight = 180;

// Points this close to a line, in sides of a tile, may fall on its other side: the device's powers and sines are good
// to some millionths, and a tile is a twentieth of the plane's unit.
constexpr double kClearance = 2e-3;

class CyberspaceVk : public testing::Test {
protected:
    static void SetUpTestSuite() { bench = std::make_unique<ShaderBench>(); }
    static void TearDownTestSuite() { bench.reset(); }

    static Tamborel::ShaderBytecode Whole() {
        return Tamborel::BackgroundPixelPrograms()[static_cast<std::size_t>(BackgroundKind::Cyberspace)];
    }

    /// Calls `compare(texel, reference point)` for every pixel that isn't close to a line; they are the most.
    template <class Compare>
    static void ForClearPixels(Tamborel::ShaderBytecode program, float time, Compare&& compare) {
        SCOPED_TRACE(testing::Message() << "time " << time);
        const FloatPicture picture = bench->Draw(program, ConstantsFor(kWidth, kHeight, time));
        const CyberspaceReference reference{kWidth, kHeight, static_cast<double>(time)};
        std::size_t clear = 0;
        for (UINT row = 0; row < kHeight; ++row) {
            for (UINT column = 0; column < kWidth; ++column) {
                const auto point = reference.At(column + 0.5, kHeight - (row + 0.5));
                if (point.clearance < kClearance) continue;
                ++clear;
                compare(picture.At(column, row), point);
                if (testing::Test::HasFatalFailure()) return;
            }
        }
        EXPECT_GT(clear, picture.texels.size() * 97 / 100);
    }

    static inline std::unique_ptr<ShaderBench> bench;
};

TEST_F(CyberspaceVk, ZoomLensPanAndCellsAgreeWithTheReference) {
    for (const float time : {0.0F, 10.0F, 60.0F, 400.0F}) {
        ForClearPixels(kCells, time, [](const auto& texel, const CyberspaceReference::Point& point) {
            ASSERT_EQ(texel[0], static_cast<float>(point.id[0]));
            ASSERT_EQ(texel[1], static_cast<float>(point.id[1]));
            ASSERT_EQ(texel[2], static_cast<float>(point.face));
            // A sine that is good to 1e-7, times 43758.55; the hash may step over from 1 to 0.
            const double difference = std::abs(static_cast<double>(texel[3]) - point.random);
            ASSERT_LT(std::min(difference, 1.0 - difference), 0.01);
        });
    }
}

TEST_F(CyberspaceVk, PlacesOnTheFacesAndHeightsOfBlocksAgreeWithTheReference) {
    for (const float time : {0.0F, 10.0F, 60.0F}) {
        std::size_t wrong = 0;
        ForClearPixels(kTiles, time, [&](const auto& texel, const CyberspaceReference::Point& point) {
            ASSERT_NEAR(texel[0], point.onFace[0], 1e-3);
            ASSERT_NEAR(texel[1], point.onFace[1], 1e-3);
            // The device's own random number of the hexagon: tiles multiply its last digits. Those of the noise come
            // out some thousandths apart, which an eighth power, doubled, makes a few hundredths.
            const CyberspaceReference reference{kWidth, kHeight, static_cast<double>(time)};
            const double expected = reference.BlockHeight(point, static_cast<double>(texel[3]));
            if (std::abs(static_cast<double>(texel[2]) - expected) > 0.05) ++wrong;
            ASSERT_LE(texel[2], 0.95F);
        });
        // A random number at the step from 1 to 0 takes its tile along.
        EXPECT_LT(wrong, kWidth * kHeight / 100);
    }
}

TEST_F(CyberspaceVk, BlocksStandInADiscAndNoneReachesOverItsFacesEdge) {
    // A block reaches over the edge only if it is higher than its tile is far from it.
    for (const float time : {0.0F, 25.0F, 60.0F}) {
        for (const auto& texel : bench->Draw(kTiles, ConstantsFor(kWidth, kHeight, time)).texels) {
            const double x = std::floor(10.0F * texel[0]) - 4.5F;
            const double y = std::floor(10.0F * texel[1]) - 4.5F;
            if (std::hypot(x, y) >= 6.0) {
                ASSERT_EQ(texel[2], 0.0F);
            }
            ASSERT_GE(texel[2], -0.1001F);
        }
    }
}

TEST_F(CyberspaceVk, SixteenSamplesSoftenEveryEdge) {
    // No pixel repeats one of a few colours: along the edges they are mixtures.
    const FloatPicture picture = bench->Draw(Whole(), ConstantsFor(kWidth, kHeight, 0.0F));
    const FloatPicture larger = bench->Draw(Whole(), ConstantsFor(4 * kWidth, 4 * kHeight, 0.0F));
    double difference = 0.0;
    for (UINT row = 0; row < kHeight; ++row) {
        for (UINT column = 0; column < kWidth; ++column) {
            double mean = 0.0;
            for (UINT y = 0; y < 4; ++y) {
                for (UINT x = 0; x < 4; ++x) {
                    mean += static_cast<double>(larger.At(4 * column + x, 4 * row + y)[1]) / 16.0;
                }
            }
            difference += std::abs(mean - static_cast<double>(picture.At(column, row)[1]));
        }
    }
    // The middles of a picture's pixels at four times the size are this one's samples: only those edges differ whose
    // width hangs on the height.
    EXPECT_LT(difference / (kWidth * kHeight), 0.01);
}

TEST_F(CyberspaceVk, FinitePictureForAWidthOrHeightOfOne) {
    for (const auto& [width, height] : {std::pair{1U, 1U}, {1U, 200U}, {200U, 1U}, {4096U, 1U}, {1U, 4096U}}) {
        const FloatPicture picture = bench->Draw(Whole(), ConstantsFor(width, height, 60.0F));
        for (const auto& texel : picture.texels) {
            for (const float component : texel) ASSERT_TRUE(std::isfinite(component)) << width << " by " << height;
        }
    }
}

TEST_F(CyberspaceVk, KindsOneToSixDependOnTimeOnlyThroughTheClock) {
    // The frame number, the glow and the pointer change nothing; the clock changes every one of them.
    for (std::size_t kind = 1; kind <= 6; ++kind) {
        SCOPED_TRACE(Tamborel::kBackgroundDisplayNames[kind]);
        const auto program = Tamborel::BackgroundPixelPrograms()[kind];
        auto constants = ConstantsFor(64, 36, 10.0F);
        const FloatPicture picture = bench->Draw(program, constants);
        constants.iFrame = 99;
        constants.sunriseGlow = 4.0F;
        constants.iMouse = {0.3F, 0.7F, 1.0F, 1.0F};
        EXPECT_EQ(bench->Draw(program, constants).texels, picture.texels);
        constants.iTime = 12.0F;
        EXPECT_NE(bench->Draw(program, constants).texels, picture.texels);
    }
}

}  // namespace
