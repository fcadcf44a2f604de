// How often a window's contents are drawn: at the display's rate where it is seen, now and then where it isn't.
#include "PresenterFixture.h"

namespace {

using namespace std::chrono_literals;

constexpr auto displayPeriod = 1'000'000'000ns / 60;
constexpr auto hiddenPeriod = 3s;

class PresenterPacing : public PresenterTest {
protected:
    void SetUp() override {
        PresenterTest::SetUp();
        content_ = Opaque(Picture(windowWidth, windowHeight, 0xFF204060));
    }
    void TearDown() override {
        content_.Reset();
        PresenterTest::TearDown();
    }
    bool ComesTo(std::chrono::nanoseconds period) {
        return PumpUntil([&] { return !content_->periods.empty() && content_->periods.back() == period; });
    }

    Content content_;
};

TEST_F(PresenterPacing, AWindowThatIsSeenIsPacedAtTheDisplaysRate) {
    MakeWindow();
    ASSERT_EQ(Show({{content_}}), S_OK);
    EXPECT_EQ(content_->periods.back(), displayPeriod);
}

TEST_F(PresenterPacing, AHiddenWindowIsPacedSlowlyAndQuicklyAgainWhenItComesBack) {
    MakeWindow();
    ASSERT_EQ(Show({{content_}}), S_OK);
    ShowWindow(window_, SW_HIDE);
    EXPECT_TRUE(ComesTo(hiddenPeriod));
    ShowWindow(window_, SW_SHOW);
    EXPECT_TRUE(ComesTo(displayPeriod));
}

TEST_F(PresenterPacing, AFullyCoveredWindowIsPacedSlowlyAndAPartlyCoveredOneIsNot) {
    MakeWindow();
    ASSERT_EQ(Show({{content_}}), S_OK);
    Cover whole(display_, 90, 40, windowWidth + 20, windowHeight + 20);
    EXPECT_TRUE(ComesTo(hiddenPeriod));
    const Cover part(display_, 100, 50, windowWidth, windowHeight / 2);
    whole.Remove();
    EXPECT_TRUE(ComesTo(displayPeriod));
}

TEST_F(PresenterPacing, AMinimisedWindowIsPacedSlowlyAndQuicklyAgainWhenRestored) {
    display_.StartManager();
    MakeWindow();
    ASSERT_EQ(Show({{content_}}), S_OK);
    ShowWindow(window_, SW_MINIMIZE);
    EXPECT_TRUE(ComesTo(hiddenPeriod));
    ShowWindow(window_, SW_RESTORE);
    EXPECT_TRUE(ComesTo(displayPeriod));
}

TEST_F(PresenterPacing, AContentThatIsNewInAHiddenWindowIsPacedSlowlyFromTheStart) {
    ASSERT_NE(CreateHidden(), nullptr);
    MakePresenter();
    ASSERT_EQ(Show({{content_}}), S_OK);
    EXPECT_EQ(content_->periods, std::vector<std::chrono::nanoseconds>{hiddenPeriod});
}

TEST_F(PresenterPacing, AContentThatIsNoLongerShownIsLeftAlone) {
    MakeWindow();
    const Content other = Opaque(Picture(8, 8, 0xFFFFFFFF));
    ASSERT_EQ(Show({{content_}, {other}}), S_OK);
    ASSERT_EQ(Show({{content_}}), S_OK);
    const std::size_t before = other->periods.size();
    ShowWindow(window_, SW_HIDE);
    ASSERT_TRUE(ComesTo(hiddenPeriod));
    EXPECT_EQ(other->periods.size(), before);
}

TEST_F(PresenterPacing, InputHurriesTheContents) {
    MakeWindow();
    const Content other = Opaque(Picture(8, 8, 0xFFFFFFFF));
    ASSERT_EQ(Show({{content_}, {other}}), S_OK);
    PumpAll();
    EXPECT_EQ(content_->hurried, 0);
    display_.MovePointer(300, 200);
    EXPECT_TRUE(PumpUntil([&] { return content_->hurried > 0; }));
    EXPECT_EQ(other->hurried, content_->hurried);
}

TEST_F(PresenterPacing, InputForAWindowThatNobodySeesHurriesNothing) {
    MakeWindow();
    ASSERT_EQ(Show({{content_}}), S_OK);
    Cover whole(display_, 90, 40, windowWidth + 20, windowHeight + 20);
    ASSERT_TRUE(ComesTo(hiddenPeriod));
    const int before = content_->hurried;
    const MSG key{window_, WM_KEYDOWN, VK_SPACE, 0, 0, {}};
    DispatchMessageW(&key);
    EXPECT_EQ(content_->hurried, before);
    whole.Remove();
    ASSERT_TRUE(ComesTo(displayPeriod));
    DispatchMessageW(&key);
    EXPECT_GT(content_->hurried, before);
}

TEST_F(PresenterPacing, AfterThePresentersEndTheWindowPacesNothing) {
    MakeWindow();
    ASSERT_EQ(Show({{content_}}), S_OK);
    presenter_.reset();
    const std::size_t before = content_->periods.size();
    ShowWindow(window_, SW_HIDE);
    ASSERT_TRUE(PumpUntil([&] { return !Platform::IsWindowSeen(window_); }));
    const MSG key{window_, WM_KEYDOWN, VK_SPACE, 0, 0, {}};
    DispatchMessageW(&key);
    PumpAll();
    EXPECT_EQ(content_->periods.size(), before);
    EXPECT_EQ(content_->hurried, 0);
}

}  // namespace
