// Moving and resizing by the pointer where no window manager runs.
#include "WindowFixture.h"

namespace {

class SizeMoveTest : public WindowTest {};

TEST_F(SizeMoveTest, DraggingTheCaptionMovesTheWindow) {
    Make();
    display_.MovePointer(300, 70);
    display_.Button(1, true);
    display_.MovePointer(320, 90);
    ASSERT_TRUE(PumpUntil([&] { return Place().left == 120; }));
    EXPECT_EQ(Place().top, 70);
    display_.Button(1, false);
    ASSERT_TRUE(PumpUntilSeen(WM_EXITSIZEMOVE));
    EXPECT_EQ(Order({WM_ENTERSIZEMOVE, WM_MOVE, WM_EXITSIZEMOVE}).front(), WM_ENTERSIZEMOVE);
    EXPECT_FALSE(Saw(WM_SIZE));
}

TEST_F(SizeMoveTest, DraggingACornerResizesWithinTheSizeLoopsMessages) {
    Make();
    display_.MovePointer(498, 348);
    display_.Button(1, true);
    display_.MovePointer(548, 398);
    ASSERT_TRUE(PumpUntil([&] { return Place().right == 550; }));
    display_.Button(1, false);
    ASSERT_TRUE(PumpUntilSeen(WM_EXITSIZEMOVE));
    EXPECT_EQ(Order({WM_ENTERSIZEMOVE, WM_NCCALCSIZE, WM_SIZE, WM_EXITSIZEMOVE}),
              (std::vector<UINT>{WM_ENTERSIZEMOVE, WM_NCCALCSIZE, WM_SIZE, WM_EXITSIZEMOVE}));
    EXPECT_EQ(Place().bottom, 400);
    EXPECT_EQ(Place().left, 100);
}

TEST_F(SizeMoveTest, TheLeftEdgeStopsAtTheMinimumSize) {
    Make();
    display_.MovePointer(102, 200);
    display_.Button(1, true);
    display_.MovePointer(480, 200);
    ASSERT_TRUE(PumpUntil([&] { return Place().left == 300; }));
    EXPECT_EQ(Place().right, 500);
    display_.Button(1, false);
    EXPECT_TRUE(PumpUntilSeen(WM_EXITSIZEMOVE));
}

TEST_F(SizeMoveTest, AClickOnTheCaptionMovesNothing) {
    Make();
    display_.MovePointer(300, 70);
    display_.Button(1, true);
    display_.MovePointer(302, 71);
    display_.Button(1, false);
    display_.MovePointer(300, 200);
    ASSERT_TRUE(PumpUntilSeen(WM_MOUSEMOVE));
    EXPECT_FALSE(Saw(WM_ENTERSIZEMOVE));
    EXPECT_EQ(Place().left, 100);
}

TEST_F(SizeMoveTest, TheEdgesOfAMaximisedWindowDoNothing) {
    Make();
    SendMessageW(window_, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    seen_.clear();
    display_.MovePointer(2, 400);
    display_.Button(1, true);
    display_.MovePointer(100, 400);
    display_.Button(1, false);
    ASSERT_TRUE(PumpUntilSeen(WM_LBUTTONUP));
    EXPECT_TRUE(Saw(WM_NCLBUTTONDOWN));
    EXPECT_FALSE(Saw(WM_ENTERSIZEMOVE));
    EXPECT_EQ(Place().left, 0);
}

TEST_F(SizeMoveTest, TheEdgesOfAFixedWindowDoNothing) {
    Make(WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX);
    display_.MovePointer(102, 200);
    display_.Button(1, true);
    display_.MovePointer(150, 200);
    display_.Button(1, false);
    ASSERT_TRUE(PumpUntilSeen(WM_LBUTTONUP));
    EXPECT_FALSE(Saw(WM_ENTERSIZEMOVE));
    EXPECT_EQ(Place().left, 100);
}

}  // namespace
