// Two swap chains under one tree, from present to screen: what DirectComposition promises of a commit.
#include "Platform/Linux/DirectComposition/CompositionDevice.h"

#include "PresenterFixture.h"

#include "Platform/Linux/Direct3D/SurfaceAccess.h"
#include "tests/support/SwapChainDescription.h"

#include <d3d11_4.h>
#include <dxgi1_6.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>

using Microsoft::WRL::ComPtr;

namespace {

constexpr DXGI_PRESENT_PARAMETERS plain{};
using Color = std::array<float, 4>;
constexpr Color red{1, 0, 0, 1};
constexpr Color blue{0, 0, 1, 1};
constexpr Color nothing{0, 0, 0, 0};
constexpr std::uint32_t redPixel = 0x00FF0000;
constexpr std::uint32_t bluePixel = 0x000000FF;

/// A window with a frame, which covers its left half, over a client of the window's size.
class CommitTest : public PresenterTest {
protected:
    void SetUp() override {
        PresenterTest::SetUp();
        Make();
        ComPtr<ID3D11Device> device;
        ASSERT_EQ(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, D3D11_CREATE_DEVICE_BGRA_SUPPORT,
                                    nullptr, 0, D3D11_SDK_VERSION, &device, nullptr, &context_),
                  S_OK);
        ASSERT_EQ(device.As(&device_), S_OK);
        ASSERT_EQ(CreateDXGIFactory2(0, IID_PPV_ARGS(&factory_)), S_OK);
        ASSERT_EQ(DCompositionCreateDevice2(device.Get(), IID_PPV_ARGS(&composition_)), S_OK);
        ASSERT_EQ(composition_->CreateTargetForHwnd(window_, TRUE, &target_), S_OK);
        ComPtr<IDCompositionVisual2> root;
        ASSERT_EQ(composition_->CreateVisual(&root), S_OK);
        ASSERT_EQ(target_->SetRoot(root.Get()), S_OK);
        client_ = MakeLayer(root.Get(), windowWidth, DXGI_ALPHA_MODE_IGNORE);
        frame_ = MakeLayer(root.Get(), windowWidth / 2, DXGI_ALPHA_MODE_PREMULTIPLIED);
    }

    void TearDown() override {
        client_ = {};
        frame_ = {};
        target_.Reset();
        composition_.Reset();
        factory_.Reset();
        context_.Reset();
        device_.Reset();
        PresenterTest::TearDown();
    }

    struct SwapChainLayer {
        ComPtr<IDCompositionVisual2> visual;
        ComPtr<IDXGISwapChain2> chain;
    };

    SwapChainLayer MakeLayer(IDCompositionVisual2* root, UINT width, DXGI_ALPHA_MODE alphaMode) {
        const DXGI_SWAP_CHAIN_DESC1 desc = SwapChainDescription(width, windowHeight, alphaMode);
        SwapChainLayer layer;
        ComPtr<IDXGISwapChain1> chain;
        EXPECT_EQ(factory_->CreateSwapChainForComposition(device_.Get(), &desc, nullptr, &chain), S_OK);
        EXPECT_EQ(chain.As(&layer.chain), S_OK);
        EXPECT_EQ(composition_->CreateVisual(&layer.visual), S_OK);
        EXPECT_EQ(layer.visual->SetContent(layer.chain.Get()), S_OK);
        EXPECT_EQ(root->AddVisual(layer.visual.Get(), FALSE, nullptr), S_OK);
        return layer;
    }

    void Present(const SwapChainLayer& layer, const Color& color) {
        ComPtr<ID3D11Texture2D> buffer;
        ComPtr<ID3D11RenderTargetView> view;
        EXPECT_EQ(layer.chain->GetBuffer(0, IID_PPV_ARGS(&buffer)), S_OK);
        EXPECT_EQ(device_->CreateRenderTargetView(buffer.Get(), nullptr, &view), S_OK);
        context_->ClearRenderTargetView(view.Get(), color.data());
        EXPECT_EQ(layer.chain->Present1(1, 0, &plain), S_OK);
    }

    std::uint32_t PixelAt(int x, int y) const { return ShownPart(x, y, 1, 1).At(0, 0); }
    std::uint32_t Left() const { return PixelAt(10, 10); }
    std::uint32_t Right() const { return PixelAt(windowWidth - 10, 10); }

    ComPtr<ID3D11Device5> device_;
    ComPtr<ID3D11DeviceContext> context_;
    ComPtr<IDXGIFactory7> factory_;
    ComPtr<IDCompositionDesktopDevice> composition_;
    ComPtr<IDCompositionTarget> target_;
    SwapChainLayer client_;
    SwapChainLayer frame_;
};

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
        EXPECT_EQ(client_.chain->Present1(1, 0, &plain), S_OK);
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

constexpr std::uint32_t greenPixel = 0x0000FF00;
constexpr std::uint32_t whitePixel = 0x00FFFFFF;

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
    EXPECT_EQ(client_.chain->Present1(1, 0, &plain), S_OK);
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
