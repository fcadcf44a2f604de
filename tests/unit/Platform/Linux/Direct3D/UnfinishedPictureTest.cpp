// Pictures that a software device draws when they are needed.
#include "DeviceFixture.h"
#include "Programs.h"

#include "Platform/Linux/Direct3D/Presentable.h"
#include "Platform/Linux/Direct3D/SurfaceAccess.h"
#include "tests/support/SwapChainDescription.h"

#include <dxgi1_6.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

using Platform::Direct3D::GraphicsDevice;
using Platform::Direct3D::IPresentable;
using Platform::Direct3D::Texture;
using Platform::Direct3D::TextureOf;

// Each drawing takes four steps.
constexpr UINT width = 640;
constexpr UINT height = 1200;

constexpr std::uint32_t nobodys = 0x12345678;
constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t green = 0xFF00FF00;

std::array<float, 4> ColorOf(std::uint32_t pixel) {
    const auto part = [pixel](int shift) { return static_cast<float>(pixel >> shift & 0xFF) / 255.0F; };
    return {part(16), part(8), part(0), part(24)};
}

class UnfinishedPictureTest : public DeviceFixture {
protected:
    void SetUp() override {
        DeviceFixture::SetUp();
        if (HasFatalFailure()) return;
        graphics = GraphicsDevice::From(device.Get());
        if (!graphics->IsSoftware()) GTEST_SKIP() << "On hardware no picture is put off.";
        const DXGI_SWAP_CHAIN_DESC1 desc = SwapChainDescription(width, height, DXGI_ALPHA_MODE_IGNORE);
        const auto made = MakeChain(desc);
        ASSERT_TRUE(made);
        ASSERT_EQ(made.As(&swapChain), S_OK);
        ASSERT_EQ(made.As(&presentable), S_OK);
        buffer = BufferOf(made.Get());
        target = MakeTarget(buffer.Get());
        constants = MakeConstants();
        deferred = MakeDeferred();
        for (int i = 0; i < 2; ++i) {
            Mark(BackImage());
            Present();
        }
        waitable = swapChain->GetFrameLatencyWaitableObject();
        BeginOutdatedFrame();
    }

    void TearDown() override {
        target.Reset();
        buffer.Reset();
        constants.Reset();
        deferred.Reset();
        presentable.Reset();
        swapChain.Reset();
        graphics.reset();
        if (waitable) CloseHandle(waitable);
        DeviceFixture::TearDown();
    }

    ComPtr<IDXGISwapChain1> MakeChain(const DXGI_SWAP_CHAIN_DESC1& desc) {
        ComPtr<IDXGIFactory7> factory;
        ComPtr<IDXGISwapChain1> made;
        EXPECT_EQ(CreateDXGIFactory2(0, IID_PPV_ARGS(&factory)), S_OK);
        EXPECT_EQ(factory->CreateSwapChainForComposition(device.Get(), &desc, nullptr, &made), S_OK);
        return made;
    }

    static ComPtr<ID3D11Texture2D> BufferOf(IDXGISwapChain1* chain) {
        ComPtr<ID3D11Texture2D> made;
        EXPECT_EQ(chain->GetBuffer(0, IID_PPV_ARGS(&made)), S_OK);
        return made;
    }

    /// Input outdates the frame that is being drawn.
    void BeginOutdatedFrame() {
        ASSERT_EQ(WaitForSingleObject(waitable, 5000), WAIT_OBJECT_0);
        presentable->Hurry();
        ASSERT_TRUE(presentable->IsOutdated());
    }

    ComPtr<ID3D11CommandList> Finish() {
        ComPtr<ID3D11CommandList> list;
        EXPECT_EQ(deferred->FinishCommandList(FALSE, &list), S_OK);
        return list;
    }

    /// Records a strip of the target in one colour.
    void RecordFill(ID3D11RenderTargetView* view) {
        SetStrip(deferred.Get(), view, width, height);
        deferred->PSSetShader(MakePixelShader(Programs::constant).Get(), nullptr, 0);
        deferred->PSSetConstantBuffers(0, 1, constants.GetAddressOf());
        deferred->Draw(4, 0);
    }

    /// A list that fills the back buffer.
    ComPtr<ID3D11CommandList> Fill(std::uint32_t pixel) {
        WriteColor(deferred.Get(), constants.Get(), ColorOf(pixel));
        RecordFill(target.Get());
        return Finish();
    }

    void Execute(const ComPtr<ID3D11CommandList>& list) { context->ExecuteCommandList(list.Get(), TRUE); }

    std::shared_ptr<Texture> BackImage() { return TextureOf(buffer.Get()); }

    /// Gives the buffer's pixels a value that no list draws.
    void Mark(const std::shared_ptr<Texture>& image) {
        graphics->AwaitPixels(image);
        for (UINT y = 0; y < height; ++y) std::fill_n(Row(*image, y), width, nobodys);
    }

    static std::uint32_t* Row(const Texture& image, UINT y) {
        return reinterpret_cast<std::uint32_t*>(image.Pixels() + y * image.Stride());
    }

    /// Whether all pixels have the value, without waiting for anything.
    static bool IsAll(const Texture& image, std::uint32_t pixel) {
        for (UINT y = 0; y < height; ++y) {
            if (!std::all_of(Row(image, y), Row(image, y) + width, [&](std::uint32_t each) { return each == pixel; }))
                return false;
        }
        return true;
    }

    bool IsPutOff(const std::shared_ptr<Texture>& image) { return graphics->IsPutOff(*image); }

    void Present() {
        constexpr DXGI_PRESENT_PARAMETERS plain{};
        EXPECT_EQ(swapChain->Present1(1, 0, &plain), S_OK);
    }

    /// Presents a picture that is given up at once; returns its image.
    std::shared_ptr<Texture> GiveUpAFill(std::uint32_t pixel) {
        auto image = BackImage();
        Execute(Fill(pixel));
        Present();
        presentable->GivenUp();
        return image;
    }

    std::shared_ptr<GraphicsDevice> graphics;
    ComPtr<IDXGISwapChain3> swapChain;
    ComPtr<IPresentable> presentable;
    ComPtr<ID3D11Texture2D> buffer;
    ComPtr<ID3D11RenderTargetView> target;
    ComPtr<ID3D11Buffer> constants;
    ComPtr<ID3D11DeviceContext> deferred;
    HANDLE waitable = nullptr;
};

TEST_F(UnfinishedPictureTest, AListThatDrawsOnABufferIsPlayedWhenItsPixelsAreNeeded) {
    const auto image = BackImage();
    Execute(Fill(red));
    EXPECT_TRUE(IsPutOff(image));
    EXPECT_TRUE(IsAll(*image, nobodys));
    EXPECT_TRUE(graphics->AwaitPixels(image));
    EXPECT_FALSE(IsPutOff(image));
    EXPECT_TRUE(IsAll(*image, red));
}

TEST_F(UnfinishedPictureTest, APictureThatIsNotOutdatedIsBegunWithoutWaitingForAnybody) {
    for (int frame = 0; frame < 2; ++frame) {
        Present();
        presentable->Shown();
        ASSERT_EQ(WaitForSingleObject(waitable, 5000), WAIT_OBJECT_0);
    }
    ASSERT_FALSE(presentable->IsOutdated());
    const auto image = BackImage();
    Execute(Fill(red));
    EXPECT_TRUE(IsPutOff(image)) << "The last step isn't done.";
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    const auto* const pixel = static_cast<const volatile std::uint32_t*>(Row(*image, 0));
    while (*pixel != red && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
    EXPECT_EQ(*pixel, red);
    EXPECT_NE(*Row(*image, height - 1), red);
    graphics->AwaitPixels(image);
    EXPECT_TRUE(IsAll(*image, red));
}

TEST_F(UnfinishedPictureTest, TheStepsTogetherDrawWhatOneDrawingDoes) {
    const auto coordinates = MakePixelShader(Programs::coordinates);
    const auto image = BackImage();
    SetStrip(deferred.Get(), target.Get(), width, height);
    deferred->PSSetShader(coordinates.Get(), nullptr, 0);
    deferred->Draw(4, 0);
    Execute(Finish());
    ASSERT_TRUE(IsPutOff(image));
    graphics->AwaitPixels(image);
    const std::vector<std::uint32_t> inSteps = [&] {
        std::vector<std::uint32_t> pixels;
        for (UINT y = 0; y < height; ++y) pixels.insert(pixels.end(), Row(*image, y), Row(*image, y) + width);
        return pixels;
    }();

    const auto texture = MakeTexture(width, height, D3D11_BIND_RENDER_TARGET);
    SetStrip(context.Get(), MakeTarget(texture.Get()).Get(), width, height);
    context->PSSetShader(coordinates.Get(), nullptr, 0);
    context->Draw(4, 0);
    context->ClearState();
    std::vector<std::uint32_t> atOnce(inSteps.size());
    graphics->ReadBack(TextureOf(texture.Get()), {0, 0, width, height}, atOnce.data(), width * sizeof(std::uint32_t));
    EXPECT_TRUE(inSteps == atOnce);
}

TEST_F(UnfinishedPictureTest, AClearComesOnceAndAheadOfTheDrawingThatFollowsIt) {
    const auto image = BackImage();
    constexpr float clearColor[4] = {1, 0, 0, 1};
    deferred->ClearRenderTargetView(target.Get(), clearColor);
    WriteColor(deferred.Get(), constants.Get(), ColorOf(green));
    SetStrip(deferred.Get(), target.Get(), width / 2, height);
    deferred->PSSetShader(MakePixelShader(Programs::constant).Get(), nullptr, 0);
    deferred->PSSetConstantBuffers(0, 1, constants.GetAddressOf());
    deferred->Draw(4, 0);
    Execute(Finish());
    ASSERT_TRUE(IsPutOff(image));
    graphics->AwaitPixels(image);
    for (const UINT y : {0U, height / 2, height - 1}) {
        EXPECT_EQ(Row(*image, y)[0], green) << y;
        EXPECT_EQ(Row(*image, y)[width - 1], red) << y;
    }
}

TEST_F(UnfinishedPictureTest, APictureThatWasPresentedIsDrawnIntoItsOwnBuffer) {
    const auto first = BackImage();
    Execute(Fill(red));
    Present();
    const auto second = BackImage();
    ASSERT_NE(first, second);
    EXPECT_TRUE(graphics->AwaitPixels(first));
    EXPECT_TRUE(IsAll(*first, red));
    EXPECT_TRUE(IsAll(*second, nobodys));
}

TEST_F(UnfinishedPictureTest, WhoeverWaitsMayLeaveBetweenTheStepsAndComeAgain) {
    const auto image = BackImage();
    Execute(Fill(red));
    int asked = 0;
    EXPECT_FALSE(graphics->AwaitPixels(image, [&] { return ++asked == 3; }));
    EXPECT_TRUE(IsPutOff(image));
    EXPECT_FALSE(IsAll(*image, red));
    EXPECT_TRUE(graphics->AwaitPixels(image, [] { return false; }));
    EXPECT_TRUE(IsAll(*image, red));
}

TEST_F(UnfinishedPictureTest, ThePictureAfterOneThatWasGivenUpTakesItsPlace) {
    const auto first = GiveUpAFill(red);
    const auto second = BackImage();
    Execute(Fill(green));
    EXPECT_TRUE(IsPutOff(second));
    EXPECT_TRUE(graphics->AwaitPixels(second));
    EXPECT_TRUE(IsAll(*second, green));
    graphics->Finish();
    EXPECT_TRUE(IsAll(*first, nobodys)) << "never drawn";
}

TEST_F(UnfinishedPictureTest, APictureThatWasBegunIsReplacedWhileTheDeviceStillWorksOnIt) {
    for (int i = 0; i < 20; ++i) {
        Execute(Fill(red));
        graphics->BeginPicture();
        Present();
        presentable->GivenUp();
        Execute(Fill(green));
        const auto image = BackImage();
        Present();
        ASSERT_TRUE(graphics->AwaitPixels(image));
        ASSERT_TRUE(IsAll(*image, green));
    }
}

TEST_F(UnfinishedPictureTest, ABufferWhosePictureWasLeftOutIsIncompleteUntilTheNextPresent) {
    const auto first = GiveUpAFill(red);
    EXPECT_FALSE(first->IsIncomplete());
    Execute(Fill(green));
    EXPECT_TRUE(first->IsIncomplete());
    Present();
    EXPECT_FALSE(presentable->Presented()->IsIncomplete());
    Execute(Fill(red));
    Present();
    EXPECT_EQ(presentable->Presented(), first);
    EXPECT_FALSE(first->IsIncomplete());
}

TEST_F(UnfinishedPictureTest, APictureThatNobodyGaveUpIsDrawnBeforeTheNext) {
    const auto first = BackImage();
    Execute(Fill(red));
    Present();
    Execute(Fill(green));
    graphics->AwaitPixels(BackImage());
    EXPECT_TRUE(IsAll(*first, red));
}

TEST_F(UnfinishedPictureTest, AGivenUpPictureThatSomebodyNeedsIsDrawnAllTheSame) {
    const auto image = GiveUpAFill(red);
    EXPECT_TRUE(graphics->AwaitPixels(image));
    EXPECT_TRUE(IsAll(*image, red));
}

TEST_F(UnfinishedPictureTest, AListThatDrawsOnSomethingElseTakesNoPlace) {
    const auto offscreen = MakeTexture(width, height, D3D11_BIND_RENDER_TARGET);
    const auto offscreenTarget = MakeTarget(offscreen.Get());
    const auto image = BackImage();
    constexpr float black[4] = {0, 0, 0, 1};
    deferred->ClearRenderTargetView(offscreenTarget.Get(), black);
    WriteColor(deferred.Get(), constants.Get(), ColorOf(red));
    RecordFill(offscreenTarget.Get());
    RecordFill(target.Get());
    Execute(Finish());
    ASSERT_TRUE(IsPutOff(image));
    Present();
    presentable->GivenUp();

    Execute(Fill(green));  // without the offscreen texture
    graphics->AwaitPixels(BackImage());
    EXPECT_TRUE(IsAll(*image, red));
    EXPECT_EQ(Pixel(offscreen.Get(), 5, 5), red);
}

TEST_F(UnfinishedPictureTest, WhatAGivenUpListWroteIntoBuffersIsThereForTheNext) {
    const auto first = GiveUpAFill(red);
    RecordFill(target.Get());  // in the colour that the constants have
    Execute(Finish());
    const auto second = BackImage();
    graphics->AwaitPixels(second);
    EXPECT_TRUE(IsAll(*second, red));
    EXPECT_TRUE(IsAll(*first, nobodys));
}

TEST_F(UnfinishedPictureTest, RecordingAnythingElseFinishesThePictureFirst) {
    const auto image = BackImage();
    Execute(Fill(red));
    const auto texture = MakeTexture(4, 4, D3D11_BIND_RENDER_TARGET);  // recorded: it starts transparent
    EXPECT_FALSE(IsPutOff(image));
    graphics->Finish();
    EXPECT_TRUE(IsAll(*image, red));
}

TEST_F(UnfinishedPictureTest, ABufferThatIsWrittenAfterTheListKeepsItsBytesForThePictureAndHasTheNewOnesThen) {
    const auto image = BackImage();
    Execute(Fill(red));
    WriteColor(context.Get(), constants.Get(), ColorOf(green));
    graphics->AwaitPixels(image);
    EXPECT_TRUE(IsAll(*image, red));
    RecordFill(target.Get());
    Execute(Finish());
    graphics->AwaitPixels(image);
    EXPECT_TRUE(IsAll(*image, green));
}

TEST_F(UnfinishedPictureTest, AListThatDrawsOnWhatItHasNotClearedIsPlayedAtOnce) {
    const auto offscreen = MakeTexture(width, height, D3D11_BIND_RENDER_TARGET);
    WriteColor(deferred.Get(), constants.Get(), ColorOf(red));
    RecordFill(MakeTarget(offscreen.Get()).Get());
    RecordFill(target.Get());
    Execute(Finish());
    EXPECT_FALSE(IsPutOff(BackImage()));
    EXPECT_EQ(Pixel(buffer.Get(), 5, 5), red);
}

TEST_F(UnfinishedPictureTest, AListThatReadsWhatItClearsLaterIsPlayedAtOnce) {
    const auto offscreen = MakeTexture(width, height, D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE);
    const auto offscreenTarget = MakeTarget(offscreen.Get());
    ComPtr<ID3D11ShaderResourceView> view;
    ASSERT_EQ(device->CreateShaderResourceView(offscreen.Get(), nullptr, &view), S_OK);
    SetStrip(deferred.Get(), target.Get(), width, height);
    deferred->PSSetShader(MakePixelShader(Programs::constant).Get(), nullptr, 0);
    deferred->PSSetShaderResources(0, 1, view.GetAddressOf());
    deferred->Draw(4, 0);
    constexpr float black[4] = {0, 0, 0, 1};
    deferred->ClearRenderTargetView(offscreenTarget.Get(), black);
    deferred->Draw(4, 0);
    Execute(Finish());
    EXPECT_FALSE(IsPutOff(BackImage()));
}

TEST_F(UnfinishedPictureTest, AListThatDrawsOnAnotherSwapChainsBufferTooIsPlayedAtOnce) {
    DXGI_SWAP_CHAIN_DESC1 desc{};
    ASSERT_EQ(swapChain->GetDesc1(&desc), S_OK);
    const auto otherBuffer = BufferOf(MakeChain(desc).Get());
    const auto otherTarget = MakeTarget(otherBuffer.Get());
    constexpr float black[4] = {0, 0, 0, 1};
    deferred->ClearRenderTargetView(otherTarget.Get(), black);
    WriteColor(deferred.Get(), constants.Get(), ColorOf(red));
    RecordFill(otherTarget.Get());
    RecordFill(target.Get());
    Execute(Finish());
    EXPECT_FALSE(IsPutOff(BackImage()));
}

TEST_F(UnfinishedPictureTest, AListThatReadsASwapChainsBufferIsPlayedAtOnce) {
    DXGI_SWAP_CHAIN_DESC1 desc = SwapChainDescription(width, height);
    desc.BufferUsage |= DXGI_USAGE_SHADER_INPUT;
    const auto otherBuffer = BufferOf(MakeChain(desc).Get());
    ComPtr<ID3D11ShaderResourceView> view;
    ASSERT_EQ(device->CreateShaderResourceView(otherBuffer.Get(), nullptr, &view), S_OK);
    deferred->PSSetShaderResources(0, 1, view.GetAddressOf());
    RecordFill(target.Get());
    Execute(Finish());
    EXPECT_FALSE(IsPutOff(BackImage()));
}

TEST_F(UnfinishedPictureTest, AListThatComputesOrDrawsOnATextureOnlyIsPlayedAtOnce) {
    const auto texture = MakeTexture(width, height, D3D11_BIND_RENDER_TARGET);
    WriteColor(deferred.Get(), constants.Get(), ColorOf(red));
    RecordFill(MakeTarget(texture.Get()).Get());
    Execute(Finish());
    EXPECT_EQ(Pixel(texture.Get(), 5, 5), red);

    deferred->Dispatch(1, 1, 1);
    WriteColor(deferred.Get(), constants.Get(), ColorOf(red));
    RecordFill(target.Get());
    Execute(Finish());
    EXPECT_FALSE(IsPutOff(BackImage()));
}

TEST_F(UnfinishedPictureTest, ASwapChainIsResizedAfterItsPictureIsDrawn) {
    const auto image = BackImage();
    Execute(Fill(red));
    Present();
    target.Reset();
    buffer.Reset();
    ASSERT_EQ(
        swapChain->ResizeBuffers(0, 9, 5, DXGI_FORMAT_UNKNOWN, DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT),
        S_OK);
    graphics->Finish();
    EXPECT_TRUE(IsAll(*image, red));
}

TEST_F(UnfinishedPictureTest, WhatIsLaidOverThePictureComesBehindItsDrawing) {
    const auto image = BackImage();
    EXPECT_FALSE(graphics->AddToPicture(image, [] {})) << "There is none yet.";
    Execute(Fill(red));
    EXPECT_TRUE(graphics->AddToPicture(image, [&] {
        EXPECT_TRUE(IsAll(*image, red));
        *Row(*image, 7) = green;
    }));
    Present();
    EXPECT_FALSE(graphics->AddToPicture(BackImage(), [] {})) << "It is another buffer's.";
    graphics->AwaitPixels(image);
    EXPECT_EQ(*Row(*image, 7), green);
}

TEST_F(UnfinishedPictureTest, AStepThatFailsLeavesTheOthers) {
    const auto image = BackImage();
    Platform::Direct3D::UnfinishedPicture picture(image, {});
    picture.AddDrawing([] { throw std::bad_alloc(); });
    picture.AddDrawing([&] { *Row(*image, 0) = green; });
    graphics->PutOff(std::move(picture));
    EXPECT_TRUE(graphics->AwaitPixels(image));
    EXPECT_EQ(*Row(*image, 0), green);
}

TEST_F(UnfinishedPictureTest, ThatIsNeverDrawnKeepsNothingAlive) {
    Execute(Fill(red));
    // TearDown expects the device to go.
}

TEST_F(UnfinishedPictureTest, ThatWasGivenUpAndIsNeverDrawnKeepsNothingAlive) {
    GiveUpAFill(red);
}

}  // namespace
