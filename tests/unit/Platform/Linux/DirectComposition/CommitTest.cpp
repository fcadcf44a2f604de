// What DirectComposition promises of a commit.
#include "Platform/Linux/DirectComposition/CompositionDevice.h"

#include "CommitFixture.h"

#include <atomic>
#include <thread>

using Microsoft::WRL::ComPtr;

namespace {

using namespace CommitColors;

TEST_F(CommitTest, APresentShowsNothingUntilTheCommit) {
    Present(client_, red);
    Present(frame_, nothing);
    ASSERT_EQ(composition_->Commit(), S_OK);
    ASSERT_EQ(Left(), redPixel);
    Present(client_, blue);
    EXPECT_EQ(Left(), redPixel);
    EXPECT_EQ(composition_->Commit(), S_OK);
    EXPECT_EQ(Left(), bluePixel);
}

TEST_F(CommitTest, AnOffsetAloneMovesNothingOnTheScreenUntilTheCommit) {
    Present(client_, red);
    Present(frame_, nothing);
    ASSERT_EQ(composition_->Commit(), S_OK);
    ASSERT_EQ(client_.visual->SetOffsetX(30), S_OK);
    ASSERT_EQ(client_.visual->SetOffsetY(20), S_OK);
    EXPECT_EQ(Left(), redPixel);
    ASSERT_EQ(composition_->Commit(), S_OK);
    EXPECT_EQ(PixelAt(29, 20), 0U);
    EXPECT_EQ(PixelAt(30, 19), 0U);
    EXPECT_EQ(PixelAt(30, 20), redPixel);
}

// The right half shows the client, the left one the frame: a picture of two colours has half of a commit.
TEST_F(CommitTest, BothLayersAndTheOffsetComeInOneStep) {
    Present(client_, red);
    Present(frame_, red);
    ASSERT_EQ(composition_->Commit(), S_OK);
    std::atomic<bool> stop{false};
    std::atomic<int> looks{0};
    std::atomic<int> halves{0};
    std::thread onlooker([&, window = XWindow()] {
        const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> eyes(xcb_connect(nullptr, nullptr),
                                                                                xcb_disconnect);
        while (!stop) {
            const Picture row = Picture::Of(eyes.get(), window, 0, 100, windowWidth, 1);
            halves += row.At(10, 0) != row.At(windowWidth - 10, 0);
            ++looks;
        }
    });
    for (int commit = 0; commit < 60 || looks < 100; ++commit) {
        const Color& color = commit % 2 ? red : blue;
        Present(client_, color);
        Present(frame_, color);
        ASSERT_EQ(client_.visual->SetOffsetX(commit % 2 ? 0.0F : 1.0F), S_OK);
        EXPECT_EQ(composition_->Commit(), S_OK);
    }
    stop = true;
    onlooker.join();
    EXPECT_EQ(halves, 0);
}

TEST_F(CommitTest, AFrameMayStartAgainOnlyAfterTheCommitOfTheLastOne) {
    const HANDLE waitable = client_.chain->GetFrameLatencyWaitableObject();
    ASSERT_EQ(WaitForSingleObject(waitable, 5000), WAIT_OBJECT_0);
    Present(client_, red);
    EXPECT_EQ(WaitForSingleObject(waitable, 100), static_cast<DWORD>(WAIT_TIMEOUT));
    ASSERT_EQ(composition_->Commit(), S_OK);
    EXPECT_EQ(WaitForSingleObject(waitable, 5000), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(waitable, 0), static_cast<DWORD>(WAIT_TIMEOUT)) << "One frame at a time.";
    CloseHandle(waitable);
}

TEST_F(CommitTest, APresentedPictureStaysThroughAResizeUntilTheNextPresent) {
    Present(client_, red);
    Present(frame_, nothing);
    ASSERT_EQ(composition_->Commit(), S_OK);
    ASSERT_EQ(client_.chain->ResizeBuffers(0, 200, 100, DXGI_FORMAT_UNKNOWN,
                                           DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT),
              S_OK);
    ASSERT_EQ(composition_->Commit(), S_OK);
    EXPECT_EQ(Right(), redPixel);
    Present(client_, blue);
    ASSERT_EQ(composition_->Commit(), S_OK);
    EXPECT_EQ(Left(), bluePixel);
}

}  // namespace
