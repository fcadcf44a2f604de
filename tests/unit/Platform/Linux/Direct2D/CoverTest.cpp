#include "Platform/Linux/Direct2D/PixelRect.h"

#include <gtest/gtest.h>

namespace {

using namespace Platform::Direct2D;

TEST(Direct2DCover, RectanglesApartStayApart) {
    const std::vector rects{PixelRect{0, 0, 2, 2}, PixelRect{4, 4, 6, 6}};
    EXPECT_EQ(Cover(rects, {0, 0, 10, 10}), rects);
}

TEST(Direct2DCover, RectangleThatJoinsTwoLeavesOne) {
    const std::vector rects{PixelRect{0, 0, 4, 4}, PixelRect{6, 0, 9, 4}, PixelRect{3, 1, 7, 2}};
    EXPECT_EQ(Cover(rects, {0, 0, 10, 10}), (std::vector{PixelRect{0, 0, 9, 4}}));
}

TEST(Direct2DCover, WhatLiesOutsideIsCutOff) {
    const std::vector rects{PixelRect{-5, -5, 3, 3}, PixelRect{20, 20, 30, 30}};
    EXPECT_EQ(Cover(rects, {0, 0, 10, 10}), (std::vector{PixelRect{0, 0, 3, 3}}));
}

TEST(Direct2DCover, ManyRectanglesBecomeFewThatCoverAllAndDontOverlap) {
    std::vector<PixelRect> rects;
    for (int i = 0; i < 100; ++i) rects.push_back({i % 10 * 10, i / 10 * 10, i % 10 * 10 + 3, i / 10 * 10 + 3});
    const std::vector<PixelRect> cover = Cover(rects, {0, 0, 100, 100});
    EXPECT_LE(cover.size(), 16U);
    for (const PixelRect& rect : rects) {
        EXPECT_TRUE(std::ranges::any_of(cover, [&](const PixelRect& each) { return Intersect(each, rect) == rect; }));
    }
    for (std::size_t i = 0; i < cover.size(); ++i) {
        for (std::size_t j = i + 1; j < cover.size(); ++j) EXPECT_FALSE(Overlap(cover[i], cover[j]));
    }
}

}  // namespace
