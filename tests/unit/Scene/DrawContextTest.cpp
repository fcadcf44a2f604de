#include "Scene/DrawContext.h"

#include "Scene/SceneNode.h"
#include "tests/fakes/RecordingContext.h"
#include "tests/unit/Scene/TestNodes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

using namespace Tamborel;

namespace {

using Calls = std::vector<DrawCall>;

constexpr Color red{1, 0, 0, 1};
constexpr Rect rect{1, 2, 3, 4};

/// Stands for an object that nobody looks into.
template <class Interface>
Interface* Opaque() {
    static char place;
    return reinterpret_cast<Interface*>(&place);
}

DrawCall TransformCall(const Matrix3x2& m) {
    return {"SetTransform", {m.m11, m.m12, m.m21, m.m22, m.dx, m.dy}, {}};
}

class DrawContextTest : public testing::Test {
protected:
    DrawContextTest() { target.calls.clear(); }

    RecordingContext target;
    BrushCache cache;
    DrawContext context{&target, &cache, 1};
};

/// With the brush made.
class Painters : public DrawContextTest {
protected:
    Painters() { target.calls.clear(); }

    ID2D1SolidColorBrush* const brush = context.GetBrush(red);
};

}  // namespace

TEST(DrawContext, ANewContextAppliesTheIdentity) {
    RecordingContext target;
    BrushCache cache;
    const DrawContext context(&target, &cache, 1);
    EXPECT_EQ(target.calls, (Calls{TransformCall({})}));
    EXPECT_EQ(context.CurrentTransform(), Matrix3x2{});
}

TEST(DrawContext, ANewTargetEmptiesTheCacheBeforeTheFirstBrushIsFetched) {
    RecordingContext before;
    RecordingContext after;
    BrushCache cache;
    DrawContext(&before, &cache, 1).GetBrush(red);
    EXPECT_EQ(before.brushesAlive, 1);
    DrawContext context(&after, &cache, 1);
    EXPECT_EQ(before.brushesAlive, 0);
    EXPECT_TRUE(cache.brushes.empty());
    EXPECT_EQ(cache.owner, &after);
    context.GetBrush(red);
    EXPECT_EQ(after.brushesAlive, 1);
}

TEST(DrawContext, BrushesAreKeptFromFrameToFrame) {
    RecordingContext target;
    BrushCache cache;
    ID2D1SolidColorBrush* const brush = DrawContext(&target, &cache, 1).GetBrush(red);
    EXPECT_EQ(DrawContext(&target, &cache, 1).GetBrush(red), brush);
    EXPECT_EQ(target.calls, (Calls{TransformCall({}), {"CreateSolidColorBrush", {1, 0, 0, 1}, {}}, TransformCall({})}));
}

TEST(DrawContext, TheScaleMultipliesTheColourAndLeavesAlpha) {
    RecordingContext target;
    BrushCache cache;
    DrawContext context(&target, &cache, 2.5F);
    target.calls.clear();
    context.GetBrush({1, 0.5F, 0, 1});
    EXPECT_EQ(target.calls, (Calls{{"CreateSolidColorBrush", {2.5F, 1.25F, 0, 1}, {}}}));
    EXPECT_EQ(cache.brushes.count({2560, 1280, 0, 1024}), 1U);
}

TEST(DrawContext, AScaleThatIsNotGreaterThan0PaintsColoursUnscaled) {
    for (const float scale : {0.0F, -2.0F, std::numeric_limits<float>::quiet_NaN()}) {
        RecordingContext target;
        BrushCache cache;
        DrawContext(&target, &cache, scale).GetBrush({0.5F, 0.25F, 1, 1});
        EXPECT_EQ(cache.brushes.count({512, 256, 1024, 1024}), 1U) << scale;
    }
}

TEST_F(DrawContextTest, TheSameTransformTwiceReachesTheTargetOnce) {
    const Matrix3x2 moved = Translation(5, 6);
    context.SetTransform(moved);
    context.SetTransform(moved);
    EXPECT_EQ(target.calls, Calls{TransformCall(moved)});
    EXPECT_EQ(context.CurrentTransform(), moved);
}

TEST_F(DrawContextTest, TheIdentityIsAppliedFromTheStart) {
    context.SetTransform({});
    EXPECT_EQ(target.calls, Calls{});
}

TEST_F(DrawContextTest, ATransformThatDiffersInOneNumberReachesTheTarget) {
    for (float Matrix3x2::*const number :
         {&Matrix3x2::m11, &Matrix3x2::m12, &Matrix3x2::m21, &Matrix3x2::m22, &Matrix3x2::dx, &Matrix3x2::dy}) {
        Matrix3x2 changed = context.CurrentTransform();
        changed.*number = std::nextafter(changed.*number, 2.0F);
        context.SetTransform(changed);
        EXPECT_EQ(target.Take(), Calls{TransformCall(changed)});
    }
}

TEST_F(DrawContextTest, PopClipAtDepth0DoesNothing) {
    context.PopClip();
    EXPECT_EQ(target.calls, Calls{});
    context.PushClip(rect, D2D1_ANTIALIAS_MODE_ALIASED);
    context.PopClip();
    context.PopClip();
    EXPECT_EQ(target.calls, (Calls{{"PushAxisAlignedClip", {1, 2, 3, 4, 1}, {}}, {"PopAxisAlignedClip", {}, {}}}));
}

TEST_F(DrawContextTest, ClipsNest) {
    context.PushClip(rect, D2D1_ANTIALIAS_MODE_ALIASED);
    context.PushClip(rect, D2D1_ANTIALIAS_MODE_PER_PRIMITIVE);
    target.calls.clear();
    for (int pop = 0; pop < 3; ++pop) context.PopClip();
    EXPECT_EQ(target.calls, (Calls{{"PopAxisAlignedClip", {}, {}}, {"PopAxisAlignedClip", {}, {}}}));
}

TEST(DrawContext, TheEndOfAContextPopsNothing) {
    RecordingContext target;
    BrushCache cache;
    DrawContext(&target, &cache, 1).PushClip(rect, D2D1_ANTIALIAS_MODE_PER_PRIMITIVE);
    EXPECT_EQ(target.calls, (Calls{TransformCall({}), {"PushAxisAlignedClip", {1, 2, 3, 4, 0}, {}}}));
}

TEST_F(Painters, EachPaintsWithTheBrushOfItsColour) {
    auto* const format = Opaque<IDWriteTextFormat>();
    context.FillRect(rect, red);
    context.FillRoundedRect(rect, 5, 6, red);
    context.StrokeRect(rect, red, 7);
    context.StrokeRoundedRect(rect, 5, 6, red, 7);
    context.FillEllipse({1, 2}, 3, 4, red);
    context.StrokeEllipse({1, 2}, 3, 4, red, 7);
    context.DrawLine({1, 2}, {3, 4}, red, 7);
    context.DrawString(L"text", 3, format, rect, red);
    EXPECT_EQ(target.Take(), (Calls{{"FillRectangle", {1, 2, 3, 4}, {brush}},
                                    {"FillRoundedRectangle", {1, 2, 3, 4, 5, 6}, {brush}},
                                    {"DrawRectangle", {1, 2, 3, 4, 7, 0}, {brush}},
                                    {"DrawRoundedRectangle", {1, 2, 3, 4, 5, 6, 7, 0}, {brush}},
                                    {"FillEllipse", {1, 2, 3, 4}, {brush}},
                                    {"DrawEllipse", {1, 2, 3, 4, 7, 0}, {brush}},
                                    {"DrawLine", {1, 2, 3, 4, 7, 0}, {brush}},
                                    {"DrawText", {3, 1, 2, 3, 4, 0, 0}, {format, brush}}}));
}

TEST_F(Painters, EachTakesABrushInPlaceOfAColour) {
    auto* const format = Opaque<IDWriteTextFormat>();
    context.FillRect(rect, brush);
    context.FillRoundedRect(rect, 5, 6, brush);
    context.StrokeRect(rect, brush, 7);
    context.StrokeRoundedRect(rect, 5, 6, brush, 7);
    context.FillEllipse({1, 2}, 3, 4, brush);
    context.StrokeEllipse({1, 2}, 3, 4, brush, 7);
    context.DrawLine({1, 2}, {3, 4}, brush, 7);
    context.DrawString(L"text", 3, format, rect, brush);
    const Calls withBrush = target.Take();
    context.FillRect(rect, red);
    context.FillRoundedRect(rect, 5, 6, red);
    context.StrokeRect(rect, red, 7);
    context.StrokeRoundedRect(rect, 5, 6, red, 7);
    context.FillEllipse({1, 2}, 3, 4, red);
    context.StrokeEllipse({1, 2}, 3, 4, red, 7);
    context.DrawLine({1, 2}, {3, 4}, red, 7);
    context.DrawString(L"text", 3, format, rect, red);
    EXPECT_EQ(withBrush, target.calls);
    EXPECT_EQ(withBrush.size(), 8U);
}

TEST_F(DrawContextTest, WithoutABrushNothingIsPainted) {
    target.brushesFail = true;
    auto* const format = Opaque<IDWriteTextFormat>();
    context.FillRect(rect, red);
    context.FillRoundedRect(rect, 5, 6, red);
    context.StrokeRect(rect, red, 7);
    context.StrokeRoundedRect(rect, 5, 6, red, 7);
    context.FillEllipse({1, 2}, 3, 4, red);
    context.StrokeEllipse({1, 2}, 3, 4, red, 7);
    context.DrawLine({1, 2}, {3, 4}, red, 7);
    context.DrawString(L"text", 3, format, rect, red);
    EXPECT_EQ(target.Take(), Calls(8, {"CreateSolidColorBrush", {1, 0, 0, 1}, {}}));
    context.FillRect(rect, nullptr);
    context.FillRoundedRect(rect, 5, 6, nullptr);
    context.StrokeRect(rect, nullptr, 7);
    context.StrokeRoundedRect(rect, 5, 6, nullptr, 7);
    context.FillEllipse({1, 2}, 3, 4, nullptr);
    context.StrokeEllipse({1, 2}, 3, 4, nullptr, 7);
    context.DrawLine({1, 2}, {3, 4}, nullptr, 7);
    context.DrawString(L"text", 3, format, rect, nullptr);
    EXPECT_EQ(target.calls, Calls{});
}

TEST_F(Painters, ALayoutIsDrawnAndSkippedWithoutLayoutOrBrush) {
    auto* const layout = Opaque<IDWriteTextLayout>();
    context.DrawLayout({8, 9}, nullptr, brush);
    context.DrawLayout({8, 9}, layout, nullptr);
    EXPECT_EQ(target.calls, Calls{});
    context.DrawLayout({8, 9}, layout, brush);
    EXPECT_EQ(target.calls, (Calls{{"DrawTextLayout", {8, 9, 0}, {layout, brush}}}));
}

TEST_F(Painters, AGeometryIsStrokedAndSkippedWithoutGeometryOrBrush) {
    auto* const geometry = Opaque<ID2D1Geometry>();
    context.StrokeGeometry(nullptr, brush, 2);
    context.StrokeGeometry(geometry, nullptr, 2);
    EXPECT_EQ(target.calls, Calls{});
    context.StrokeGeometry(geometry, brush, 2);
    EXPECT_EQ(target.calls, (Calls{{"DrawGeometry", {2, 0}, {geometry, brush}}}));
}

TEST_F(DrawContextTest, ABitmapIsDrawnWithoutSourceAndPerspectiveAndSkippedIfNull) {
    auto* const bitmap = Opaque<ID2D1Bitmap>();
    context.DrawBitmap(nullptr, rect, 1, D2D1_INTERPOLATION_MODE_LINEAR);
    EXPECT_EQ(target.calls, Calls{});
    context.DrawBitmap(bitmap, rect, 0.5F, D2D1_INTERPOLATION_MODE_HIGH_QUALITY_CUBIC);
    EXPECT_EQ(target.calls, (Calls{{"DrawBitmap", {1, 2, 3, 4, 0.5F, 5, 0, 0}, {bitmap}}}));
}

TEST_F(DrawContextTest, ADocumentIsDrawnAtItsOriginInLocalSpaceAndSkippedIfNull) {
    auto* const document = Opaque<ID2D1SvgDocument>();
    context.DrawSvg(nullptr, {10, 20});
    EXPECT_EQ(target.calls, Calls{});
    const Matrix3x2 current{2, 1, -1, 3, 100, 200};
    context.SetTransform(current);
    target.calls.clear();
    context.DrawSvg(document, {10, 20});
    EXPECT_EQ(target.Take(), (Calls{TransformCall({2, 1, -1, 3, 100 + 20 - 20, 200 + 10 + 60}),
                                    {"DrawSvgDocument", {}, {document}},
                                    TransformCall(current)}));
    context.SetTransform(current);
    EXPECT_EQ(target.calls, Calls{}) << "the target holds it";
}

TEST(DrawContext, WithoutATargetNothingHappens) {
    BrushCache cache;
    DrawContext context(nullptr, &cache, 1);
    context.SetTransform(Translation(1, 2));
    EXPECT_EQ(context.CurrentTransform(), Translation(1, 2));
    context.PushClip(rect, D2D1_ANTIALIAS_MODE_ALIASED);
    context.PopClip();
    context.FillRect(rect, red);
    context.DrawSvg(Opaque<ID2D1SvgDocument>(), {0, 0});
    EXPECT_EQ(context.GetBrush(red), nullptr);
}

TEST_F(DrawContextTest, ANodeDrawsWithItsTransformAndItsClip) {
    const auto root = std::make_shared<SceneNode>();
    root->localTransform = Translation(5, 5);
    root->clipEnabled = true;
    root->clipRect = rect;
    const auto child = AddBox(*root, {}, Translation(1, 0));
    root->Update(0);
    root->Draw(context);
    EXPECT_EQ(target.calls, (Calls{TransformCall(Translation(5, 5)),
                                   {"PushAxisAlignedClip", {1, 2, 3, 4, 1}, {}},
                                   TransformCall(Translation(6, 5)),
                                   {"PopAxisAlignedClip", {}, {}}}));
}

TEST_F(DrawContextTest, ANodesClipUsesItsAntialiasMode) {
    SceneNode node;
    node.clipEnabled = true;
    node.clipRect = rect;
    node.clipAntialiasMode = D2D1_ANTIALIAS_MODE_PER_PRIMITIVE;
    node.Draw(context);
    EXPECT_EQ(target.calls, (Calls{{"PushAxisAlignedClip", {1, 2, 3, 4, 0}, {}}, {"PopAxisAlignedClip", {}, {}}}));
}

TEST_F(DrawContextTest, AnEnabledClipWithRightAtLeftClipsNothing) {
    SceneNode node;
    node.clipEnabled = true;
    node.clipRect = {3, 0, 3, 10};
    node.Draw(context);
    node.clipRect = {0, 10, 10, 10};
    node.Draw(context);
    EXPECT_EQ(target.calls, Calls{});
}

TEST_F(DrawContextTest, AClipThatIsNotEnabledClipsNothing) {
    SceneNode node;
    node.clipRect = rect;
    node.Draw(context);
    EXPECT_EQ(target.calls, Calls{});
}

TEST_F(DrawContextTest, SiblingsWithACommonTransformPayOneCall) {
    const auto root = std::make_shared<SceneNode>();
    root->localTransform = Translation(5, 5);
    for (int count = 0; count < 3; ++count) AddBox(*root, {});
    root->Update(0);
    root->Draw(context);
    EXPECT_EQ(target.calls, Calls{TransformCall(Translation(5, 5))});
}
