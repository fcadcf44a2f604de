// Pictures that came too early for the input that has come meanwhile.
#include "PresenterFixture.h"

#include <algorithm>

namespace {

using Platform::Direct3D::Texture;
using Platform::Direct3D::UnfinishedPicture;

constexpr std::uint32_t blue = 0xFF204060;
constexpr std::uint32_t white = 0xFFFFFFFF;

class PresenterGivingUp : public PresenterTest {
protected:
    void SetUp() override {
        PresenterTest::SetUp();
        if (HasFatalFailure()) return;
        if (!graphics_->IsSoftware()) GTEST_SKIP() << "On hardware no picture is put off.";
        MakeWindow();
        content_ = Opaque(Picture(windowWidth, windowHeight, blue));
        ASSERT_EQ(Show({{content_}}), S_OK);
        content_->shown = 0;
    }
    void TearDown() override {
        content_.Reset();
        CloseHandle(waitable_);
        PresenterTest::TearDown();
    }

    /// Presents a picture in one colour that takes ten steps to draw.
    void PresentUnfinished(std::uint32_t pixel) {
        const auto image = Texture::MakeBuffer(*graphics_, {windowWidth, windowHeight}, DXGI_FORMAT_B8G8R8A8_UNORM);
        graphics_->AwaitPixels(image);
        UnfinishedPicture picture(image, {});
        constexpr int steps = 10;
        for (int step = 0; step < steps; ++step) {
            picture.AddDrawing([this, image, pixel, step] {
                for (int y = step * windowHeight / steps; y < (step + 1) * windowHeight / steps; ++y) {
                    auto* const row = reinterpret_cast<std::uint32_t*>(image->Pixels() +
                                                                       static_cast<std::size_t>(y) * image->Stride());
                    std::fill_n(row, windowWidth, pixel);
                }
                ++stepsDone_;
            });
        }
        graphics_->PutOff(std::move(picture));
        content_->Set(image);
    }

    void SleepAWhile(HANDLE handle) { EXPECT_EQ(WaitForSingleObject(handle, 1), WAIT_TIMEOUT); }
    void Sleep() {
        const HANDLE other = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        SleepAWhile(other);
        CloseHandle(other);
    }

    static Picture Whole(std::uint32_t pixel) { return Picture(windowWidth, windowHeight, pixel).WithoutAlpha(); }

    Content content_;
    HANDLE waitable_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);  ///< As a frame's latency handle.
    int stepsDone_ = 0;
};

TEST_F(PresenterGivingUp, AnOutdatedPictureIsNotDrawnAndTheNextFrameMayStart) {
    PresentUnfinished(white);
    content_->isOutdated = [] { return true; };
    EXPECT_EQ(Show({{content_}}), S_OK);
    EXPECT_EQ(stepsDone_, 0);
    EXPECT_EQ(content_->givenUp, 1);
    EXPECT_EQ(content_->shown, 0);
    EXPECT_EQ(Shown(), Whole(blue));
}

TEST_F(PresenterGivingUp, APictureThatComesInTimeIsShown) {
    PresentUnfinished(white);
    EXPECT_EQ(Show({{content_}}), S_OK);
    EXPECT_EQ(content_->givenUp, 0);
    EXPECT_EQ(content_->shown, 1);
    EXPECT_EQ(Shown(), Whole(white));
}

TEST_F(PresenterGivingUp, InputWhileAPictureIsDrawnEndsTheDrawing) {
    PresentUnfinished(white);
    content_->isOutdated = [this] { return stepsDone_ == 4; };
    EXPECT_EQ(Show({{content_}}), S_OK);
    EXPECT_EQ(stepsDone_, 4);
    EXPECT_EQ(content_->givenUp, 1);
    EXPECT_EQ(Shown(), Whole(blue)) << "nothing of it is seen";
}

TEST_F(PresenterGivingUp, TheNextPictureIsShownInItsPlace) {
    PresentUnfinished(white);
    content_->isOutdated = [] { return true; };
    EXPECT_EQ(Show({{content_}}), S_OK);
    content_->Set(Picture(windowWidth, windowHeight, 0xFF00FF00));
    content_->isOutdated = nullptr;
    EXPECT_EQ(Show({{content_}}), S_OK);
    EXPECT_EQ(Shown(), Whole(0xFF00FF00));
    PaintWindow(0);
    Sleep();
    EXPECT_EQ(Shown(), Whole(0)) << "The one that was given up doesn't come back.";
}

TEST_F(PresenterGivingUp, WhenTheThreadSleepsInsteadOfWaitingForAFrameThePictureIsShown) {
    content_->waitable = Platform::FindHandleObject(waitable_);
    PresentUnfinished(white);
    content_->isOutdated = [] { return true; };
    EXPECT_EQ(Show({{content_}}), S_OK);
    Sleep();
    EXPECT_EQ(stepsDone_, 10);
    EXPECT_EQ(content_->shown, 1);
    EXPECT_EQ(Shown(), Whole(white));
}

TEST_F(PresenterGivingUp, WhileTheThreadWaitsForTheNextFrameThePictureStaysGivenUp) {
    content_->waitable = Platform::FindHandleObject(waitable_);
    PresentUnfinished(white);
    content_->isOutdated = [] { return true; };
    EXPECT_EQ(Show({{content_}}), S_OK);
    SleepAWhile(waitable_);
    EXPECT_EQ(stepsDone_, 0);
    EXPECT_EQ(Shown(), Whole(blue));
}

TEST_F(PresenterGivingUp, ACommitWithOtherNewsShowsAll) {
    const Content frame = Translucent(Picture(windowWidth, windowHeight));
    PresentUnfinished(white);
    content_->isOutdated = [] { return true; };
    EXPECT_EQ(Show({{content_}, {frame}}), S_OK);
    EXPECT_EQ(content_->givenUp, 0);
    EXPECT_EQ(Shown(), Whole(white));

    frame->Set(Picture(windowWidth, windowHeight));
    PresentUnfinished(blue);
    EXPECT_EQ(Show({{frame}, {content_}}), S_OK);
    EXPECT_EQ(content_->givenUp, 0);
    EXPECT_EQ(Shown(), Whole(blue));
}

TEST_F(PresenterGivingUp, APictureInAnotherSizeThanTheLastIsShown) {
    SetWindowPos(window_, nullptr, 0, 0, windowWidth / 2, windowHeight / 2, SWP_NOMOVE | SWP_NOZORDER);
    PumpAll();
    PresentUnfinished(white);
    content_->isOutdated = [] { return true; };
    EXPECT_EQ(Show({{content_}}), S_OK);
    EXPECT_EQ(content_->givenUp, 0);
    EXPECT_EQ(content_->shown, 1);
}

TEST_F(PresenterGivingUp, APictureThatIsDrawnAlreadyIsShown) {
    PresentUnfinished(white);
    graphics_->Finish();
    content_->isOutdated = [] { return true; };
    EXPECT_EQ(Show({{content_}}), S_OK);
    EXPECT_EQ(content_->givenUp, 0);
    EXPECT_EQ(Shown(), Whole(white));
}

TEST_F(PresenterGivingUp, AfterThePresentersEndNothingIsShown) {
    PresentUnfinished(white);
    content_->isOutdated = [] { return true; };
    EXPECT_EQ(Show({{content_}}), S_OK);
    presenter_.reset();
    Sleep();
    EXPECT_EQ(stepsDone_, 0);
    EXPECT_EQ(content_->shown, 0);
    graphics_->Finish();
}

}  // namespace
