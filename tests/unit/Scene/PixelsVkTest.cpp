// What nodes look like through the real devices.
#include "Scene/Button.h"
#include "Scene/EllipsePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"
#include "tools/scene_shot/Studio.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>

using namespace Tamborel;
using Pictures::Picture;

namespace {

constexpr Color white{1, 1, 1, 1};
constexpr Color black{0, 0, 0, 1};
constexpr Picture::Texel whiteTexel{255, 255, 255, 255};
constexpr Picture::Texel blackTexel{0, 0, 0, 255};

/// On black, a unit being a pixel.
Picture Paint(const std::shared_ptr<SceneNode>& node, std::uint32_t width = 40, std::uint32_t height = 40) {
    const SceneShot::Scene scene{"", "", [&node](const SceneShot::View&) { return node; }, black};
    return SceneShot::Draw(scene, {width, height, 96}).picture;
}

struct Box {
    std::uint32_t left;
    std::uint32_t top;
    std::uint32_t right;  // behind the last pixel, as `bottom`
    std::uint32_t bottom;
};

/// The smallest box around all pixels with more than a trace of the component.
std::optional<Box> Lit(const Picture& picture, std::size_t component = 0) {
    Box box{picture.width, picture.height, 0, 0};
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        for (std::uint32_t x = 0; x < picture.width; ++x) {
            if (picture.At(x, y)[component] <= 16) continue;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                   std::max(box.bottom, y + 1)};
        }
    }
    if (box.right == 0) return std::nullopt;
    return box;
}

std::shared_ptr<RectangleNode> MakeRectangle() {
    auto node = std::make_shared<RectangleNode>();
    node->rect = {10, 10, 30, 30};
    return node;
}

std::shared_ptr<TextPrimitive> MakeText(std::wstring text) {
    auto node = std::make_shared<TextPrimitive>();
    node->text = std::move(text);
    node->bounds = {20, 20, 180, 60};
    node->fontSize = 28;
    node->color = {1, 0, 0, 1};
    return node;
}

}  // namespace

TEST(RectanglePixels, TheOutlineRunsOnTheEdgeHalfOutsideOfIt) {
    const auto node = MakeRectangle();
    node->strokeColor = white;
    node->strokeWidth = 4;
    const Picture picture = Paint(node);
    EXPECT_EQ(picture.At(7, 20), blackTexel);
    EXPECT_EQ(picture.At(8, 20), whiteTexel);
    EXPECT_EQ(picture.At(11, 20), whiteTexel);
    EXPECT_EQ(picture.At(12, 20), blackTexel) << "with fill alpha 0 there is the outline only";
    EXPECT_EQ(picture.At(31, 20), whiteTexel);
    EXPECT_EQ(picture.At(32, 20), blackTexel);
}

TEST(RectanglePixels, RoundedCornersAreCutOff) {
    const auto node = MakeRectangle();
    node->fillColor = white;
    node->radiusX = node->radiusY = 8;
    const Picture picture = Paint(node);
    EXPECT_EQ(picture.At(10, 10), blackTexel);
    EXPECT_EQ(picture.At(29, 29), blackTexel);
    EXPECT_EQ(picture.At(20, 10), whiteTexel);
    EXPECT_EQ(picture.At(20, 20), whiteTexel);
}

TEST(RectanglePixels, RadiusX5AndRadiusY0LeavesCornersSquare) {
    const auto node = MakeRectangle();
    node->fillColor = white;
    node->radiusX = 5;
    const Picture picture = Paint(node);
    EXPECT_EQ(picture.At(10, 10), whiteTexel);
    EXPECT_EQ(picture.At(29, 29), whiteTexel);
    EXPECT_EQ(picture.At(30, 30), blackTexel);
}

TEST(RectanglePixels, AnEmptyRectPaintsNothing) {
    const auto node = MakeRectangle();
    node->rect.right = node->rect.left;
    node->fillColor = white;
    EXPECT_FALSE(Lit(Paint(node)));
}

TEST(EllipsePixels, AnEllipseReachesItsRadiiAndNoFurther) {
    const auto node = std::make_shared<EllipsePrimitive>();
    node->center = {20, 20};
    node->radiusX = 15;
    node->radiusY = 10;
    node->fillColor = white;
    const Picture picture = Paint(node);
    const auto lit = Lit(picture);
    ASSERT_TRUE(lit);
    EXPECT_EQ(lit->left, 5U);
    EXPECT_EQ(lit->right, 35U);
    EXPECT_EQ(lit->top, 10U);
    EXPECT_EQ(lit->bottom, 30U);
    EXPECT_EQ(picture.At(6, 11), blackTexel);
    EXPECT_EQ(picture.At(20, 20), whiteTexel);
}

TEST(EllipsePixels, AZeroRadiusIsPaintedWithoutHarm) {
    const auto node = std::make_shared<EllipsePrimitive>();
    node->center = {20, 20};
    node->radiusX = 0;
    node->fillColor = white;
    EXPECT_EQ(Paint(node).At(10, 20), blackTexel);
}

TEST(NodePixels, AnEnabledEmptyClipCutsNothingAndAnotherCutsChildren) {
    const auto node = MakeRectangle();
    node->fillColor = white;
    node->clipEnabled = true;
    node->clipRect = {15, 10, 15, 30};
    EXPECT_EQ(Lit(Paint(node))->left, 10U);
    node->clipRect = {15, 10, 25, 30};
    const auto lit = Lit(Paint(node));
    EXPECT_EQ(lit->left, 15U);
    EXPECT_EQ(lit->right, 25U);
}

TEST(TextPixels, WithClipToBoundsDescendersOutsideBoundsAreCutAtWholePixels) {
    const auto node = MakeText(L"gjpqy");
    node->bounds = {20, 20, 180, 40};
    node->paragraphAlignment = 0;
    const auto open = Lit(Paint(node, 200, 80));
    ASSERT_TRUE(open);
    EXPECT_GT(open->bottom, 41U);
    node->clipToBounds = true;
    const auto cut = Lit(Paint(node, 200, 80));
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->bottom, 40U);
    EXPECT_EQ(cut->top, open->top);
}

TEST(TextPixels, TheSameTextDrawnTwiceIsTheSamePicture) {
    const auto first = MakeText(L"Same again");
    const auto second = MakeText(L"Same again");
    EXPECT_EQ(Paint(first, 200, 80).texels, Paint(second, 200, 80).texels);
}

TEST(TextPixels, EmptyTextPaintsNothing) {
    EXPECT_FALSE(Lit(Paint(MakeText(L""), 200, 80)));
}

TEST(TextPixels, BoundsWithRightBeforeLeftDoNoHarm) {
    const auto node = MakeText(L"Any");
    node->bounds = {180, 60, 20, 20};
    Paint(node, 200, 80);
    EXPECT_NE(node->layout.Get(), nullptr);
}

TEST(TextPixels, TheOutlineSurroundsTheGlyphsOfEitherDirection) {
    for (const wchar_t* text : {L"Outline", L"שלום עולם"}) {
        const auto node = MakeText(text);
        const auto plain = Lit(Paint(node, 200, 80));
        ASSERT_TRUE(plain) << text;
        node->outlineColor = {0, 1, 0, 1};
        node->outlineWidth = 4;
        const Picture picture = Paint(node, 200, 80);
        const auto outlined = Lit(picture, 1);
        ASSERT_TRUE(outlined) << text;
        EXPECT_NEAR(static_cast<double>(plain->left), static_cast<double>(outlined->left) + 2, 1.01) << text;
        EXPECT_NEAR(static_cast<double>(plain->right), static_cast<double>(outlined->right) - 2, 1.01) << text;
        EXPECT_NEAR(static_cast<double>(plain->top), static_cast<double>(outlined->top) + 2, 1.01) << text;
        EXPECT_NEAR(static_cast<double>(plain->bottom), static_cast<double>(outlined->bottom) - 2, 1.01) << text;
        EXPECT_TRUE(Lit(picture, 0)) << "the fill covers the inner half";
    }
}

TEST(ButtonPixels, EachStateShowsItsColour) {
    const auto button = std::make_shared<Button>();
    button->rect = {0, 0, 40, 40};
    button->label.clear();
    button->cornerRadius = 0;
    button->normalColor = {1, 0, 0, 1};
    button->hoverColor = {0, 1, 0, 1};
    button->pressedColor = {0, 0, 1, 1};
    button->disabledColor = white;
    EXPECT_EQ(Paint(button).At(20, 20), (Picture::Texel{255, 0, 0, 255}));
    button->onPointerEnter({});
    EXPECT_EQ(Paint(button).At(20, 20), (Picture::Texel{0, 255, 0, 255}));
    InputEvent down;
    down.buttons = 1;
    button->onPointerDown(down);
    EXPECT_EQ(Paint(button).At(20, 20), (Picture::Texel{0, 0, 255, 255}));
    button->enabled = false;
    EXPECT_EQ(Paint(button).At(20, 20), whiteTexel);
}
