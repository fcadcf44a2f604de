#include "tools/picture/Compare.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace Pictures;

namespace {

Picture Grey(std::uint32_t width, std::uint32_t height) {
    return {width, height, std::vector<Picture::Texel>(std::size_t{width} * height, {100, 100, 100, 255})};
}

}  // namespace

TEST(ComparePictures, ThatAreEqualAreTheSame) {
    const Comparison result = Compare(Grey(3, 2), Grey(3, 2), {0, 0});
    EXPECT_TRUE(result.same);
    EXPECT_EQ(result.pixels, 0U);
    EXPECT_EQ(result.largest, 0);
    EXPECT_EQ(result.reason, "");
}

TEST(ComparePictures, OfTwoSizesDiffer) {
    const Comparison result = Compare(Grey(3, 2), Grey(2, 3), {255, 1});
    EXPECT_FALSE(result.same);
    EXPECT_EQ(result.reason, "the picture is 3 by 2 pixels, expected are 2 by 3");
    EXPECT_EQ(result.difference.width, 0U);
}

TEST(ComparePictures, EachComponentCountsWithinItsTolerance) {
    for (std::size_t component = 0; component < 4; ++component) {
        Picture actual = Grey(1, 1);
        actual.texels[0][component] = static_cast<std::uint8_t>(actual.texels[0][component] - 2);
        EXPECT_TRUE(Compare(actual, Grey(1, 1), {2, 0}).same) << component;
        EXPECT_FALSE(Compare(actual, Grey(1, 1), {1, 0}).same) << component;
        EXPECT_FALSE(Compare(Grey(1, 1), actual, {1, 0}).same) << component;
    }
}

TEST(ComparePictures, AShareOfThePixelsMayDiffer) {
    Picture actual = Grey(10, 10);
    actual.texels[7][0] = 200;
    EXPECT_FALSE(Compare(actual, Grey(10, 10), {2, 0}).same);
    EXPECT_TRUE(Compare(actual, Grey(10, 10), {2, 0.01}).same);
    actual.texels[8][0] = 110;
    const Comparison result = Compare(actual, Grey(10, 10), {2, 0.01});
    EXPECT_FALSE(result.same);
    EXPECT_EQ(result.reason, "2 of 100 pixels differ by more than 2 (the most by 100); allowed are 1");
}

TEST(ComparePictures, TheDifferenceIsRedWhereTheyDifferAndGreyElsewhere) {
    Picture actual = Grey(2, 1);
    actual.texels[1][2] = 0;
    const Picture difference = Compare(actual, Grey(2, 1), {2, 0}).difference;
    EXPECT_EQ(difference.At(0, 0)[0], difference.At(0, 0)[1]);
    EXPECT_EQ(difference.At(1, 0)[0], 255);
    EXPECT_LT(difference.At(1, 0)[1], 128);
}

TEST(Png, WhatIsWrittenIsReadBack) {
    const TemporaryFolder folder;
    Picture picture = Grey(5, 3);
    picture.texels[4] = {1, 2, 3, 4};
    const std::string path = folder.Path() / "picture.png";
    WritePng(picture, path);
    const Picture read = ReadPng(path);
    EXPECT_EQ(read.width, 5U);
    EXPECT_EQ(read.height, 3U);
    EXPECT_EQ(read.texels, picture.texels);
}

TEST(Png, WhatCannotBeReadOrWrittenThrows) {
    const TemporaryFolder folder;
    EXPECT_THROW(ReadPng(folder.Path() / "missing.png"), std::runtime_error);
    std::ofstream(folder.Path() / "text.png") << "no picture";
    EXPECT_THROW(ReadPng(folder.Path() / "text.png"), std::runtime_error);
    EXPECT_THROW(WritePng(Grey(1, 1), folder.Path() / "missing" / "picture.png"), std::runtime_error);
}
