#include "Scene/InputRouter.h"

#include "tests/unit/Scene/TestNodes.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

using namespace Tamborel;
using enum Tamborel::InputEventKind;

namespace {

/// A root with "left" over x 0 to 10 and "right" over x 20 to 30, y 0 to 10 each; right's local space begins at 20.
class InputRouterTest : public testing::Test {
protected:
    InputRouterTest() {
        NotePointer(*left, "left", seen);
        NotePointer(*right, "right", seen);
        root->Update(0);
    }

    void Route(InputEventKind kind, float x, float y = 5) { router.Route(root, PointerEvent(kind, x, y)); }
    void RouteKey(InputEventKind kind) { router.Route(root, KeyEvent(kind, 0x41)); }

    /// What was seen since the last call.
    std::vector<Seen> Take() { return std::exchange(seen, {}); }

    std::vector<Seen> seen;
    std::shared_ptr<SceneNode> root = std::make_shared<SceneNode>();
    std::shared_ptr<BoxNode> left = AddBox(*root, {0, 0, 10, 10});
    std::shared_ptr<BoxNode> right = AddBox(*root, {0, 0, 10, 10}, Translation(20, 0));
    InputRouter router;
};

using Seens = std::vector<Seen>;

}  // namespace

TEST_F(InputRouterTest, AMoveOntoANodeEntersItAndThenMovesOnIt) {
    Route(PointerMove, 5);
    EXPECT_EQ(Take(), (Seens{{"left", PointerEnter, 5, 5}, {"left", PointerMove, 5, 5}}));
    Route(PointerMove, 6);
    EXPECT_EQ(Take(), (Seens{{"left", PointerMove, 6, 5}}));
}

TEST_F(InputRouterTest, AMoveFromNodeToNodeLeavesEntersAndMovesInLocalSpaces) {
    Route(PointerMove, 5);
    Take();
    Route(PointerMove, 25);
    EXPECT_EQ(Take(),
              (Seens{{"left", PointerLeave, 25, 5}, {"right", PointerEnter, 5, 5}, {"right", PointerMove, 5, 5}}));
    EXPECT_EQ(router.HoverTarget(), right);
}

TEST_F(InputRouterTest, AMoveOntoNothingOnlyLeaves) {
    Route(PointerMove, 5);
    Take();
    Route(PointerMove, 15);
    EXPECT_EQ(Take(), (Seens{{"left", PointerLeave, 15, 5}}));
    EXPECT_EQ(router.HoverTarget(), nullptr);
    Route(PointerMove, 16);
    EXPECT_EQ(Take(), Seens{});
}

TEST_F(InputRouterTest, MovingBetweenTwoChildrenOfOneButtonGivesItALeaveAndAnEnter) {
    const auto first = AddBox(*left, {0, 0, 5, 10});
    const auto second = AddBox(*left, {5, 0, 10, 10});
    Route(PointerMove, 2);
    Take();
    Route(PointerMove, 7);
    EXPECT_EQ(Take(), (Seens{{"left", PointerLeave, 7, 5}, {"left", PointerEnter, 7, 5}, {"left", PointerMove, 7, 5}}));
    EXPECT_EQ(router.HoverTarget(), second);
}

TEST_F(InputRouterTest, TheHoverTargetChangesOnlyAfterTheLeaveAndTheEnter) {
    Route(PointerMove, 5);
    std::vector<std::shared_ptr<SceneNode>> inside;
    left->onPointerLeave = right->onPointerEnter = [&](const InputEvent&) { inside.push_back(router.HoverTarget()); };
    right->onPointerMove = left->onPointerLeave;
    Route(PointerMove, 25);
    EXPECT_EQ(inside, (std::vector<std::shared_ptr<SceneNode>>{left, left, right}));
}

TEST_F(InputRouterTest, APressDraggedOffAndReleasedGoesToTheButtonWithOutsideCoordinatesAndHoverCatchesUp) {
    Route(PointerMove, 25);
    Route(PointerDown, 25);
    EXPECT_EQ(router.PressTarget(), right);
    Take();
    Route(PointerUp, 5, 7);
    EXPECT_EQ(Take(),
              (Seens{{"right", PointerUp, -15, 7}, {"right", PointerLeave, -15, 7}, {"left", PointerEnter, 5, 7}}))
        << "and no move";
    EXPECT_EQ(router.HoverTarget(), left);
    EXPECT_EQ(router.PressTarget(), nullptr);
}

TEST_F(InputRouterTest, MovesWhilePressedChangeTheHoverTargetAsAlways) {
    Route(PointerMove, 25);
    Route(PointerDown, 25);
    Take();
    Route(PointerMove, 5);
    EXPECT_EQ(Take(),
              (Seens{{"right", PointerLeave, -15, 5}, {"left", PointerEnter, 5, 5}, {"left", PointerMove, 5, 5}}));
    Route(PointerUp, 5);
    EXPECT_EQ(Take(), (Seens{{"right", PointerUp, -15, 5}}));
}

TEST_F(InputRouterTest, APressOnNothingAndAReleaseOnANodeGivesTheUpToTheHitNode) {
    Route(PointerDown, 15);
    Route(PointerUp, 25);
    EXPECT_EQ(Take(), (Seens{{"right", PointerUp, 5, 5}, {"right", PointerEnter, 5, 5}}));
}

TEST_F(InputRouterTest, APressOnNothingReplacesThePressTarget) {
    Route(PointerDown, 5);
    Route(PointerDown, 15);
    EXPECT_EQ(router.PressTarget(), nullptr);
    Take();
    Route(PointerUp, 15);
    EXPECT_EQ(Take(), Seens{});
}

TEST_F(InputRouterTest, AReleaseAfterThePressTargetEndedGoesToTheHitNode) {
    Route(PointerDown, 5);
    root->RemoveChild(left.get());
    left.reset();
    Take();
    Route(PointerUp, 25);
    EXPECT_EQ(Take(), (Seens{{"right", PointerUp, 5, 5}, {"right", PointerEnter, 5, 5}}));
}

TEST_F(InputRouterTest, AWheelGoesToTheNodeUnderThePointerWhateverIsPressed) {
    Route(PointerDown, 5);
    Take();
    Route(PointerWheel, 25);
    EXPECT_EQ(Take(), (Seens{{"right", PointerWheel, 5, 5}}));
    EXPECT_EQ(router.HoverTarget(), nullptr);
}

TEST_F(InputRouterTest, AWheelOverEmptySpaceGoesNowhere) {
    NotePointer(*root, "root", seen);
    Route(PointerMove, 5);
    Route(PointerDown, 5);
    Take();
    Route(PointerWheel, 15);
    EXPECT_EQ(Take(), Seens{});
}

TEST_F(InputRouterTest, KeysWithNoTargetsGoToTheRootAndClimbNoFurther) {
    NoteKeys(*root, "root", seen);
    for (const InputEventKind kind : {KeyDown, KeyUp, Character, FocusGained, FocusLost}) RouteKey(kind);
    EXPECT_EQ(Take(), (Seens{{"root", KeyDown, 0, 0},
                             {"root", KeyUp, 0, 0},
                             {"root", Character, 0, 0},
                             {"root", FocusGained, 0, 0},
                             {"root", FocusLost, 0, 0}}));
    root->onKeyDown = nullptr;
    RouteKey(KeyDown);
    EXPECT_EQ(Take(), Seens{});
}

TEST_F(InputRouterTest, KeysGoToTheHoverTargetBeforeThePressTarget) {
    NoteKeys(*left, "left", seen);
    NoteKeys(*right, "right", seen);
    NoteKeys(*root, "root", seen);
    Route(PointerMove, 5);
    Route(PointerDown, 25);
    Take();
    RouteKey(KeyDown);
    EXPECT_EQ(Take(), (Seens{{"left", KeyDown, 0, 0}}));
    Route(PointerMove, 15);
    Take();
    RouteKey(KeyDown);
    EXPECT_EQ(Take(), (Seens{{"right", KeyDown, 0, 0}}));
}

TEST_F(InputRouterTest, AKeyClimbsFromTheHoverTarget) {
    NoteKeys(*root, "root", seen);
    Route(PointerMove, 5);
    Take();
    RouteKey(Character);
    EXPECT_EQ(Take(), (Seens{{"root", Character, 0, 0}}));
}

TEST_F(InputRouterTest, ATargetThatEndedBetweenMoveAndLeaveGetsNoLeave) {
    Route(PointerMove, 5);
    Take();
    root->RemoveChild(left.get());
    const std::weak_ptr<BoxNode> watched = left;
    left.reset();
    ASSERT_TRUE(watched.expired()) << "routing keeps nothing alive";
    Route(PointerMove, 25);
    EXPECT_EQ(Take(), (Seens{{"right", PointerEnter, 5, 5}, {"right", PointerMove, 5, 5}}));
}

TEST_F(InputRouterTest, ADetachedTargetThatLivesOnStillGetsItsLeave) {
    Route(PointerMove, 5);
    Take();
    root->RemoveChild(left.get());
    Route(PointerMove, 15);
    EXPECT_EQ(Take(), (Seens{{"left", PointerLeave, 15, 5}}));
}

TEST_F(InputRouterTest, AClosingWindowForgetsBothTargetsWithoutALeave) {
    Route(PointerMove, 5);
    Route(PointerDown, 5);
    Take();
    router.Route(root, PointerEvent(WindowClosing, 0, 0));
    EXPECT_EQ(Take(), Seens{});
    EXPECT_EQ(router.HoverTarget(), nullptr);
    EXPECT_EQ(router.PressTarget(), nullptr);
    Route(PointerUp, 15);
    EXPECT_EQ(Take(), Seens{});
}

TEST_F(InputRouterTest, KindsThatAreNeverQueuedAreDropped) {
    NoteKeys(*root, "root", seen);
    NotePointer(*root, "root", seen);
    Route(PointerMove, 5);
    Route(PointerDown, 5);
    Take();
    Route(PointerEnter, 25);
    Route(PointerLeave, 25);
    for (const unsigned kind : {11U, 13U, 0xFFFFFFFFU}) Route(static_cast<InputEventKind>(kind), 25);
    EXPECT_EQ(Take(), Seens{});
    EXPECT_EQ(router.HoverTarget(), left);
    EXPECT_EQ(router.PressTarget(), left);
}

TEST_F(InputRouterTest, AHiddenRootIsAsGoodAsNone) {
    Route(PointerMove, 5);
    Take();
    root->visible = false;
    Route(PointerMove, 5);
    EXPECT_EQ(Take(), (Seens{{"left", PointerLeave, 5, 5}}));
    root->visible = true;
    Route(PointerMove, 5);
    Take();
    router.Route(nullptr, PointerEvent(PointerMove, 5, 5));
    EXPECT_EQ(Take(), (Seens{{"left", PointerLeave, 5, 5}}));
    router.Route(nullptr, KeyEvent(KeyDown, 0x41));
    EXPECT_EQ(Take(), Seens{});
}
