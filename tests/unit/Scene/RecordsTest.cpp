#include "Scene/Records.h"

#include "Scene/InputEvent.h"
#include "Scene/SceneNode.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <type_traits>

using namespace Tamborel;

static_assert(std::is_trivially_copyable_v<Point> && std::is_trivially_copyable_v<Rect>);
static_assert(std::is_trivially_copyable_v<Color> && std::is_trivially_copyable_v<Matrix3x2>);
static_assert(std::is_trivially_copyable_v<InputEvent> && std::is_standard_layout_v<InputEvent>);
static_assert(offsetof(InputEvent, x) == offsetof(InputEvent, virtualKey));
static_assert(offsetof(InputEvent, y) == offsetof(InputEvent, scanCode));
static_assert(offsetof(InputEvent, buttons) == offsetof(InputEvent, modifiers));
static_assert(offsetof(InputEvent, wheelDelta) == offsetof(InputEvent, character));
static_assert(static_cast<unsigned>(InputEventKind::FocusLost) == 10);
static_assert(static_cast<unsigned>(InputEventKind::WindowClosing) == 12);

TEST(Records, AMatrixMapsAPointAsARowVector) {
    EXPECT_EQ(Transform({2, 3, 5, 7, 11, 13}, {1, 10}), (Point{2 + 50 + 11, 3 + 70 + 13}));
}

TEST(Records, ANewMatrixIsTheIdentity) {
    EXPECT_EQ(Matrix3x2{}, (Matrix3x2{1, 0, 0, 1, 0, 0}));
    EXPECT_EQ(Transform(Matrix3x2{}, {3, 4}), (Point{3, 4}));
}

TEST(Records, AProductAppliesItsFirstFactorFirst) {
    const Matrix3x2 scale{2, 0, 0, 3, 0, 0};
    const Matrix3x2 move{1, 0, 0, 1, 10, 20};
    EXPECT_EQ(Transform(Multiply(scale, move), {1, 1}), (Point{12, 23}));
    EXPECT_EQ(Transform(Multiply(move, scale), {1, 1}), (Point{22, 63}));
    const Matrix3x2 any{2, 3, 5, 7, 11, 13};
    const Matrix3x2 other{1, -1, 4, 2, -3, 6};
    EXPECT_EQ(Transform(Multiply(any, other), {2, -1}), Transform(other, Transform(any, {2, -1})));
}

TEST(Records, ARectangleWithEqualOrCrossedEdgesIsEmpty) {
    EXPECT_FALSE(IsEmpty({0, 0, 1, 1}));
    EXPECT_FALSE(IsEmpty({-2, -2, -1, -1}));
    EXPECT_TRUE(IsEmpty({}));
    EXPECT_TRUE(IsEmpty({1, 0, 1, 1}));
    EXPECT_TRUE(IsEmpty({0, 1, 1, 1}));
    EXPECT_TRUE(IsEmpty({2, 0, 1, 1}));
    EXPECT_TRUE(IsEmpty({0, 2, 1, 1}));
    EXPECT_TRUE(IsEmpty({0, 0, std::numeric_limits<float>::quiet_NaN(), 1}));
}

TEST(Records, ANewEventIsZeroInEveryField) {
    InputEvent event;
    EXPECT_EQ(event.kind, InputEventKind::PointerMove);
    EXPECT_EQ(event.window, nullptr);
    EXPECT_EQ(event.timestampMicroseconds, 0);
    EXPECT_EQ(event.x, 0);
    EXPECT_EQ(event.y, 0);
    EXPECT_EQ(event.buttons, 0U);
    EXPECT_EQ(event.wheelDelta, 0);
}

TEST(Records, ANewNodeHasTheDefaults) {
    const SceneNode node;
    EXPECT_EQ(node.localTransform, Matrix3x2{});
    EXPECT_EQ(node.worldTransform, Matrix3x2{});
    EXPECT_TRUE(node.visible);
    EXPECT_FALSE(node.clipEnabled);
    EXPECT_EQ(node.clipRect, Rect{});
    EXPECT_EQ(node.clipAntialiasMode, 1U);
    EXPECT_EQ(node.parent, nullptr);
    EXPECT_TRUE(node.children.empty());
    EXPECT_FALSE(node.onPointerMove);
    EXPECT_FALSE(node.onFocusLost);
    EXPECT_FALSE(node.HitTest({0, 0}));
    EXPECT_TRUE(node.HitTestChildren({0, 0}));
}
