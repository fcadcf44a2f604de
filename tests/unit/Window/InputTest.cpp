// What of pointer, keyboard and focus goes to the scene.
#include "StandIns.h"

namespace Tamborel {

namespace {

class Input : public WindowTest {
protected:
    InputEvent Only() {
        const std::vector<InputEvent> events = window.Drain();
        EXPECT_EQ(events.size(), 1U);
        return events.empty() ? InputEvent() : events.front();
    }

    TestWindow window;
};

TEST_F(Input, EachPointerMessageHasItsKind) {
    struct {
        UINT message;
        InputEventKind kind;
    } const cases[] = {{WM_MOUSEMOVE, InputEventKind::PointerMove},     {WM_LBUTTONDOWN, InputEventKind::PointerDown},
                       {WM_RBUTTONDOWN, InputEventKind::PointerDown},   {WM_MBUTTONDOWN, InputEventKind::PointerDown},
                       {WM_LBUTTONDBLCLK, InputEventKind::PointerDown}, {WM_LBUTTONUP, InputEventKind::PointerUp},
                       {WM_RBUTTONUP, InputEventKind::PointerUp},       {WM_MBUTTONUP, InputEventKind::PointerUp},
                       {WM_MOUSEWHEEL, InputEventKind::PointerWheel}};
    for (const auto& each : cases) {
        EXPECT_EQ(window.Send(each.message, 0, PackedPoint(5, 6)), 0);
        const InputEvent event = Only();
        EXPECT_EQ(event.kind, each.kind) << each.message;
        EXPECT_EQ(event.window, window.Handle());
        EXPECT_GT(event.timestampMicroseconds, 0);
    }
}

TEST_F(Input, PositionIsSignedAndButtonsComeWithoutKeys) {
    window.Send(WM_MOUSEMOVE, 0xFFFF, PackedPoint(-3, -70));
    const InputEvent event = Only();
    EXPECT_EQ(event.x, -3.0F);
    EXPECT_EQ(event.y, -70.0F);
    EXPECT_EQ(event.buttons, 0x73U);
    EXPECT_EQ(event.wheelDelta, 0);
}

TEST_F(Input, WheelIsTakenFromScreenToClientAndItsDeltaIsSigned) {
    window.Send(WM_MOUSEWHEEL, static_cast<WPARAM>(0xFF880001), PackedPoint(111, 231));
    const InputEvent event = Only();
    EXPECT_EQ(event.x, 10.0F);
    EXPECT_EQ(event.y, 30.0F);
    EXPECT_EQ(event.wheelDelta, -120);
    EXPECT_EQ(event.buttons, 1U);
}

TEST_F(Input, ButtonUpWithoutAPressGoesToTheRing) {
    EXPECT_EQ(window.Send(WM_LBUTTONUP, 0, PackedPoint(40, 50)), 0);
    const InputEvent event = Only();
    EXPECT_EQ(event.kind, InputEventKind::PointerUp);
    EXPECT_EQ(event.x, 40.0F);
    EXPECT_EQ(event.y, 50.0F);
}

TEST_F(Input, LeftDoubleClickGivesDownAndUpTwice) {
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) window.Send(message);
    std::vector<InputEventKind> kinds;
    for (const InputEvent& event : window.Drain()) kinds.push_back(event.kind);
    EXPECT_EQ(kinds, (std::vector{InputEventKind::PointerDown, InputEventKind::PointerUp, InputEventKind::PointerDown,
                                  InputEventKind::PointerUp}));
}

TEST_F(Input, OtherDoubleClicksAndSystemKeysAreTheSystems) {
    for (const UINT message : {WM_RBUTTONDBLCLK, WM_MBUTTONDBLCLK, WM_SYSKEYDOWN, WM_SYSKEYUP, WM_SYSCHAR}) {
        EXPECT_EQ(window.Send(message), 77);
        EXPECT_TRUE(window.Drain().empty()) << message;
    }
}

TEST_F(Input, KeysCarryTheirCodes) {
    EXPECT_EQ(window.Send(WM_KEYDOWN, VK_LEFT, 0x014B0001), 0);
    EXPECT_EQ(window.Send(WM_KEYUP, VK_LEFT, 0x014B0001), 0);
    const std::vector<InputEvent> events = window.Drain();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].kind, InputEventKind::KeyDown);
    EXPECT_EQ(events[1].kind, InputEventKind::KeyUp);
    for (const InputEvent& event : events) {
        EXPECT_EQ(event.window, window.Handle());
        EXPECT_EQ(event.virtualKey, static_cast<std::uint32_t>(VK_LEFT));
        EXPECT_EQ(event.scanCode, 0x4BU);
        EXPECT_EQ(event.modifiers, 0U);
        EXPECT_EQ(event.character, 0);
    }
}

TEST_F(Input, CharacterIsTheLowSixteenBits) {
    EXPECT_EQ(window.Send(WM_CHAR, 0x1D83D, 0x00100001), 0);
    const InputEvent event = Only();
    EXPECT_EQ(event.kind, InputEventKind::Character);
    EXPECT_EQ(event.character, 0xD83D);
    EXPECT_EQ(event.scanCode, 0x10U);
}

TEST_F(Input, ModifiersAreTheKeysHeldDownAtTheTime) {
    struct {
        int key;
        std::uint32_t bit;
    } const cases[] = {{VK_SHIFT, 1}, {VK_CONTROL, 2}, {VK_MENU, 4}};
    for (const auto& each : cases) {
        windows.Change([&](Fakes::WindowSettings& settings) { settings.keysDown = {each.key}; });
        window.Send(WM_KEYDOWN, 'A', 0);
        EXPECT_EQ(Only().modifiers, each.bit);
    }
    windows.Change([](Fakes::WindowSettings& settings) { settings.keysDown = {VK_SHIFT, VK_CONTROL, VK_MENU}; });
    window.Send(WM_KEYDOWN, 'A', 0);
    EXPECT_EQ(Only().modifiers, 7U);
}

TEST_F(Input, FocusIsTold) {
    EXPECT_EQ(window.Send(WM_SETFOCUS), 0);
    EXPECT_EQ(window.Send(WM_KILLFOCUS), 0);
    const std::vector<InputEvent> events = window.Drain();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].kind, InputEventKind::FocusGained);
    EXPECT_EQ(events[1].kind, InputEventKind::FocusLost);
    EXPECT_EQ(events[1].window, window.Handle());
}

TEST_F(Input, FullRingDropsFurtherEvents) {
    for (int i = 0; i < 512; ++i) window.Send(WM_MOUSEMOVE, 0, PackedPoint(i, 0));
    const std::vector<InputEvent> events = window.Drain();
    ASSERT_EQ(events.size(), 511U);
    EXPECT_EQ(events.back().x, 510.0F);
}

}  // namespace

}  // namespace Tamborel
