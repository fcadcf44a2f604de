#include "Scene/InputDelivery.h"

#include "tests/unit/Scene/TestNodes.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Tamborel;
using enum Tamborel::InputEventKind;

namespace {

class NoChildrenHit : public SceneNode {
public:
    bool HitTestChildren(Point) const override { return false; }
};

}  // namespace

TEST(FindNodeAt, NothingIsHitInNothing) {
    EXPECT_EQ(FindNodeAt(nullptr, {0, 0}), nullptr);
}

TEST(FindNodeAt, ABareNodeIsNeverATarget) {
    const auto root = std::make_shared<SceneNode>();
    EXPECT_EQ(FindNodeAt(root, {0, 0}), nullptr);
    const auto box = AddBox(*root, {0, 0, 10, 10});
    EXPECT_EQ(FindNodeAt(root, {5, 5}), box);
    EXPECT_EQ(FindNodeAt(root, {15, 5}), nullptr);
}

TEST(FindNodeAt, TheLaterOfTwoOverlappingSiblingsWins) {
    const auto root = std::make_shared<SceneNode>();
    const auto back = AddBox(*root, {0, 0, 10, 10});
    const auto front = AddBox(*root, {5, 0, 15, 10});
    EXPECT_EQ(FindNodeAt(root, {7, 5}), front);
    EXPECT_EQ(FindNodeAt(root, {2, 5}), back);
    root->AddChild(back);
    EXPECT_EQ(FindNodeAt(root, {7, 5}), back);
}

TEST(FindNodeAt, ChildrenComeBeforeTheirParent) {
    const auto root = std::make_shared<BoxNode>(Rect{0, 0, 100, 100});
    const auto child = AddBox(*root, {10, 10, 20, 20});
    EXPECT_EQ(FindNodeAt(root, {15, 15}), child);
    EXPECT_EQ(FindNodeAt(root, {50, 50}), root);
}

TEST(FindNodeAt, AChildOutsideItsParentsClipIsStillHit) {
    const auto root = std::make_shared<BoxNode>(Rect{0, 0, 10, 10});
    root->clipEnabled = true;
    root->clipRect = {0, 0, 10, 10};
    const auto child = AddBox(*root, {50, 50, 60, 60});
    EXPECT_EQ(FindNodeAt(root, {55, 55}), child);
}

TEST(FindNodeAt, AHiddenNodeHidesItsChildren) {
    const auto root = std::make_shared<SceneNode>();
    const auto hidden = AddBox(*root, {0, 0, 10, 10});
    const auto child = AddBox(*hidden, {0, 0, 10, 10});
    EXPECT_EQ(FindNodeAt(root, {5, 5}), child);
    hidden->visible = false;
    EXPECT_EQ(FindNodeAt(root, {5, 5}), nullptr);
    hidden->visible = true;
    root->visible = false;
    EXPECT_EQ(FindNodeAt(root, {5, 5}), nullptr);
}

TEST(FindNodeAt, ANodeMayKeepItsChildrenOutOfTheSearch) {
    const auto root = std::make_shared<NoChildrenHit>();
    AddBox(*root, {0, 0, 10, 10});
    EXPECT_EQ(FindNodeAt(root, {5, 5}), nullptr);
}

TEST(FindNodeAt, ShapesAreTestedInTheirLocalSpace) {
    const auto root = std::make_shared<SceneNode>();
    root->localTransform = {2, 0, 0, 2, 0, 0};
    const auto group = AddBox(*root, {}, Translation(10, 0));
    const auto box = AddBox(*group, {0, 0, 5, 5}, Translation(0, 20));
    EXPECT_EQ(FindNodeAt(root, {21, 41}), nullptr) << "transforms are those of the last update";
    root->Update(0);
    EXPECT_EQ(FindNodeAt(root, {20, 40}), box);
    EXPECT_EQ(FindNodeAt(root, {29, 49}), box);
    EXPECT_EQ(FindNodeAt(root, {30, 49}), nullptr);
    EXPECT_EQ(FindNodeAt(root, {19, 41}), nullptr);
}

TEST(FindNodeAt, ARotatedNodeIsHitWhereItIsSeen) {
    const auto root = std::make_shared<SceneNode>();
    const auto box = AddBox(*root, {0, 0, 10, 2}, {0, 1, -1, 0, 100, 100});  // A quarter turn: x runs down.
    root->Update(0);
    EXPECT_EQ(FindNodeAt(root, {99, 109}), box);
    EXPECT_EQ(FindNodeAt(root, {109, 99}), nullptr);
}

TEST(FindNodeAt, ASingularTransformRaisesNothing) {
    const auto root = std::make_shared<SceneNode>();
    const auto flat = AddBox(*root, {0, 0, 10, 10}, {0, 0, 0, 0, 3, 3});
    AddBox(*flat, {0, 0, 10, 10});
    root->Update(0);
    EXPECT_NO_THROW(FindNodeAt(root, {5, 5}));
}

TEST(Delivery, AClickPassesToTheNearestAncestorWithAHandlerInItsLocalSpace) {
    std::vector<Seen> seen;
    const auto root = std::make_shared<SceneNode>();
    NotePointer(*root, "root", seen);
    const auto button = AddBox(*root, {0, 0, 50, 50}, Translation(100, 200));
    NotePointer(*button, "button", seen);
    const auto panel = AddBox(*button, {0, 0, 50, 50}, Translation(5, 5));
    const auto label = AddBox(*panel, {0, 0, 50, 50}, Translation(1, 1));
    root->Update(0);
    DispatchPointerEvent(label, PointerDown, PointerEvent(PointerDown, 110, 220));
    EXPECT_EQ(seen, (std::vector<Seen>{{"button", PointerDown, 10, 20}}));
}

TEST(Delivery, OnlyTheHandlerOfTheKindStopsTheClimb) {
    std::vector<Seen> seen;
    const auto root = std::make_shared<SceneNode>();
    NotePointer(*root, "root", seen);
    const auto child = AddBox(*root, {0, 0, 10, 10});
    child->onPointerUp = [](const InputEvent&) { FAIL() << "not an up"; };
    DispatchPointerEvent(child, PointerDown, PointerEvent(PointerDown, 1, 2));
    EXPECT_EQ(seen, (std::vector<Seen>{{"root", PointerDown, 1, 2}}));
}

TEST(Delivery, AnEventThatNobodyHandlesIsDropped) {
    const auto root = std::make_shared<SceneNode>();
    const auto child = AddBox(*root, {0, 0, 10, 10});
    EXPECT_NO_THROW(DispatchPointerEvent(child, PointerDown, PointerEvent(PointerDown, 1, 2)));
    EXPECT_NO_THROW(DispatchPointerEvent(nullptr, PointerDown, PointerEvent(PointerDown, 1, 2)));
    EXPECT_NO_THROW(DispatchKeyEvent(child, KeyDown, KeyEvent(KeyDown, 65)));
}

TEST(Delivery, AKindWithoutAHandlerIsDropped) {
    std::vector<Seen> seen;
    const auto node = std::make_shared<SceneNode>();
    NotePointer(*node, "node", seen);
    NoteKeys(*node, "node", seen);
    DispatchKeyEvent(node, static_cast<InputEventKind>(11), {});
    DispatchKeyEvent(node, WindowClosing, {});
    DispatchPointerEvent(node, static_cast<InputEventKind>(13), {});
    EXPECT_TRUE(seen.empty());
}

TEST(Delivery, TheReceiverSeesTheRequiredKindAndTheRestOfTheEvent) {
    const auto node = std::make_shared<SceneNode>();
    InputEvent got;
    node->onPointerEnter = [&got](const InputEvent& event) { got = event; };
    InputEvent move = PointerEvent(PointerMove, 3, 4);
    move.timestampMicroseconds = 77;
    move.buttons = 0x13;
    move.window = reinterpret_cast<HWND>(0x1234);
    DispatchPointerEvent(node, PointerEnter, move);
    EXPECT_EQ(got.kind, PointerEnter);
    EXPECT_EQ(got.timestampMicroseconds, 77);
    EXPECT_EQ(got.buttons, 0x13U);
    EXPECT_EQ(got.window, move.window);
    EXPECT_EQ(move.kind, PointerMove) << "the receiver gets a copy";
}

TEST(Delivery, EachKindHasItsHandler) {
    std::vector<Seen> seen;
    const auto node = std::make_shared<SceneNode>();
    const auto note = [&seen](const char* name) {
        return [&seen, name](const InputEvent& event) { seen.push_back({name, event.kind, 0, 0}); };
    };
    node->onPointerMove = note("move");
    node->onPointerEnter = note("enter");
    node->onPointerLeave = note("leave");
    node->onPointerDown = note("down");
    node->onPointerUp = note("up");
    node->onWheel = note("wheel");
    node->onKeyDown = note("key down");
    node->onKeyUp = note("key up");
    node->onCharacter = note("character");
    node->onFocusGained = note("gained");
    node->onFocusLost = note("lost");
    for (unsigned kind = 0; kind <= 5; ++kind) DispatchPointerEvent(node, static_cast<InputEventKind>(kind), {});
    for (unsigned kind = 6; kind <= 10; ++kind) DispatchKeyEvent(node, static_cast<InputEventKind>(kind), {});
    EXPECT_EQ(seen, (std::vector<Seen>{{"move", PointerMove, 0, 0},
                                       {"enter", PointerEnter, 0, 0},
                                       {"leave", PointerLeave, 0, 0},
                                       {"down", PointerDown, 0, 0},
                                       {"up", PointerUp, 0, 0},
                                       {"wheel", PointerWheel, 0, 0},
                                       {"key down", KeyDown, 0, 0},
                                       {"key up", KeyUp, 0, 0},
                                       {"character", Character, 0, 0},
                                       {"gained", FocusGained, 0, 0},
                                       {"lost", FocusLost, 0, 0}}));
}

TEST(Delivery, AKeysPayloadIsNotMappedThroughTheTransform) {
    const auto node = std::make_shared<SceneNode>();
    node->localTransform = {2, 0, 0, 2, 30, 40};
    node->Update(0);
    InputEvent got;
    node->onKeyDown = [&got](const InputEvent& event) { got = event; };
    DispatchKeyEvent(node, KeyDown, KeyEvent(KeyDown, 0x41));
    EXPECT_EQ(got.virtualKey, 0x41U);
    EXPECT_EQ(got.scanCode, 0x1EU);
    EXPECT_EQ(got.modifiers, 1U);
}

TEST(Delivery, AHandlerMayRemoveItsOwnNode) {
    const auto root = std::make_shared<SceneNode>();
    std::weak_ptr<BoxNode> child = AddBox(*root, {0, 0, 10, 10});
    bool aliveInside = false;
    child.lock()->onPointerDown = [&](const InputEvent&) {
        root->children.clear();
        aliveInside = !child.expired();
    };
    DispatchPointerEvent(child.lock(), PointerDown, PointerEvent(PointerDown, 1, 1));
    EXPECT_TRUE(aliveInside);
    EXPECT_TRUE(child.expired());
}

TEST(Delivery, AClimbToAParentThatNoSharedPointerHoldsRaises) {
    SceneNode parent;
    const auto child = AddBox(parent, {0, 0, 10, 10});
    EXPECT_THROW(DispatchPointerEvent(child, PointerDown, PointerEvent(PointerDown, 1, 1)), std::bad_weak_ptr);
}
