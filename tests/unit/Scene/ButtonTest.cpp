#include "Scene/Button.h"

#include "Scene/InputRouter.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"
#include "tests/unit/Scene/TestNodes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>
#include <vector>

using namespace Tamborel;

namespace {

constexpr std::uint32_t left = 0x01;
constexpr std::uint32_t right = 0x02;

/// A button of 100 by 40 at (50, 60) of a window, driven by the window's own routing.
class ButtonTest : public testing::Test {
protected:
    ButtonTest() {
        button->rect = {0, 0, 100, 40};
        button->localTransform = Translation(50, 60);
        button->onClick = [this] { ++clicks; };
        root->AddChild(button);
        root->Update(0);
    }

    void Send(InputEventKind kind, Point at, std::uint32_t buttons = 0) {
        InputEvent event = PointerEvent(kind, at.x, at.y);
        event.buttons = buttons;
        router.Route(root, event);
    }
    void Move(Point at, std::uint32_t buttons = 0) { Send(InputEventKind::PointerMove, at, buttons); }
    void Down(Point at, std::uint32_t buttons = left) { Send(InputEventKind::PointerDown, at, buttons); }
    void Up(Point at) { Send(InputEventKind::PointerUp, at); }

    /// The background's colour after the next frame's Update.
    Color Shown() {
        root->Update(0);
        return Background().fillColor;
    }
    RectangleNode& Background() { return dynamic_cast<RectangleNode&>(*button->children.at(0)); }
    TextPrimitive& Label() { return dynamic_cast<TextPrimitive&>(*button->children.at(1)); }

    static constexpr Point inside{100, 80};
    static constexpr Point outside{10, 10};

    std::shared_ptr<SceneNode> root = std::make_shared<SceneNode>();
    std::shared_ptr<Button> button = std::make_shared<Button>();
    InputRouter router;
    int clicks = 0;
};

std::wstring Property(const UiEvent& event, const wchar_t* name) {
    return std::get<std::wstring>(event.properties.at(name));
}

}  // namespace

TEST(Button, ANewOneHasTheDefaults) {
    const Button button;
    EXPECT_EQ(button.controlId, L"");
    EXPECT_EQ(button.label, L"Button");
    EXPECT_EQ(button.rect, (Rect{0, 0, 140, 42}));
    EXPECT_TRUE(button.enabled);
    EXPECT_EQ(button.eventName, L"ui.button.click");
    EXPECT_FALSE(button.onClickEvent);
    EXPECT_FALSE(button.onClick);
    EXPECT_EQ(button.normalColor, (Color{0.07F, 0.46F, 0.73F, 0.92F}));
    EXPECT_EQ(button.hoverColor, (Color{0.11F, 0.53F, 0.81F, 0.95F}));
    EXPECT_EQ(button.pressedColor, (Color{0.05F, 0.37F, 0.62F, 0.98F}));
    EXPECT_EQ(button.disabledColor, (Color{0.2F, 0.2F, 0.22F, 0.75F}));
    EXPECT_EQ(button.textColor, (Color{0.97F, 0.98F, 1.0F, 1.0F}));
    EXPECT_EQ(button.disabledTextColor, (Color{0.7F, 0.7F, 0.72F, 1.0F}));
    EXPECT_EQ(button.fontFamily, L"Segoe UI");
    EXPECT_EQ(button.fontSize, 14.0F);
    EXPECT_EQ(button.fontWeight, 600U);
    EXPECT_EQ(button.cornerRadius, 8.0F);
}

TEST(Button, ANewOneIsReadyToDraw) {
    const auto button = std::make_shared<Button>();
    ASSERT_EQ(button->children.size(), 2U);
    const auto& background = dynamic_cast<RectangleNode&>(*button->children[0]);
    const auto& text = dynamic_cast<TextPrimitive&>(*button->children[1]);
    EXPECT_EQ(background.parent, button.get());
    EXPECT_EQ(background.rect, button->rect);
    EXPECT_EQ(background.fillColor, button->normalColor);
    EXPECT_EQ(background.strokeColor, Color{});
    EXPECT_EQ(background.strokeWidth, 0.0F);
    EXPECT_EQ(background.radiusX, 8.0F);
    EXPECT_EQ(background.radiusY, 8.0F);
    EXPECT_EQ(text.text, L"Button");
    EXPECT_EQ(text.bounds, button->rect);
    EXPECT_EQ(text.color, button->textColor);
    EXPECT_EQ(text.fontFamily, L"Segoe UI");
    EXPECT_EQ(text.fontSize, 14.0F);
    EXPECT_EQ(text.fontWeight, 600U);
    EXPECT_EQ(text.textAlignment, 2U);
    EXPECT_EQ(text.paragraphAlignment, 2U);
    EXPECT_EQ(text.wordWrapping, 1U);
    EXPECT_TRUE(text.clipToBounds);
    EXPECT_TRUE(text.layoutDirty);
}

TEST(Button, IsHitWithinItsRectLeftAndTopEdgesIncluded) {
    Button button;
    button.rect = {10, 20, 110, 60};
    EXPECT_TRUE(button.HitTest({10, 20}));
    EXPECT_FALSE(button.HitTest({110, 30}));
    EXPECT_FALSE(button.HitTest({50, 60}));
}

TEST_F(ButtonTest, PressInsideReleaseInsideClicksOnce) {
    Move(inside);
    Down(inside);
    EXPECT_EQ(clicks, 0);
    Up(inside);
    EXPECT_EQ(clicks, 1);
    Up(inside);
    EXPECT_EQ(clicks, 1);
}

TEST_F(ButtonTest, PressInsideLeaveReleaseOutsideIsNoClick) {
    Move(inside);
    Down(inside);
    Move(outside, left);
    Up(outside);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(Shown(), button->normalColor) << "neither hovered nor pressed";
}

TEST_F(ButtonTest, PressInsideLeaveReenterReleaseInsideIsAClick) {
    Move(inside);
    Down(inside);
    Move(outside, left);
    EXPECT_EQ(Shown(), button->pressedColor) << "leaving keeps the press";
    Move(inside, left);
    Up(inside);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(Shown(), button->hoverColor);
}

TEST_F(ButtonTest, PressOutsideAndReleaseOnItIsNoClick) {
    const auto other = AddBox(*root, {0, 0, 20, 20});
    root->Update(0);
    Down(outside);
    Move(inside, left);
    Up(inside);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(Shown(), button->hoverColor);
}

TEST_F(ButtonTest, PressOnNothingAndReleaseOnItIsNoClick) {
    Down({5, 5});
    Up(inside);
    EXPECT_EQ(clicks, 0);
}

TEST_F(ButtonTest, RightButtonDownAloneIsNoPressAndNoClick) {
    Move(inside);
    Down(inside, right);
    EXPECT_EQ(Shown(), button->hoverColor);
    Up(inside);
    EXPECT_EQ(clicks, 0);
}

TEST_F(ButtonTest, ARightDownWhileTheLeftIsHeldCounts) {
    Down(inside, left | right);
    EXPECT_EQ(Shown(), button->pressedColor);
}

TEST_F(ButtonTest, AnyButtonsReleaseEndsThePressWithAClick) {
    Down(inside);
    Send(InputEventKind::PointerUp, inside, left);  // the right one went up, the left is still held
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(Shown(), button->hoverColor);
}

TEST_F(ButtonTest, ADisabledButtonHasNoHoverNoPressAndNoClick) {
    button->enabled = false;
    Move(inside);
    EXPECT_EQ(Shown(), button->disabledColor);
    Down(inside);
    Up(inside);
    EXPECT_EQ(clicks, 0);
    button->enabled = true;
    EXPECT_EQ(Shown(), button->normalColor) << "no hover and no press were kept";
}

TEST_F(ButtonTest, DisablingDuringAPressClearsItAtTheUpWithoutAClick) {
    Move(inside);
    Down(inside);
    button->enabled = false;
    Up(inside);
    EXPECT_EQ(clicks, 0);
    button->enabled = true;
    EXPECT_EQ(Shown(), button->hoverColor) << "not pressed any more; the hover is left as it was";
}

TEST_F(ButtonTest, LeavingCountsAlsoWhenDisabled) {
    Move(inside);
    button->enabled = false;
    Move(outside);
    button->enabled = true;
    EXPECT_EQ(Shown(), button->normalColor);
}

TEST_F(ButtonTest, WritingEnabledFalseShowsTheDisabledColoursAtTheNextUpdate) {
    button->enabled = false;
    EXPECT_EQ(Background().fillColor, button->normalColor);
    root->Update(0);
    EXPECT_EQ(Background().fillColor, button->disabledColor);
    EXPECT_EQ(Label().color, button->disabledTextColor);
    button->enabled = true;
    root->Update(0);
    EXPECT_EQ(Label().color, button->textColor);
}

TEST_F(ButtonTest, TheStatesHaveTheirColours) {
    EXPECT_EQ(Shown(), button->normalColor);
    Move(inside);
    EXPECT_EQ(Shown(), button->hoverColor);
    Down(inside);
    EXPECT_EQ(Shown(), button->pressedColor) << "pressed goes before hovered";
    Up(inside);
    EXPECT_EQ(Shown(), button->hoverColor);
    Move(outside);
    EXPECT_EQ(Shown(), button->normalColor);
}

TEST_F(ButtonTest, MovingFromTheLabelOntoTheBackgroundKeepsTheHover) {
    Label().bounds = {0, 0, 10, 40};  // so that the two children do not cover each other
    Move({52, 80});
    Move({100, 80});
    EXPECT_EQ(Shown(), button->hoverColor);
}

TEST_F(ButtonTest, ChangingFontSizeBy0_0005ChangesNothingOnTheLabel) {
    Label().layoutDirty = false;
    button->fontSize += 0.0005F;
    root->Update(0);
    EXPECT_FALSE(Label().layoutDirty);
    EXPECT_EQ(Label().fontSize, 14.0F);
    button->fontSize = 14.01F;
    root->Update(0);
    EXPECT_TRUE(Label().layoutDirty);
    EXPECT_EQ(Label().fontSize, 14.01F);
}

TEST_F(ButtonTest, ATinyChangeOfFontSizeThatRidesAlongWithAnotherIsLeftOutToo) {
    Label().layoutDirty = false;
    button->fontSize += 0.0005F;
    button->normalColor = {1, 0, 0, 1};
    EXPECT_EQ(Shown(), button->normalColor);
    EXPECT_FALSE(Label().layoutDirty);
    EXPECT_EQ(Label().fontSize, 14.0F);
}

TEST_F(ButtonTest, EachTextPropertyRebuildsTheLabelOnceWhenItChanges) {
    const std::vector<std::pair<const char*, std::function<void()>>> changes = {
        {"label", [this] { button->label = L"Other"; }},
        {"rect", [this] { button->rect.right = 101; }},
        {"fontFamily", [this] { button->fontFamily = L"Family"; }},
        {"fontSize", [this] { button->fontSize = 20; }},
        {"fontWeight", [this] { button->fontWeight = 400; }},
    };
    for (const auto& [name, change] : changes) {
        Label().layoutDirty = false;
        change();
        root->Update(0);
        EXPECT_TRUE(Label().layoutDirty) << name;
        Label().layoutDirty = false;
        root->Update(0);
        EXPECT_FALSE(Label().layoutDirty) << name;
    }
    EXPECT_EQ(Label().text, L"Other");
    EXPECT_EQ(Label().bounds, button->rect);
    EXPECT_EQ(Background().rect, button->rect);
    EXPECT_EQ(Label().fontFamily, L"Family");
    EXPECT_EQ(Label().fontWeight, 400U);
}

TEST_F(ButtonTest, ColoursAndCornersLeaveTheLabelsLayoutAlone) {
    Label().layoutDirty = false;
    button->normalColor = {1, 0, 0, 1};
    button->textColor = {0, 1, 0, 1};
    button->cornerRadius = 3;
    EXPECT_EQ(Shown(), button->normalColor);
    EXPECT_EQ(Label().color, button->textColor);
    EXPECT_EQ(Background().radiusX, 3.0F);
    EXPECT_EQ(Background().radiusY, 3.0F);
    EXPECT_FALSE(Label().layoutDirty);
}

TEST_F(ButtonTest, AnUpdateWithoutAChangeTouchesNothing) {
    Background().fillColor = {1, 1, 0, 1};
    Label().text = L"untouched";
    for (int frame = 0; frame < 3; ++frame) root->Update(0);
    EXPECT_EQ(Background().fillColor, (Color{1, 1, 0, 1}));
    EXPECT_EQ(Label().text, L"untouched");
    button->cornerRadius += 0.0005F;
    root->Update(0);
    EXPECT_EQ(Label().text, L"untouched") << "a radius that differs by rounding is the same";
}

TEST_F(ButtonTest, WithNoOnClickAndNoSinkAClickOnlyRepaints) {
    button->onClick = nullptr;
    Move(inside);
    Down(inside);
    EXPECT_EQ(Shown(), button->pressedColor);
    Up(inside);
    EXPECT_EQ(Shown(), button->hoverColor);
}

TEST_F(ButtonTest, WithControlIdEmptyTheHashIsTheOffsetBasis) {
    UiEvent seen;
    button->onClickEvent = [&seen](UiEvent event) { seen = std::move(event); };
    Down(inside);
    Up(inside);
    EXPECT_EQ(seen.idHash, 0xCBF29CE484222325U);
    EXPECT_EQ(Property(seen, L"control_id"), L"");
}

TEST_F(ButtonTest, TheSinkReceivesTheClick) {
    std::vector<UiEvent> seen;
    button->controlId = L"play";
    button->eventName = L"launcher.play";
    button->onClickEvent = [&seen](UiEvent event) { seen.push_back(std::move(event)); };
    Down(inside);
    Up(inside);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].name, L"launcher.play");
    EXPECT_EQ(seen[0].window, nullptr);
    EXPECT_GT(seen[0].timestampMicroseconds, 0);
    EXPECT_EQ(seen[0].properties.size(), 2U);
    EXPECT_EQ(Property(seen[0], L"control_id"), L"play");
    EXPECT_EQ(Property(seen[0], L"button"), L"left");
    EXPECT_EQ(seen[0].properties.at(L"button").index(), 4U) << "the tag of a wide string";
}

TEST_F(ButtonTest, TheHashIsFnv1aOverUtf16BytesLowByteFirst) {
    std::uint64_t hash = 0;
    button->onClickEvent = [&hash](const UiEvent& event) { hash = event.idHash; };
    // U+1F680 takes two units.
    button->controlId = L"\u0416\U0001F680";
    Down(inside);
    Up(inside);
    std::uint64_t expected = 0xCBF29CE484222325;
    for (const unsigned byte : {0x16U, 0x04U, 0x3DU, 0xD8U, 0x80U, 0xDEU}) {
        expected = (expected ^ byte) * 0x100000001B3;
    }
    EXPECT_EQ(hash, expected);
}

TEST_F(ButtonTest, OnClickRunsBeforeTheSinkAndMayChangeTheButton) {
    std::vector<std::string> order;
    button->onClick = [&] {
        order.emplace_back("click");
        button->controlId = L"changed";
        button->enabled = false;
    };
    button->onClickEvent = [&](const UiEvent& event) {
        order.emplace_back(Property(event, L"control_id") == L"changed" ? "sink, changed" : "sink");
    };
    Down(inside);
    Up(inside);
    EXPECT_EQ(order, (std::vector<std::string>{"click", "sink, changed"}));
    EXPECT_EQ(Shown(), button->disabledColor);
}

TEST_F(ButtonTest, OnClickKeepsItsOwnStateFromClickToClick) {
    std::vector<int> counts;
    button->onClick = [&counts, count = 0]() mutable { counts.push_back(++count); };
    button->onClickEvent = [&counts, count = 10](const UiEvent&) mutable { counts.push_back(++count); };
    for (int click = 0; click < 2; ++click) {
        Down(inside);
        Up(inside);
    }
    EXPECT_EQ(counts, (std::vector<int>{1, 11, 2, 12}));
}

TEST_F(ButtonTest, OnClickMayRemoveTheButton) {
    std::weak_ptr<Button> alive = button;
    button->onClick = [this] { root->RemoveChild(root->children.back().get()); };
    button.reset();
    Down(inside);
    Up(inside);
    EXPECT_TRUE(root->children.empty());
    Move(inside);
    EXPECT_TRUE(alive.expired());
}

TEST_F(ButtonTest, TheLabelsHandlersAreTheButtonsOwn) {
    for (const auto& child : button->children) {
        EXPECT_FALSE(child->onPointerDown || child->onPointerUp || child->onPointerEnter || child->onPointerLeave);
    }
    EXPECT_FALSE(button->onKeyDown || button->onKeyUp || button->onCharacter || button->onFocusGained);
}
