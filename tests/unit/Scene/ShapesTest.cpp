// RectangleNode and EllipsePrimitive: what they paint, in which order, and where they are hit.
#include "Scene/DrawContext.h"
#include "Scene/EllipsePrimitive.h"
#include "Scene/RectangleNode.h"
#include "tests/fakes/RecordingContext.h"
#include "tests/unit/Scene/TestNodes.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

using namespace Tamborel;

namespace {

using Calls = std::vector<DrawCall>;

constexpr Color red{1, 0, 0, 1};
constexpr Color blue{0, 0, 1, 0.5F};

/// Paints into a record. The brushes of both colours are made already.
class Shapes : public testing::Test {
protected:
    Shapes() { target.calls.clear(); }

    Calls DrawingOf(SceneNode& node) {
        node.Draw(context);
        return target.Take();
    }

    RecordingContext target;
    BrushCache cache;
    DrawContext context{&target, &cache, 1};
    ID2D1SolidColorBrush* const redBrush = context.GetBrush(red);
    ID2D1SolidColorBrush* const blueBrush = context.GetBrush(blue);
};

std::shared_ptr<RectangleNode> MakeRectangle() {
    auto node = std::make_shared<RectangleNode>();
    node->rect = {1, 2, 30, 40};
    node->fillColor = red;
    node->strokeColor = blue;
    node->strokeWidth = 3;
    return node;
}

std::shared_ptr<EllipsePrimitive> MakeEllipse() {
    auto node = std::make_shared<EllipsePrimitive>();
    node->center = {10, 20};
    node->radiusX = 4;
    node->radiusY = 8;
    node->fillColor = red;
    node->strokeColor = blue;
    node->strokeWidth = 3;
    return node;
}

}  // namespace

TEST(RectangleNode, ANewOneHasTheDefaults) {
    const RectangleNode node;
    EXPECT_EQ(node.rect, Rect{});
    EXPECT_EQ(node.fillColor, Color{});
    EXPECT_EQ(node.strokeColor, Color{});
    EXPECT_EQ(node.strokeWidth, 1.0F);
    EXPECT_EQ(node.radiusX, 0.0F);
    EXPECT_EQ(node.radiusY, 0.0F);
}

TEST(RectangleNode, APointOnTheRightOrBottomEdgeIsOutside) {
    const auto node = MakeRectangle();
    EXPECT_FALSE(node->HitTest({30, 10}));
    EXPECT_FALSE(node->HitTest({10, 40}));
    EXPECT_TRUE(node->HitTest({29.99F, 39.99F}));
}

TEST(RectangleNode, APointOnTheLeftOrTopEdgeIsInside) {
    const auto node = MakeRectangle();
    EXPECT_TRUE(node->HitTest({1, 10}));
    EXPECT_TRUE(node->HitTest({10, 2}));
    EXPECT_TRUE(node->HitTest({1, 2}));
    EXPECT_FALSE(node->HitTest({0.99F, 10}));
    EXPECT_FALSE(node->HitTest({10, 1.99F}));
}

TEST(RectangleNode, AnEmptyOrInvertedRectIsNeverHit) {
    RectangleNode node;
    EXPECT_FALSE(node.HitTest({0, 0}));
    node.rect = {10, 0, 10, 20};
    EXPECT_FALSE(node.HitTest({10, 5}));
    node.rect = {20, 0, 10, 20};
    for (const float x : {5.0F, 10.0F, 15.0F, 20.0F, 25.0F}) EXPECT_FALSE(node.HitTest({x, 5})) << x;
    node.rect = {0, 20, 10, 10};
    for (const float y : {5.0F, 10.0F, 15.0F, 20.0F, 25.0F}) EXPECT_FALSE(node.HitTest({5, y})) << y;
}

TEST(RectangleNode, APointThatIsNoNumberIsOutside) {
    const auto node = MakeRectangle();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(node->HitTest({nan, 10}));
    EXPECT_FALSE(node->HitTest({10, nan}));
}

TEST(RectangleNode, APointInACutOffCornerHits) {
    const auto node = MakeRectangle();
    node->radiusX = node->radiusY = 14;
    EXPECT_TRUE(node->HitTest({1.5F, 2.5F}));
}

TEST_F(Shapes, ANewRectanglePaintsNothing) {
    RectangleNode node;
    EXPECT_EQ(DrawingOf(node), Calls{});
}

TEST_F(Shapes, ARectangleIsFilledThenOutlinedOnItsEdge) {
    EXPECT_EQ(DrawingOf(*MakeRectangle()), (Calls{{"FillRectangle", {1, 2, 30, 40}, {redBrush}},
                                                  {"DrawRectangle", {1, 2, 30, 40, 3, 0}, {blueBrush}}}));
}

TEST_F(Shapes, ARectangleWithRadiusX5AndRadiusY0TakesTheRoundedPath) {
    const auto node = MakeRectangle();
    node->radiusX = 5;
    EXPECT_EQ(DrawingOf(*node), (Calls{{"FillRoundedRectangle", {1, 2, 30, 40, 5, 0}, {redBrush}},
                                       {"DrawRoundedRectangle", {1, 2, 30, 40, 5, 0, 3, 0}, {blueBrush}}}));
}

TEST_F(Shapes, ARectangleWithRadiusY5AloneTakesTheRoundedPathToo) {
    const auto node = MakeRectangle();
    node->radiusX = -2;
    node->radiusY = 5;
    EXPECT_EQ(DrawingOf(*node), (Calls{{"FillRoundedRectangle", {1, 2, 30, 40, -2, 5}, {redBrush}},
                                       {"DrawRoundedRectangle", {1, 2, 30, 40, -2, 5, 3, 0}, {blueBrush}}}));
}

TEST_F(Shapes, ARectangleWithFillAlpha0AndStrokeAlpha1PaintsTheOutlineOnly) {
    const auto node = MakeRectangle();
    node->fillColor.a = 0;
    node->strokeColor = red;
    EXPECT_EQ(DrawingOf(*node), (Calls{{"DrawRectangle", {1, 2, 30, 40, 3, 0}, {redBrush}}}));
}

TEST_F(Shapes, ARectanglesStrokeWidthOf0PaintsNoStrokeWhateverItsColour) {
    const auto node = MakeRectangle();
    node->strokeWidth = 0;
    for (const float radius : {0.0F, 6.0F}) {
        node->radiusX = radius;
        const Calls calls = DrawingOf(*node);
        ASSERT_EQ(calls.size(), 1U);
        EXPECT_EQ(calls[0].name, std::string(radius > 0 ? "FillRoundedRectangle" : "FillRectangle"));
    }
}

TEST_F(Shapes, ARectanglesChildrenPaintAboveItAndWithinItsClip) {
    const auto node = MakeRectangle();
    node->strokeWidth = 0;
    node->clipEnabled = true;
    node->clipRect = {0, 0, 8, 9};
    const auto child = MakeRectangle();
    child->fillColor = blue;
    child->strokeWidth = 0;
    const auto hidden = MakeRectangle();
    hidden->visible = false;
    node->AddChild(child);
    node->AddChild(hidden);
    node->localTransform = Translation(5, 6);
    node->Update(0);
    EXPECT_EQ(DrawingOf(*node), (Calls{{"SetTransform", {1, 0, 0, 1, 5, 6}, {}},
                                       {"PushAxisAlignedClip", {0, 0, 8, 9, 1}, {}},
                                       {"FillRectangle", {1, 2, 30, 40}, {redBrush}},
                                       {"FillRectangle", {1, 2, 30, 40}, {blueBrush}},
                                       {"PopAxisAlignedClip", {}, {}}}));
}

TEST(EllipsePrimitive, ANewOneHasTheDefaults) {
    const EllipsePrimitive node;
    EXPECT_EQ(node.center, Point{});
    EXPECT_EQ(node.radiusX, 20.0F);
    EXPECT_EQ(node.radiusY, 20.0F);
    EXPECT_EQ(node.fillColor, Color{});
    EXPECT_EQ(node.strokeColor, Color{});
    EXPECT_EQ(node.strokeWidth, 1.0F);
}

TEST(EllipsePrimitive, TheRimIsInside) {
    const auto node = MakeEllipse();
    for (const Point rim : {Point{14, 20}, Point{6, 20}, Point{10, 28}, Point{10, 12}}) {
        EXPECT_TRUE(node->HitTest(rim)) << rim.x << ", " << rim.y;
    }
    EXPECT_TRUE(node->HitTest({10, 20}));
    EXPECT_FALSE(node->HitTest({14.01F, 20}));
    EXPECT_FALSE(node->HitTest({13, 27})) << "a corner of the box around it";
}

TEST(EllipsePrimitive, WithAZeroRadiusItIsNeverHit) {
    const auto node = MakeEllipse();
    for (const float radius : {0.0F, -4.0F, std::numeric_limits<float>::quiet_NaN()}) {
        node->radiusX = radius;
        node->radiusY = 8;
        EXPECT_FALSE(node->HitTest({10, 20})) << radius;
        node->radiusX = 4;
        node->radiusY = radius;
        EXPECT_FALSE(node->HitTest({10, 20})) << radius;
    }
}

TEST_F(Shapes, AnEllipseWithAZeroRadiusIsStillPaintedAsItStands) {
    const auto node = MakeEllipse();
    node->radiusX = 0;
    EXPECT_EQ(DrawingOf(*node),
              (Calls{{"FillEllipse", {10, 20, 0, 8}, {redBrush}}, {"DrawEllipse", {10, 20, 0, 8, 3, 0}, {blueBrush}}}));
}

TEST_F(Shapes, ANewEllipsePaintsNothing) {
    EllipsePrimitive node;
    EXPECT_EQ(DrawingOf(node), Calls{});
}

TEST_F(Shapes, AnEllipseWithFillAlpha0AndStrokeAlpha1PaintsTheOutlineOnly) {
    const auto node = MakeEllipse();
    node->fillColor.a = 0;
    node->strokeColor = red;
    EXPECT_EQ(DrawingOf(*node), (Calls{{"DrawEllipse", {10, 20, 4, 8, 3, 0}, {redBrush}}}));
}

TEST_F(Shapes, AnEllipsesStrokeWidthOf0PaintsNoStrokeWhateverItsColour) {
    const auto node = MakeEllipse();
    node->strokeWidth = 0;
    EXPECT_EQ(DrawingOf(*node), (Calls{{"FillEllipse", {10, 20, 4, 8}, {redBrush}}}));
}

TEST_F(Shapes, AnEllipsesChildrenPaintAboveItAndWithinItsClip) {
    const auto node = MakeEllipse();
    node->strokeWidth = 0;
    node->clipEnabled = true;
    node->clipRect = {0, 0, 8, 9};
    const auto child = MakeEllipse();
    child->fillColor = blue;
    child->strokeWidth = 0;
    node->AddChild(child);
    node->localTransform = Translation(5, 6);
    node->Update(0);
    EXPECT_EQ(DrawingOf(*node), (Calls{{"SetTransform", {1, 0, 0, 1, 5, 6}, {}},
                                       {"PushAxisAlignedClip", {0, 0, 8, 9, 1}, {}},
                                       {"FillEllipse", {10, 20, 4, 8}, {redBrush}},
                                       {"FillEllipse", {10, 20, 4, 8}, {blueBrush}},
                                       {"PopAxisAlignedClip", {}, {}}}));
}

TEST_F(Shapes, AFieldThatChangesShowsInTheNextDraw) {
    const auto node = MakeRectangle();
    node->strokeWidth = 0;
    DrawingOf(*node);
    node->rect.right = 31;
    EXPECT_EQ(DrawingOf(*node), (Calls{{"FillRectangle", {1, 2, 31, 40}, {redBrush}}}));
}
