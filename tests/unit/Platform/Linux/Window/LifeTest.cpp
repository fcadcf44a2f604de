// Windows come and go, and in which order their procedures learn of it.
#include "Platform/Linux/Window/Registry/WindowRegistry.h"
#include "WindowFixture.h"

#include <thread>

namespace {

class LifeTest : public WindowTest {};

TEST_F(LifeTest, TheCreationParameterComesBeforeAnyOtherMessage) {
    ASSERT_NE(CreateHidden(), nullptr);
    ASSERT_FALSE(seen_.empty());
    EXPECT_EQ(seen_.front().message, WM_NCCREATE);
    EXPECT_EQ(Order({WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE, WM_SIZE}).at(1), WM_NCCALCSIZE);
    EXPECT_EQ(Count(WM_CREATE), 1U);
}

TEST_F(LifeTest, TheHandleIsKnownDuringCreation) {
    bool known = false;
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_NCCREATE) known = IsWindow(window_) != FALSE;
        return false;
    };
    const HWND created = CreateHidden();
    EXPECT_TRUE(known);
    EXPECT_EQ(created, window_);
    EXPECT_TRUE(Platform::NativeWindow(window_).has_value());
}

TEST_F(LifeTest, TheFirstSizeComesAfterTheClientAreaIsKnown) {
    ASSERT_NE(CreateHidden(), nullptr);
    EXPECT_FALSE(Saw(WM_SIZE));
    SetWindowPos(window_, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED);
    EXPECT_EQ(Last(WM_NCCALCSIZE).wParam, 1U);
    ShowWindow(window_, SW_SHOWNORMAL);
    const auto order = Order({WM_NCCALCSIZE, WM_SIZE});
    EXPECT_EQ(order.front(), WM_NCCALCSIZE);
    EXPECT_EQ(order.back(), WM_SIZE);
    EXPECT_EQ(Last(WM_SIZE).wParam, static_cast<WPARAM>(SIZE_RESTORED));
    EXPECT_EQ(Last(WM_SIZE).lParam, Packed(398, 298));
}

TEST_F(LifeTest, AClosedWindowIsDestroyedInOrder) {
    Make();
    const HWND window = window_;
    bool alive = false;
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_DESTROY) PostQuitMessage(7);
        if (message == WM_NCDESTROY) alive = IsWindow(window) != FALSE;
        return false;
    };
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return quit_; }) || quit_);
    EXPECT_EQ(Order({WM_CLOSE, WM_DESTROY, WM_NCDESTROY}), (std::vector<UINT>{WM_CLOSE, WM_DESTROY, WM_NCDESTROY}));
    EXPECT_TRUE(alive);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(DestroyWindow(window));
    EXPECT_EQ(GetDpiForWindow(window), 0U);
}

TEST_F(LifeTest, AProcedureThatDeclinesMakesTheCreationFail) {
    answer_ = [](UINT message, WPARAM, LPARAM, LRESULT& result) {
        result = message == WM_CREATE ? -1 : 0;
        return message == WM_CREATE;
    };
    EXPECT_EQ(CreateHidden(), nullptr);
    EXPECT_TRUE(Saw(WM_NCDESTROY));
    EXPECT_FALSE(IsWindow(window_));
}

TEST_F(LifeTest, AnUnknownClassMakesTheCreationFail) {
    EXPECT_EQ(CreateWindowExW(0, L"NoSuchClass", L"", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_CANNOT_FIND_WND_CLASS);
}

TEST_F(LifeTest, ASecondRegistrationOfAClassFailsAndHurtsNothing) {
    ASSERT_NE(CreateHidden(), nullptr);
    DestroyWindow(window_);
    ASSERT_NE(CreateHidden(), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_CLASS_ALREADY_EXISTS);
}

TEST_F(LifeTest, WithoutAServerTheCreationFails) {
    ::setenv("DISPLAY", ":nowhere", 1);
    EXPECT_EQ(CreateHidden(), nullptr);
}

TEST_F(LifeTest, OnlyTheWindowsThreadMayDestroyIt) {
    ASSERT_NE(CreateHidden(), nullptr);
    std::thread([&] { EXPECT_FALSE(DestroyWindow(window_)); }).join();
    EXPECT_TRUE(IsWindow(window_));
}

TEST_F(LifeTest, TheXWindowStaysWhileARendererHoldsIt) {
    Make();
    auto view = Platform::ViewNativeWindow(window_);
    const xcb_window_t id = view->window;
    DestroyWindow(window_);
    const auto exists = [&] {
        auto* reply = xcb_get_geometry_reply(display_.Client(), xcb_get_geometry(display_.Client(), id), nullptr);
        const bool found = reply != nullptr;
        std::free(reply);
        return found;
    };
    EXPECT_TRUE(exists());
    view.reset();
    EXPECT_TRUE(PumpUntil([&] { return !exists(); }));
}

TEST_F(LifeTest, WhenTheServerGoesTheProgramEndsWithALineAndCodeOne) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            Make();
            display_.Kill();
            static_cast<void>(PumpUntil([] { return false; }));
        },
        testing::ExitedWithCode(1), "The connection to the X server is lost; the program ends");
}

}  // namespace
