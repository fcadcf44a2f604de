// Who is told of the user's input, and when.
#include "WindowFixture.h"

#include <algorithm>

namespace {

class InputListenerTest : public WindowTest {
protected:
    void SetUp() override {
        Make();
        PumpAll();
        listener_ = Platform::AddInputListener(window_, [this] { told_.push_back(seen_.back().message); });
        ASSERT_NE(listener_, 0U);
    }
    void Dispatch(UINT message) {
        const MSG wanted{window_, message, 0, 0, 0, {}};
        DispatchMessageW(&wanted);
    }
    bool WasTold(UINT message) const { return std::ranges::find(told_, message) != told_.end(); }

    std::uint64_t listener_ = 0;
    std::vector<UINT> told_;  ///< What the window's procedure saw last at each call.
};

TEST_F(InputListenerTest, ThePointerAndItsButtonsAndTheKeysAreInput) {
    display_.MovePointer(300, 200);
    display_.Click(1);
    display_.Key(38, true);
    display_.Key(38, false);
    EXPECT_TRUE(PumpUntil([&] { return WasTold(WM_KEYUP); }));
    EXPECT_TRUE(WasTold(WM_MOUSEMOVE));
    EXPECT_TRUE(WasTold(WM_LBUTTONDOWN));
    EXPECT_TRUE(WasTold(WM_LBUTTONUP));
    EXPECT_TRUE(WasTold(WM_KEYDOWN));
    EXPECT_TRUE(WasTold(WM_CHAR));
}

TEST_F(InputListenerTest, ItIsToldOnceForEachMessageAfterTheProcedure) {
    for (const UINT message : {WM_MOUSEMOVE, WM_MOUSEWHEEL, WM_RBUTTONDOWN, WM_MBUTTONUP, WM_MOUSELEAVE, WM_KEYDOWN,
                               WM_SYSKEYUP, WM_CHAR, WM_NCMOUSEMOVE, WM_NCRBUTTONUP, WM_NCMOUSELEAVE}) {
        told_.clear();
        answer_ = [&](UINT, WPARAM, LPARAM, LRESULT&) {
            EXPECT_TRUE(told_.empty());
            return true;
        };
        Dispatch(message);
        answer_ = {};
        EXPECT_EQ(told_, std::vector<UINT>{message});
    }
}

TEST_F(InputListenerTest, OtherMessagesAreNone) {
    answer_ = [](UINT, WPARAM, LPARAM, LRESULT&) { return true; };
    for (const UINT message :
         {WM_NULL, WM_MOVE, WM_SIZE, WM_SETFOCUS, WM_PAINT, WM_NCHITTEST, WM_NCACTIVATE, WM_SYSCOMMAND,
          WM_CAPTURECHANGED, WM_ENTERSIZEMOVE, WM_EXITSIZEMOVE, WM_DPICHANGED, WM_USER, WM_APP}) {
        Dispatch(message);
    }
    EXPECT_EQ(told_, std::vector<UINT>{});
}

TEST_F(InputListenerTest, AMessageThatIsSentIsNoInputOfTheUsers) {
    SendMessageW(window_, WM_MOUSEMOVE, 0, 0);
    EXPECT_EQ(told_, std::vector<UINT>{});
}

TEST_F(InputListenerTest, AWindowThatItsOwnHandlerEndsTellsNobody) {
    answer_ = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_LBUTTONUP) DestroyWindow(window_);
        return message == WM_LBUTTONUP;
    };
    Dispatch(WM_LBUTTONUP);
    EXPECT_FALSE(IsWindow(window_));
    EXPECT_EQ(told_, std::vector<UINT>{});
}

TEST_F(InputListenerTest, AListenerThatWasRemovedIsToldNoMore) {
    Platform::RemoveInputListener(window_, listener_);
    answer_ = [](UINT, WPARAM, LPARAM, LRESULT&) { return true; };
    Dispatch(WM_MOUSEMOVE);
    EXPECT_EQ(told_, std::vector<UINT>{});
    EXPECT_EQ(Platform::AddInputListener(nullptr, [] {}), 0U);
}

}  // namespace
