#include "Platform/Linux/Window/KeyTable.h"
#include "tests/support/ScopedEnvironment.h"
#include "WindowFixture.h"

#include <array>

namespace {

// X11's numbers of keys: the kernel's plus 8.
constexpr std::uint8_t kEscape = 9;
constexpr std::uint8_t kTab = 23;
constexpr std::uint8_t kE = 26;
constexpr std::uint8_t kA = 38;
constexpr std::uint8_t kQuote = 48;
constexpr std::uint8_t kShift = 50;
constexpr std::uint8_t kControl = 37;
constexpr std::uint8_t kAlt = 64;
constexpr std::uint8_t kF4 = 70;
constexpr std::uint8_t kLeft = 113;
constexpr std::uint8_t kDelete = 119;

class KeyboardTest : public WindowTest {
protected:
    void Strike(std::uint8_t key) const {
        display_.Key(key, true);
        display_.Key(key, false);
    }
};

TEST_F(KeyboardTest, AKeyGoesDownTypesAndGoesUp) {
    Make();
    Strike(kA);
    ASSERT_TRUE(PumpUntilSeen(WM_KEYUP));
    EXPECT_EQ(Order({WM_KEYDOWN, WM_CHAR, WM_KEYUP}), (std::vector<UINT>{WM_KEYDOWN, WM_CHAR, WM_KEYUP}));
    EXPECT_EQ(Last(WM_KEYDOWN).wParam, WPARAM{'A'});
    EXPECT_EQ(Last(WM_KEYDOWN).lParam >> 16 & 0xFF, 30);
    EXPECT_EQ(Last(WM_KEYDOWN).lParam >> 30 & 1, 0);
    EXPECT_EQ(Last(WM_CHAR).wParam, WPARAM{'a'});
    EXPECT_EQ(Last(WM_KEYUP).lParam >> 30 & 3, 3);
}

TEST_F(KeyboardTest, ShiftChangesTheCharacterAndIsSeenInTheState) {
    Make();
    SHORT during = 0;
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_CHAR) during = GetKeyState(VK_SHIFT);
        return false;
    };
    display_.Key(kShift, true);
    Strike(kA);
    ASSERT_TRUE(PumpUntilSeen(WM_CHAR));
    display_.Key(kShift, false);
    EXPECT_EQ(Last(WM_CHAR).wParam, WPARAM{'A'});
    EXPECT_LT(during, 0);
    ASSERT_TRUE(PumpUntil([&] { return Count(WM_KEYUP) == 2; }));
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
}

TEST_F(KeyboardTest, ControlTypesControlCharacters) {
    Make();
    display_.Key(kControl, true);
    Strike(kA);
    display_.Key(kControl, false);
    ASSERT_TRUE(PumpUntilSeen(WM_CHAR));
    EXPECT_EQ(Last(WM_CHAR).wParam, 1U);
}

TEST_F(KeyboardTest, ADeadKeyTypesNothingUntilTheNextIsComposedWithIt) {
    const ScopedEnvironment locale(L"LC_ALL", L"en_US.UTF-8");
    constexpr std::uint32_t deadAcute = 0xFE51;
    const std::array<xcb_keysym_t, 2> symbols = {deadAcute, deadAcute};
    xcb_change_keyboard_mapping(display_.Client(), 1, kQuote, symbols.size(), symbols.data());
    display_.Settle();
    Make();
    Strike(kQuote);
    Strike(kE);
    ASSERT_TRUE(PumpUntilSeen(WM_CHAR));
    EXPECT_EQ(Count(WM_CHAR), 1);
    EXPECT_EQ(Last(WM_CHAR).wParam, WPARAM{0xE9});
}

TEST_F(KeyboardTest, ArrowsAreExtendedAndTypeNothing) {
    Make();
    Strike(kLeft);
    Strike(kDelete);
    ASSERT_TRUE(PumpUntil([&] { return Count(WM_KEYUP) == 2; }));
    EXPECT_FALSE(Saw(WM_CHAR));
    EXPECT_EQ(seen_.front().wParam, static_cast<WPARAM>(VK_LEFT));
    EXPECT_EQ(seen_.front().lParam >> 24 & 1, 1);
    EXPECT_EQ(seen_.front().lParam >> 16 & 0xFF, 0x4B);
}

TEST_F(KeyboardTest, EscapeAndTabAreKeysAndCharacters) {
    Make();
    Strike(kEscape);
    Strike(kTab);
    ASSERT_TRUE(PumpUntil([&] { return Count(WM_CHAR) == 2; }));
    EXPECT_EQ(Last(WM_KEYDOWN).wParam, static_cast<WPARAM>(VK_TAB));
    EXPECT_EQ(Last(WM_CHAR).wParam, WPARAM{'\t'});
}

TEST_F(KeyboardTest, WithAltKeysAreTheSystems) {
    Make();
    display_.Key(kAlt, true);
    Strike(kA);
    display_.Key(kAlt, false);
    ASSERT_TRUE(PumpUntilSeen(WM_SYSCHAR));
    EXPECT_FALSE(Saw(WM_KEYDOWN));
    EXPECT_FALSE(Saw(WM_CHAR));
}

TEST_F(KeyboardTest, AltF4Closes) {
    Make();
    display_.Key(kAlt, true);
    Strike(kF4);
    display_.Key(kAlt, false);
    EXPECT_TRUE(PumpUntilSeen(WM_CLOSE));
}

TEST_F(KeyboardTest, LosingTheFocusIsToldAndReleasesTheKeys) {
    Make();
    display_.Key(kA, true);
    ASSERT_TRUE(PumpUntilSeen(WM_KEYDOWN));
    EXPECT_LT(GetKeyState('A'), 0);
    xcb_set_input_focus(display_.Client(), XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT,
                        XCB_CURRENT_TIME);
    display_.Settle();
    ASSERT_TRUE(PumpUntilSeen(WM_KILLFOCUS));
    EXPECT_GE(GetKeyState('A'), 0);
    display_.Key(kA, false);
}

TEST_F(KeyboardTest, AHeldKeyTellsThatItWasDown) {
    Make();
    display_.Key(kA, true);
    EXPECT_TRUE(PumpUntil([&] { return Count(WM_KEYDOWN) >= 2; }));
    display_.Key(kA, false);
    EXPECT_EQ(Last(WM_KEYDOWN).lParam >> 30 & 1, 1);
    EXPECT_FALSE(Saw(WM_KEYUP));
}

TEST(KeyTableTest, OtherLayoutsFallBackToTheKeysPlace) {
    EXPECT_EQ(Platform::VirtualKeyOfSymbol(0x06C6), 0);  // a Cyrillic letter
    EXPECT_EQ(Platform::VirtualKeyOfPlace(kA), 'A');
    EXPECT_EQ(Platform::VirtualKeyOfPlace(10), '1');
    EXPECT_EQ(Platform::VirtualKeyOfPlace(kShift), 0);
}

TEST(KeyTableTest, UnknownKeysHaveNoScanCode) {
    EXPECT_EQ(Platform::ScanCodeOf(0).code, 0);
    EXPECT_EQ(Platform::ScanCodeOf(255).code, 0);
}

}  // namespace
