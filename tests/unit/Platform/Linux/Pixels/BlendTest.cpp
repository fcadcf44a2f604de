#include "Platform/Linux/Pixels/Blend.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace Platform {
namespace {

/// A small picture with its memory.
struct Picture {
    Picture(int width, int height, std::uint32_t pixel)
        : memory(static_cast<std::size_t>(width * height), pixel),
          view{memory.data(), static_cast<std::size_t>(width), width, height} {}
    std::uint32_t& At(int x, int y) { return view.Row(y)[x]; }

    std::vector<std::uint32_t> memory;
    Pixels view;
};

void BlendAll(const Pixels& target, const Pixels& source, int x, int y) {
    std::vector<Span> spans;
    FindSpans(source, spans);
    BlendSpans(target, source, spans, x, y);
}

unsigned Channel(std::uint32_t pixel, int shift) {
    return (pixel >> shift) & 0xFFU;
}

TEST(Blend, EveryAlphaOverEveryByteIsRoundedToNearest) {
    for (unsigned alpha = 0; alpha < 256; ++alpha) {
        for (unsigned below = 0; below < 256; ++below) {
            const unsigned source = alpha / 2;
            const std::uint32_t over = alpha << 24 | source << 16 | source << 8 | source;
            if (over == 0) continue;
            Picture target(1, 1, 0xFF000000U | below << 16 | below << 8 | below);
            Picture layer(1, 1, over);
            BlendAll(target.view, layer.view, 0, 0);
            const auto expected = static_cast<unsigned>(std::lround(source + below * (255.0 - alpha) / 255.0));
            for (const int shift : {0, 8, 16}) {
                ASSERT_EQ(expected, Channel(target.At(0, 0), shift)) << alpha << " over " << below;
            }
            ASSERT_EQ(255U, Channel(target.At(0, 0), 24));
        }
    }
}

TEST(Blend, SpansFoundAgainAfterAChangeAreThoseOfTheWholePicture) {
    std::mt19937 random(11);
    const auto below = [&](int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); };
    Picture layer(90, 30, 0);
    std::vector<Span> spans;
    for (int change = 0; change < 300; ++change) {
        const int top = below(30);
        const int bottom = top + below(31 - top);
        for (int y = top; y < bottom; ++y) {
            for (int i = 0; i < 4; ++i) layer.At(below(90), y) = below(3) == 0 ? 0x80402010U : 0U;
        }
        FindSpansAgain(layer.view, top, bottom, spans);
        std::vector<Span> whole;
        FindSpans(layer.view, whole);
        ASSERT_TRUE(std::ranges::equal(
            spans, whole,
            [](const Span& a, const Span& b) { return a.row == b.row && a.begin == b.begin && a.end == b.end; }))
            << "after change " << change;
    }
}

TEST(Blend, TransparentPixelsLeaveTheTargetAsItIs) {
    Picture target(40, 3, 0xFF123456);
    Picture layer(40, 3, 0);
    layer.At(5, 1) = 0xFFFFFFFF;
    layer.At(39, 1) = 0xFFFFFFFF;
    BlendAll(target.view, layer.view, 0, 0);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 40; ++x) {
            const bool painted = y == 1 && (x == 5 || x == 39);
            ASSERT_EQ(painted ? 0xFFFFFFFFU : 0xFF123456U, target.At(x, y)) << x << "," << y;
        }
    }
}

TEST(Blend, RunsAreJoinedAcrossSmallGapsAndNeverAcrossRows) {
    Picture layer(100, 2, 0);
    layer.At(0, 0) = layer.At(10, 0) = layer.At(60, 0) = layer.At(99, 0) = 1U << 24;
    layer.At(0, 1) = 1U << 24;
    std::vector<Span> spans;
    FindSpans(layer.view, spans);
    ASSERT_EQ(4U, spans.size());
    EXPECT_EQ(0, spans[0].begin);
    EXPECT_EQ(11, spans[0].end);
    EXPECT_EQ(60, spans[1].begin);
    EXPECT_EQ(99, spans[2].begin);
    EXPECT_EQ(100, spans[2].end);
    EXPECT_EQ(1, spans[3].row);
}

TEST(Blend, ALayerThatReachesOverTheEdgesIsCut) {
    for (const auto& [x, y] : {std::pair{-3, -2}, std::pair{7, 6}, std::pair{-100, 0}, std::pair{0, 100}}) {
        Picture target(8, 8, 0xFF000000);
        Picture layer(6, 6, 0xFF0000FF);
        CopyOpaque(target.view, layer.view, x, y);
        Picture blended(8, 8, 0xFF000000);
        BlendAll(blended.view, layer.view, x, y);
        for (int row = 0; row < 8; ++row) {
            for (int column = 0; column < 8; ++column) {
                const bool inside = column >= x && column < x + 6 && row >= y && row < y + 6;
                ASSERT_EQ(inside ? 0xFF0000FFU : 0xFF000000U, target.At(column, row));
                ASSERT_EQ(target.At(column, row), blended.At(column, row));
            }
        }
    }
}

TEST(Blend, AnOpaqueLayersOwnAlphaIsIgnored) {
    Picture target(2, 1, 0);
    Picture layer(2, 1, 0x00ABCDEF);
    CopyOpaque(target.view, layer.view, 0, 0);
    EXPECT_EQ(0xFFABCDEFU, target.At(1, 0));
}

TEST(Blend, OnlyTheOutsideIsBlackened) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> coordinate(-3, 12);
    for (int round = 0; round < 500; ++round) {
        const int left = coordinate(random);
        const int top = coordinate(random);
        const int right = coordinate(random);
        const int bottom = coordinate(random);
        Picture target(9, 9, 0xFFFFFFFF);
        BlackenOutside(target.view, left, top, right, bottom);
        for (int y = 0; y < 9; ++y) {
            for (int x = 0; x < 9; ++x) {
                const bool inside = x >= left && x < right && y >= top && y < bottom;
                ASSERT_EQ(inside ? 0xFFFFFFFFU : 0xFF000000U, target.At(x, y));
            }
        }
    }
}

}  // namespace
TEST(BlendTest, SettingAllReachesEveryPixelOfTheRowsAndNoneBesides) {
    constexpr int width = 1500;
    constexpr std::size_t stride = 1504;
    std::vector<std::uint32_t> memory(stride * 3, 7U);
    const Pixels picture{memory.data(), stride, width, 3};
    for (const std::uint32_t value : {0x80402010U, 0U, 0xFFFFFFFFU, 0U}) {
        SetAll(picture, value);
        for (int row = 0; row < 3; ++row) {
            const auto* const first = picture.Row(row);
            EXPECT_EQ(std::count(first, first + width, value), width);
            EXPECT_EQ(std::count(first + width, first + stride, 7U), static_cast<int>(stride) - width);
        }
    }
}

TEST(BlendTest, ZerosAreNotWrittenOverZeros) {
    constexpr std::size_t size = std::size_t{64} * 1024;
    void* const memory =
        mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);  // a write would be the end
    ASSERT_NE(memory, MAP_FAILED);
    SetAll({static_cast<std::uint32_t*>(memory), 128, 128, 128}, 0);
    munmap(memory, size);
}

}  // namespace Platform
