#include "DeviceFixture.h"

#include "Platform/Linux/Direct3D/Presentable.h"
#include "Platform/Linux/Direct3D/SurfaceAccess.h"
#include "tests/support/SwapChainDescription.h"

#include <dxgi1_6.h>

namespace {

using Platform::Direct3D::IPresentable;
using Platform::Direct3D::TextureOf;

constexpr UINT waitableFlag = DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT;
constexpr DXGI_PRESENT_PARAMETERS plain{};

DXGI_SWAP_CHAIN_DESC1 GoodDescription() {
    return SwapChainDescription(6, 4);
}

class SwapChainTest : public DeviceFixture {
protected:
    void SetUp() override {
        DeviceFixture::SetUp();
        if (HasFatalFailure()) return;
        ASSERT_EQ(CreateDXGIFactory2(0, IID_PPV_ARGS(&factory)), S_OK);
        const DXGI_SWAP_CHAIN_DESC1 desc = GoodDescription();
        ComPtr<IDXGISwapChain1> made;
        ASSERT_EQ(factory->CreateSwapChainForComposition(device.Get(), &desc, nullptr, &made), S_OK);
        ASSERT_EQ(made.As(&swapChain), S_OK);
        ASSERT_EQ(made.As(&presentable), S_OK);
    }

    void TearDown() override {
        presentable.Reset();
        swapChain.Reset();
        factory.Reset();
        DeviceFixture::TearDown();
    }

    ComPtr<ID3D11Texture2D> BackBuffer() {
        ComPtr<ID3D11Texture2D> buffer;
        EXPECT_EQ(swapChain->GetBuffer(0, IID_PPV_ARGS(&buffer)), S_OK);
        return buffer;
    }

    HRESULT Resize(UINT width, UINT height, UINT flags = waitableFlag) {
        return swapChain->ResizeBuffers(0, width, height, DXGI_FORMAT_UNKNOWN, flags);
    }

    void Present() { EXPECT_EQ(swapChain->Present1(1, 0, &plain), S_OK); }

    std::uint32_t PresentedPixel() {
        std::uint32_t pixel = 0;
        presentable->Graphics()->ReadBack(presentable->Presented(), {0, 0, 1, 1}, &pixel, 4);
        return pixel;
    }

    ComPtr<IDXGIFactory7> factory;
    ComPtr<IDXGISwapChain3> swapChain;
    ComPtr<IPresentable> presentable;
};

TEST_F(SwapChainTest, BufferZeroIsAlwaysTheBackBuffer) {
    const auto buffer = BackBuffer();
    const auto target = MakeTarget(buffer.Get());
    constexpr float red[4] = {1, 0, 0, 1};
    constexpr float green[4] = {0, 1, 0, 1};
    const auto first = TextureOf(buffer.Get());

    context->ClearRenderTargetView(target.Get(), red);
    Present();
    EXPECT_EQ(presentable->Presented(), first);
    EXPECT_NE(TextureOf(buffer.Get()), first);

    // The view that was made before the present now draws into the other image.
    context->ClearRenderTargetView(target.Get(), green);
    EXPECT_EQ(PresentedPixel(), 0xFFFF0000U);
    Present();
    EXPECT_EQ(PresentedPixel(), 0xFF00FF00U);
    EXPECT_EQ(TextureOf(buffer.Get()), first);
    EXPECT_EQ(Pixel(buffer.Get(), 0, 0), 0xFFFF0000U);
}

TEST_F(SwapChainTest, TheBackBufferIsATextureAndASurface) {
    ComPtr<IDXGISurface2> surface;
    EXPECT_EQ(swapChain->GetBuffer(0, IID_PPV_ARGS(&surface)), S_OK);
    EXPECT_EQ(TextureOf(surface.Get()), TextureOf(BackBuffer().Get()));
    EXPECT_EQ(swapChain->GetBuffer(1, IID_PPV_ARGS(&surface)), DXGI_ERROR_INVALID_CALL);
    EXPECT_FALSE(surface);
}

TEST_F(SwapChainTest, ResizesWhenNobodyHoldsTheBackBuffer) {
    ASSERT_EQ(Resize(9, 5), S_OK);
    DXGI_SWAP_CHAIN_DESC1 desc{};
    ASSERT_EQ(swapChain->GetDesc1(&desc), S_OK);
    EXPECT_EQ(desc.Width, 9U);
    EXPECT_EQ(desc.Height, 5U);
    EXPECT_EQ(desc.BufferCount, 2U);
    EXPECT_EQ(desc.Format, DXGI_FORMAT_B8G8R8A8_UNORM);
    D3D11_TEXTURE2D_DESC buffer{};
    BackBuffer()->GetDesc(&buffer);
    EXPECT_EQ(buffer.Width, 9U);
}

TEST_F(SwapChainTest, DoesNotResizeWhileTheBackBufferIsHeld) {
    auto buffer = BackBuffer();
    EXPECT_EQ(Resize(9, 5), DXGI_ERROR_INVALID_CALL);
    auto target = MakeTarget(buffer.Get());
    buffer.Reset();
    EXPECT_EQ(Resize(9, 5), DXGI_ERROR_INVALID_CALL) << "A view holds the buffer.";
    context->OMSetRenderTargets(1, target.GetAddressOf(), nullptr);
    target.Reset();
    EXPECT_EQ(Resize(9, 5), DXGI_ERROR_INVALID_CALL) << "The context holds the view.";
    context->OMSetRenderTargets(0, nullptr, nullptr);
    EXPECT_EQ(Resize(9, 5), S_OK);
}

TEST_F(SwapChainTest, AnExecutedListThatIsGoneHoldsNoBackBuffer) {
    const auto deferred = MakeDeferred();
    constexpr float red[4] = {1, 0, 0, 1};
    deferred->ClearRenderTargetView(MakeTarget(BackBuffer().Get()).Get(), red);
    ComPtr<ID3D11CommandList> list;
    ASSERT_EQ(deferred->FinishCommandList(TRUE, &list), S_OK);
    context->ExecuteCommandList(list.Get(), TRUE);
    EXPECT_EQ(Resize(9, 5), DXGI_ERROR_INVALID_CALL);
    list.Reset();
    EXPECT_EQ(Resize(9, 5), S_OK);
}

TEST_F(SwapChainTest, RefusesOtherFlagsAndEmptySizesAtAResize) {
    EXPECT_EQ(Resize(9, 5, 0), DXGI_ERROR_INVALID_CALL);
    EXPECT_EQ(Resize(0, 5), DXGI_ERROR_INVALID_CALL);
    EXPECT_EQ(Resize(9, 0), DXGI_ERROR_INVALID_CALL);
    EXPECT_EQ(swapChain->ResizeBuffers(3, 9, 5, DXGI_FORMAT_UNKNOWN, waitableFlag), DXGI_ERROR_INVALID_CALL);
}

TEST_F(SwapChainTest, ThePresentedPictureStaysThroughAResize) {
    EXPECT_EQ(presentable->Presented(), nullptr);
    Present();
    const auto shown = presentable->Presented();
    ASSERT_EQ(Resize(9, 5), S_OK);
    EXPECT_EQ(presentable->Presented(), shown);
    Present();
    EXPECT_EQ(presentable->Presented()->Size().width, 9U);
}

TEST_F(SwapChainTest, TheWaitableIsReleasedOnceForEachFrameThatWasShown) {
    presentable->SetPeriod(std::chrono::milliseconds(1));
    const HANDLE waitable = swapChain->GetFrameLatencyWaitableObject();
    ASSERT_NE(waitable, nullptr);
    EXPECT_EQ(WaitForSingleObject(waitable, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(waitable, 20), WAIT_TIMEOUT);
    Present();
    EXPECT_TRUE(presentable->HasNewPicture());
    EXPECT_EQ(WaitForSingleObject(waitable, 20), WAIT_TIMEOUT) << "Presented, but not yet shown.";
    presentable->Shown();
    EXPECT_FALSE(presentable->HasNewPicture());
    EXPECT_EQ(WaitForSingleObject(waitable, 5000), WAIT_OBJECT_0);
    presentable->Shown();
    EXPECT_EQ(WaitForSingleObject(waitable, 20), WAIT_TIMEOUT) << "A commit without a present shows no frame.";
    EXPECT_TRUE(CloseHandle(waitable));
}

TEST_F(SwapChainTest, APictureThatIsGivenUpReleasesTheWaitableAndIsStillNews) {
    presentable->SetPeriod(std::chrono::hours(1));
    const HANDLE waitable = swapChain->GetFrameLatencyWaitableObject();
    ASSERT_EQ(WaitForSingleObject(waitable, 0), WAIT_OBJECT_0);
    EXPECT_EQ(presentable->Waitable(), Platform::FindHandleObject(waitable).get());
    presentable->GivenUp();
    EXPECT_EQ(WaitForSingleObject(waitable, 20), WAIT_TIMEOUT) << "There was none.";
    Present();
    EXPECT_FALSE(presentable->IsOutdated());
    presentable->Hurry();
    EXPECT_TRUE(presentable->IsOutdated());
    presentable->GivenUp();
    EXPECT_EQ(WaitForSingleObject(waitable, 5000), WAIT_OBJECT_0);
    EXPECT_TRUE(presentable->HasNewPicture());
    EXPECT_TRUE(CloseHandle(waitable));
}

TEST_F(SwapChainTest, AGivenUpPictureThatIsShownAllTheSameCountsAsAFrame) {
    presentable->SetPeriod(std::chrono::hours(1));
    const HANDLE waitable = swapChain->GetFrameLatencyWaitableObject();
    ASSERT_EQ(WaitForSingleObject(waitable, 0), WAIT_OBJECT_0);
    Present();
    presentable->GivenUp();
    presentable->Shown();
    EXPECT_EQ(WaitForSingleObject(waitable, 20), WAIT_TIMEOUT) << "The next one comes a period later.";
    EXPECT_TRUE(CloseHandle(waitable));
}

TEST_F(SwapChainTest, WithoutItsFlagThereIsNoWaitable) {
    DXGI_SWAP_CHAIN_DESC1 desc = GoodDescription();
    desc.Flags = 0;
    ComPtr<IDXGISwapChain1> made;
    ASSERT_EQ(factory->CreateSwapChainForComposition(device.Get(), &desc, nullptr, &made), S_OK);
    ComPtr<IDXGISwapChain2> second;
    ASSERT_EQ(made.As(&second), S_OK);
    EXPECT_EQ(second->GetFrameLatencyWaitableObject(), nullptr);
    ComPtr<IPresentable> unpaced;
    ASSERT_EQ(made.As(&unpaced), S_OK);
    unpaced->Hurry();
    EXPECT_FALSE(unpaced->IsOutdated());
    EXPECT_EQ(second->SetMaximumFrameLatency(1), DXGI_ERROR_INVALID_CALL);
}

TEST_F(SwapChainTest, FrameLatencyIsWithinOneAndSixteen) {
    EXPECT_EQ(swapChain->SetMaximumFrameLatency(1), S_OK);
    EXPECT_EQ(swapChain->SetMaximumFrameLatency(0), DXGI_ERROR_INVALID_CALL);
    EXPECT_EQ(swapChain->SetMaximumFrameLatency(17), DXGI_ERROR_INVALID_CALL);
    UINT latency = 0;
    EXPECT_EQ(swapChain->GetMaximumFrameLatency(&latency), S_OK);
    EXPECT_EQ(latency, 1U);
}

TEST_F(SwapChainTest, OnlyTheUsualColourSpaceIsSupported) {
    UINT support = 99;
    EXPECT_EQ(swapChain->CheckColorSpaceSupport(DXGI_COLOR_SPACE_RGB_FULL_G22_NONE_P709, &support), S_OK);
    EXPECT_EQ(support, UINT{DXGI_SWAP_CHAIN_COLOR_SPACE_SUPPORT_FLAG_PRESENT});
    EXPECT_EQ(swapChain->CheckColorSpaceSupport(DXGI_COLOR_SPACE_RGB_FULL_G10_NONE_P709, &support), S_OK);
    EXPECT_EQ(support, 0U);
    EXPECT_EQ(swapChain->SetColorSpace1(DXGI_COLOR_SPACE_RGB_FULL_G22_NONE_P709), S_OK);
    EXPECT_EQ(swapChain->SetColorSpace1(DXGI_COLOR_SPACE_RGB_FULL_G10_NONE_P709), E_INVALIDARG);
}

TEST_F(SwapChainTest, RefusesPresentsThatItCannotDo) {
    EXPECT_EQ(swapChain->Present1(1, 0, nullptr), DXGI_ERROR_INVALID_CALL);
    EXPECT_EQ(swapChain->Present1(5, 0, &plain), DXGI_ERROR_INVALID_CALL);
    EXPECT_EQ(swapChain->Present1(1, 8, &plain), DXGI_ERROR_INVALID_CALL);
    EXPECT_FALSE(presentable->HasNewPicture());
}

TEST_F(SwapChainTest, RefusesDescriptionsThatItCannotServe) {
    ComPtr<IDXGISwapChain1> made;
    const auto refused = [&](auto change) {
        DXGI_SWAP_CHAIN_DESC1 desc = GoodDescription();
        change(desc);
        return factory->CreateSwapChainForComposition(device.Get(), &desc, nullptr, &made) == DXGI_ERROR_INVALID_CALL &&
               !made;
    };
    EXPECT_TRUE(refused([](auto& desc) { desc.Width = 0; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.Format = DXGI_FORMAT_R32_FLOAT; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.BufferCount = 1; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.SampleDesc.Count = 2; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.Scaling = DXGI_SCALING_NONE; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.SwapEffect = DXGI_SWAP_EFFECT_DISCARD; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.AlphaMode = DXGI_ALPHA_MODE_STRAIGHT; }));
    EXPECT_TRUE(refused([](auto& desc) { desc.Flags = 1; }));
    const DXGI_SWAP_CHAIN_DESC1 good = GoodDescription();
    EXPECT_EQ(factory->CreateSwapChainForComposition(nullptr, &good, nullptr, &made), DXGI_ERROR_INVALID_CALL);
    EXPECT_EQ(factory->CreateSwapChainForComposition(factory.Get(), &good, nullptr, &made), DXGI_ERROR_INVALID_CALL);
}

}  // namespace
