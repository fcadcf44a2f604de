// How soon input is answered on a software device: which pictures are shown and which are left out for it.
#include "CommitFixture.h"

#include "Platform/Linux/Direct3D/SurfaceAccess.h"

#include <algorithm>

using Microsoft::WRL::ComPtr;

namespace {

using namespace CommitColors;

/// A software device's pictures while there is input.
class AnswerTest : public CommitTest {
protected:
    void SetUp() override {
        CommitTest::SetUp();
        if (HasFatalFailure()) return;
        graphicsOfChain_ = Platform::Direct3D::GraphicsDevice::From(device_.Get());
        if (!graphicsOfChain_->IsSoftware()) GTEST_SKIP() << "On hardware no picture is put off.";
        ASSERT_EQ(client_.chain.As(&content_), S_OK);
        waitable_ = client_.chain->GetFrameLatencyWaitableObject();
        Present(frame_, nothing);
        BeginFrame();
        Draw(redPixel);
        ASSERT_EQ(composition_->Commit(), S_OK);
        ASSERT_EQ(Right(), redPixel);
        BeginFrame();
    }
    void TearDown() override {
        graphicsOfChain_.reset();
        content_.Reset();
        if (waitable_) CloseHandle(waitable_);
        CommitTest::TearDown();
    }

    void BeginFrame() { ASSERT_EQ(WaitForSingleObject(waitable_, 5000), WAIT_OBJECT_0); }

    void PutOff(std::uint32_t pixel) {
        ComPtr<ID3D11Texture2D> buffer;
        ASSERT_EQ(client_.chain->GetBuffer(0, IID_PPV_ARGS(&buffer)), S_OK);
        const auto image = Platform::Direct3D::TextureOf(buffer.Get());
        Platform::Direct3D::UnfinishedPicture picture(image, {{false, buffer.Get()}});
        picture.AddDrawing([device = graphicsOfChain_.get(), image, pixel] {
            device->AwaitPixels(image);
            for (std::size_t y = 0; y < windowHeight; ++y)
                std::fill_n(reinterpret_cast<std::uint32_t*>(image->Pixels() + y * image->Stride()), windowWidth,
                            pixel);
        });
        graphicsOfChain_->PutOff(std::move(picture));
    }

    void Draw(std::uint32_t pixel) {
        PutOff(pixel);
        Present(client_);
    }

    /// Input that has come to the window when this returns.
    void MoveTheHand() {
        display_.MovePointer(200, 200);
        display_.MovePointer(210, 205);  // it may have been there
        ASSERT_TRUE(PumpUntil([&] { return content_->IsOutdated(); }));
    }

    /// A picture during which input comes.
    void GiveUp(std::uint32_t pixel) {
        MoveTheHand();
        Draw(pixel);
        EXPECT_EQ(composition_->Commit(), S_OK);
        EXPECT_EQ(Right(), redPixel);
    }

    void Sleep() {
        const HANDLE never = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        EXPECT_EQ(WaitForSingleObject(never, 1), WAIT_TIMEOUT);
        CloseHandle(never);
    }

    std::shared_ptr<Platform::Direct3D::GraphicsDevice> graphicsOfChain_;
    ComPtr<Platform::Direct3D::IPresentable> content_;
    HANDLE waitable_ = nullptr;
};

TEST_F(AnswerTest, TwoPicturesAreGivenUpForAnInputAndItsAnswerIsShownWhateverComesMeanwhile) {
    GiveUp(bluePixel);
    BeginFrame();  // the turn that handles the input
    Draw(whitePixel);
    EXPECT_EQ(composition_->Commit(), S_OK);
    EXPECT_EQ(Right(), redPixel);
    BeginFrame();
    Draw(greenPixel);
    display_.MovePointer(300, 250);
    PumpAll();
    EXPECT_EQ(composition_->Commit(), S_OK);
    EXPECT_EQ(Right(), greenPixel);
}

TEST_F(AnswerTest, WithoutANextFrameThePictureIsShownWhenTheThreadSleeps) {
    GiveUp(bluePixel);
    Sleep();
    EXPECT_EQ(Right(), bluePixel);
}

TEST_F(AnswerTest, ALookAtAnotherObjectDoesNotDrawThePicture) {
    GiveUp(bluePixel);
    BeginFrame();
    const HANDLE game = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    EXPECT_EQ(WaitForSingleObject(game, 0), WAIT_TIMEOUT);
    CloseHandle(game);
    EXPECT_EQ(Right(), redPixel);
}

TEST_F(AnswerTest, APictureWhosePlaceIsTakenIsNotShownBeforeTheOneThatTookIt) {
    GiveUp(bluePixel);
    BeginFrame();
    PutOff(greenPixel);
    Sleep();
    EXPECT_EQ(composition_->Commit(), S_OK);
    EXPECT_EQ(Right(), redPixel);
    Present(client_);
    EXPECT_EQ(composition_->Commit(), S_OK);
    Sleep();
    EXPECT_EQ(Right(), greenPixel);
}

TEST_F(AnswerTest, TheDevicesContextMayGoBeforeAGivenUpPictureIsShown) {
    GiveUp(bluePixel);
    context_.Reset();
    Sleep();
    EXPECT_EQ(Right(), bluePixel);
}

TEST_F(AnswerTest, AWindowMayEndWithAPictureGivenUp) {
    GiveUp(bluePixel);
    // TearDown looks whether everything goes.
}

}  // namespace
