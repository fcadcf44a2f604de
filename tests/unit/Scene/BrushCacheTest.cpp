#include "Scene/BrushCache.h"

#include "tests/fakes/RecordingContext.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

using namespace Tamborel;

namespace {

BrushKey Grey(float component) {
    return Quantise({component, component, component, component});
}

BrushKey Same(std::int32_t step) {
    return {step, step, step, step};
}

std::uint64_t Hash(const BrushKey& key) {
    return BrushKeyHash{}(key);
}

}  // namespace

TEST(Quantise, ComponentsRoundToTheNearestStep) {
    EXPECT_EQ(Grey(0), Same(0));
    EXPECT_EQ(Grey(1), Same(1024));
    EXPECT_EQ(Grey(2.5F), Same(2560));
    EXPECT_EQ(Grey(0.25F), Same(256));
    EXPECT_EQ(Grey(10.25F / 1024), Same(10));
    EXPECT_EQ(Grey(10.75F / 1024), Same(11));
    EXPECT_EQ(Quantise({1, 0.5F, 0.25F, 0}), (BrushKey{1024, 512, 256, 0}));
}

TEST(Quantise, HalvesRoundAwayFromZero) {
    EXPECT_EQ(Grey(10.5F / 1024), Same(11));
    EXPECT_EQ(Grey(-10.5F / 1024), Same(-11));
}

TEST(Quantise, ANegativeComponentRoundsAwayFromZero) {
    EXPECT_EQ(Grey(-0.75F / 1024), Same(-1));
    EXPECT_EQ(Grey(-0.5F / 1024), Same(-1));
    EXPECT_EQ(Grey(-0.25F / 1024), Same(0));
    EXPECT_EQ(Grey(-1), Same(-1024));
    EXPECT_EQ(Grey(-0.0F), Same(0));
}

TEST(Quantise, WhatDoesNotFitBecomesTheSmallestValue) {
    const BrushKey smallest = Same(std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(Grey(2097152.0F), smallest);
    EXPECT_EQ(Grey(std::numeric_limits<float>::infinity()), smallest);
    EXPECT_EQ(Grey(-std::numeric_limits<float>::infinity()), smallest);
    EXPECT_EQ(Grey(std::numeric_limits<float>::quiet_NaN()), smallest);
    EXPECT_EQ(Grey(-2097152.0F), smallest) << "which fits";
}

TEST(BrushKeyHash, MultipliesAndMixesTheWidenedSteps) {
    EXPECT_EQ(Hash({0, 0, 0, 0}), 0U);
    EXPECT_EQ(Hash({0, 0, 0, 5}), 5U) << "the last component is mixed in as it is";
    EXPECT_EQ(Hash({1, 2, 3, 4}), 0x4B70768EFE1B9C4U);
    EXPECT_EQ(Hash({1024, 512, 0, 1024}), 0xE61DC3479FC1FA00U);
}

TEST(BrushKeyHash, NegativeStepsAreWidenedWithTheirSign) {
    EXPECT_EQ(Hash({-1, 2560, 3, 1024}), 0xF146D914A55129FCU);
    EXPECT_EQ(Hash({-1024, -1, -2, -3}), 0xE41CBCF874CAB194U);
    EXPECT_EQ(Hash({0, 0, 0, -1}), 0xFFFFFFFFFFFFFFFFU);
}

TEST(BrushCache, AColourIsMadeOnceWithItsExactComponents) {
    RecordingContext target;
    BrushCache cache;
    cache.Adopt(&target);
    ID2D1SolidColorBrush* const brush = cache.Get({0.1F, 0.2F, 0.3F, 0.4F});
    ASSERT_NE(brush, nullptr);
    EXPECT_EQ(target.Take(), (std::vector<DrawCall>{{"CreateSolidColorBrush", {0.1F, 0.2F, 0.3F, 0.4F, 0}, {}}}));
    EXPECT_EQ(cache.Get({0.1F, 0.2F, 0.3F, 0.4F}), brush);
    EXPECT_TRUE(target.calls.empty());
    EXPECT_EQ(target.references, 1U) << "the device context is not counted";
}

TEST(BrushCache, TwoColours0004ApartInOneComponentShareABrush) {
    RecordingContext target;
    BrushCache cache;
    cache.Adopt(&target);
    ID2D1SolidColorBrush* const brush = cache.Get({0.5F, 0, 0, 1});
    EXPECT_EQ(cache.Get({0.5004F, 0, 0, 1}), brush);
    EXPECT_EQ(target.calls.size(), 1U);
    EXPECT_NE(cache.Get({0.501F, 0, 0, 1}), brush);
}

TEST(BrushCache, ColoursThatDifferInOneComponentHaveBrushesOfTheirOwn) {
    RecordingContext target;
    BrushCache cache;
    cache.Adopt(&target);
    for (const Color color : {Color{1, 0, 0, 0}, Color{0, 1, 0, 0}, Color{0, 0, 1, 0}, Color{0, 0, 0, 1}}) {
        cache.Get(color);
    }
    EXPECT_EQ(cache.brushes.size(), 4U);
    EXPECT_EQ(target.brushesAlive, 4);
}

TEST(BrushCache, AFailureIsNotRemembered) {
    RecordingContext target;
    BrushCache cache;
    cache.Adopt(&target);
    target.brushesFail = true;
    EXPECT_EQ(cache.Get({1, 1, 1, 1}), nullptr);
    EXPECT_EQ(cache.Get({1, 1, 1, 1}), nullptr);
    EXPECT_EQ(target.calls.size(), 2U);
    EXPECT_TRUE(cache.brushes.empty());
    target.brushesFail = false;
    EXPECT_NE(cache.Get({1, 1, 1, 1}), nullptr);
}

TEST(BrushCache, WithNoTargetThereIsNoBrush) {
    BrushCache cache;
    EXPECT_EQ(cache.Get({1, 1, 1, 1}), nullptr);
}

TEST(BrushCache, AnotherTargetEmptiesTheCacheAndTheSameOneDoesNot) {
    RecordingContext first;
    RecordingContext second;
    BrushCache cache;
    cache.Adopt(&first);
    cache.Get({1, 1, 1, 1});
    cache.Adopt(&first);
    EXPECT_EQ(first.brushesAlive, 1);
    cache.Adopt(&second);
    EXPECT_EQ(first.brushesAlive, 0);
    EXPECT_TRUE(cache.brushes.empty());
    EXPECT_EQ(cache.owner, &second);
}

TEST(BrushCache, BrushesGoWithTheCache) {
    RecordingContext target;
    {
        BrushCache cache;
        cache.Adopt(&target);
        cache.Get({1, 1, 1, 1});
        EXPECT_EQ(target.brushesAlive, 1);
    }
    EXPECT_EQ(target.brushesAlive, 0);
}
