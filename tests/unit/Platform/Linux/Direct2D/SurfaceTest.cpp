// Drawing that ends up in a Direct3D surface, by way of Vulkan and under the eyes of its validation layer.

#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/Direct3D/Instance.h"
#include "Platform/Linux/Direct3D/SurfaceAccess.h"
#include "tests/support/SwapChainDescription.h"

#include <d2d1_3.h>
#include <d3d11_4.h>
#include <dxgi1_6.h>
#include <wrl/client.h>

#include <gtest/gtest.h>

namespace {

using Microsoft::WRL::ComPtr;
namespace Direct3D = Platform::Direct3D;

constexpr UINT waitable = DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT;
constexpr UINT width = 16;
constexpr UINT height = 8;

class Direct2DSurface : public testing::Test {
protected:
    void SetUp() override {
        static const bool isValidating = Direct3D::EnableValidation();
        ASSERT_TRUE(isValidating) << "The package vulkan-validationlayers is missing.";
        messagesBefore_ = Direct3D::ValidationMessages();
        constexpr D3D_FEATURE_LEVEL levels[] = {D3D_FEATURE_LEVEL_11_1, D3D_FEATURE_LEVEL_11_0};
        ASSERT_EQ(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, D3D11_CREATE_DEVICE_BGRA_SUPPORT,
                                    levels, 2, D3D11_SDK_VERSION, &device_, nullptr, &immediate_),
                  S_OK);
        ComPtr<IDXGIDevice3> dxgiDevice;
        ASSERT_EQ(device_.As(&dxgiDevice), S_OK);
        ASSERT_EQ(CreateDXGIFactory2(0, IID_PPV_ARGS(&dxgiFactory_)), S_OK);
        const DXGI_SWAP_CHAIN_DESC1 desc = SwapChainDescription(width, height);
        ASSERT_EQ(dxgiFactory_->CreateSwapChainForComposition(device_.Get(), &desc, nullptr, &swapChain_), S_OK);
        D2D1_FACTORY_OPTIONS options{};
        ASSERT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, options, factory_.GetAddressOf()), S_OK);
        ASSERT_EQ(factory_->CreateDevice(dxgiDevice.Get(), &d2dDevice_), S_OK);
        ASSERT_EQ(d2dDevice_->CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS_NONE,
                                                  reinterpret_cast<ID2D1DeviceContext**>(context_.GetAddressOf())),
                  S_OK);
        MakeTarget();
    }

    void TearDown() override {
        target_.Reset();
        texture_.Reset();
        context_.Reset();
        d2dDevice_.Reset();
        factory_.Reset();
        swapChain_.Reset();
        dxgiFactory_.Reset();
        immediate_.Reset();
        EXPECT_EQ(device_.Reset(), 0U) << "Somebody still holds the device.";
        EXPECT_EQ(Direct3D::ValidationMessages(), messagesBefore_);
    }

    /// Draws on a texture from here on, not on the swap chain's buffers.
    void UseTexture() {
        D3D11_TEXTURE2D_DESC desc{};
        desc.Width = width;
        desc.Height = height;
        desc.MipLevels = desc.ArraySize = desc.SampleDesc.Count = 1;
        desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
        desc.BindFlags = D3D11_BIND_RENDER_TARGET;
        ASSERT_EQ(device_->CreateTexture2D(&desc, nullptr, &texture_), S_OK);
        target_.Reset();
        MakeTarget();
    }

    ComPtr<IDXGISurface> Surface() {
        ComPtr<IDXGISurface> surface;
        if (texture_) {
            EXPECT_EQ(texture_.As(&surface), S_OK);
        } else {
            EXPECT_EQ(swapChain_->GetBuffer(0, IID_PPV_ARGS(&surface)), S_OK);
        }
        return surface;
    }

    void MakeTarget() {
        const ComPtr<IDXGISurface> surface = Surface();
        const D2D1_BITMAP_PROPERTIES1 properties =
            D2D1::BitmapProperties1(D2D1_BITMAP_OPTIONS_TARGET | D2D1_BITMAP_OPTIONS_CANNOT_DRAW,
                                    D2D1::PixelFormat(DXGI_FORMAT_B8G8R8A8_UNORM, D2D1_ALPHA_MODE_PREMULTIPLIED));
        ASSERT_EQ(context_->CreateBitmapFromDxgiSurface(surface.Get(), &properties, &target_), S_OK);
    }

    template <class Function>
    HRESULT Draw(Function draw) {
        context_->SetTarget(target_.Get());
        context_->BeginDraw();
        draw(*context_.Get());
        const HRESULT result = context_->EndDraw();
        context_->SetTarget(nullptr);
        return result;
    }

    void FillRectangle(ID2D1DeviceContext& context, const D2D1_RECT_F& rect, const D2D1_COLOR_F& color) {
        ComPtr<ID2D1SolidColorBrush> brush;
        ASSERT_EQ(context.CreateSolidColorBrush(color, &brush), S_OK);
        context.FillRectangle(rect, brush.Get());
    }

    /// 0xAARRGGBB of the back buffer.
    std::uint32_t Pixel(UINT x, UINT y) {
        const ComPtr<IDXGISurface> surface = Surface();
        std::uint32_t pixel = 0;
        Direct3D::GraphicsDevice::From(surface.Get())
            ->ReadBack(Direct3D::TextureOf(surface.Get()), {x, y, 1, 1}, &pixel, sizeof pixel);
        return pixel;
    }

    void ClearByDirect3D(const float (&color)[4]) {
        ComPtr<ID3D11Resource> image = texture_;
        if (!image) {
            ASSERT_EQ(swapChain_->GetBuffer(0, IID_PPV_ARGS(&image)), S_OK);
        }
        ComPtr<ID3D11RenderTargetView> view;
        ASSERT_EQ(device_->CreateRenderTargetView(image.Get(), nullptr, &view), S_OK);
        immediate_->ClearRenderTargetView(view.Get(), color);
    }

    ComPtr<ID3D11Device> device_;
    ComPtr<ID3D11DeviceContext> immediate_;
    ComPtr<IDXGIFactory7> dxgiFactory_;
    ComPtr<IDXGISwapChain1> swapChain_;
    ComPtr<ID3D11Texture2D> texture_;  ///< Null: the swap chain is drawn on.
    ComPtr<ID2D1Factory3> factory_;
    ComPtr<ID2D1Device2> d2dDevice_;
    ComPtr<ID2D1DeviceContext> context_;
    ComPtr<ID2D1Bitmap1> target_;
    std::uint64_t messagesBefore_ = 0;
};

/// On a software device a swap chain's buffers are drawn on in place, all else by the device.
class Direct2DAnySurface : public Direct2DSurface, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        Direct2DSurface::SetUp();
        if (GetParam()) UseTexture();
    }
};
INSTANTIATE_TEST_SUITE_P(BufferAndTexture, Direct2DAnySurface, testing::Bool());

TEST_F(Direct2DSurface, ABufferOfASoftwareDevicesSwapChainIsDrawnOnInPlace) {
    const auto device = Direct3D::GraphicsDevice::From(Surface().Get());
    EXPECT_EQ(Direct3D::TextureOf(Surface().Get())->Pixels() != nullptr, device->IsSoftware());
    UseTexture();
    EXPECT_EQ(Direct3D::TextureOf(Surface().Get())->Pixels(), nullptr);
}

TEST_P(Direct2DAnySurface, TargetHasTheSurfacesSize) {
    EXPECT_EQ(target_->GetPixelSize().width, width);
    EXPECT_EQ(target_->GetPixelSize().height, height);
}

TEST_P(Direct2DAnySurface, ClearFillsWithThePremultipliedColour) {
    EXPECT_EQ(Draw([](auto& context) { context.Clear(D2D1::ColorF(1, 0, 0, 0.5F)); }), S_OK);
    EXPECT_NEAR(static_cast<double>(Pixel(3, 3) >> 24), 128, 1);
    EXPECT_NEAR(static_cast<double>(Pixel(3, 3) >> 16 & 0xFF), 128, 1);
    EXPECT_EQ(Pixel(3, 3) & 0xFFFF, 0U);
}

TEST_P(Direct2DAnySurface, DrawingLiesOverWhatDirect3DDrew) {
    ClearByDirect3D({0.0F, 0.0F, 1.0F, 1.0F});
    EXPECT_EQ(Draw([&](auto& context) {
                  FillRectangle(context, D2D1::RectF(2, 1, 6, 4), D2D1::ColorF(1, 0, 0));
                  FillRectangle(context, D2D1::RectF(8, 1, 12, 4), D2D1::ColorF(0, 1, 0, 0.5F));
              }),
              S_OK);
    EXPECT_EQ(Pixel(0, 0), 0xFF0000FF);
    EXPECT_EQ(Pixel(2, 1), 0xFFFF0000);
    EXPECT_EQ(Pixel(5, 3), 0xFFFF0000);
    EXPECT_EQ(Pixel(6, 3), 0xFF0000FF);
    const std::uint32_t blended = Pixel(9, 2);
    EXPECT_EQ(blended >> 24, 0xFFU);
    EXPECT_NEAR(static_cast<double>(blended >> 8 & 0xFF), 128, 1);
    EXPECT_NEAR(static_cast<double>(blended & 0xFF), 127, 1);
}

TEST_P(Direct2DAnySurface, EachDrawingLiesOverWhatDirect3DDrewLast) {
    const auto draw = [&](ID2D1DeviceContext& context) {
        FillRectangle(context, D2D1::RectF(2, 1, 6, 4), D2D1::ColorF(1, 0, 0));
    };
    for (const std::uint32_t below : {0xFF0000FFU, 0xFF00FF00U, 0xFFFFFFFFU}) {
        const auto part = [below](int shift) { return static_cast<float>(below >> shift & 0xFF) / 255.0F; };
        ClearByDirect3D({part(16), part(8), part(0), 1.0F});
        EXPECT_EQ(Draw(draw), S_OK);
        EXPECT_EQ(Pixel(0, 0), below);
        EXPECT_EQ(Pixel(3, 2), 0xFFFF0000);
    }
}

TEST_F(Direct2DSurface, EqualFrameIsLaidOnTheOtherBufferToo) {
    const auto draw = [&](ID2D1DeviceContext& context) {
        context.Clear();
        FillRectangle(context, D2D1::RectF(2, 1, 6, 4), D2D1::ColorF(1, 0, 0));
    };
    constexpr DXGI_PRESENT_PARAMETERS plain{};
    for (int frame = 0; frame < 3; ++frame) {
        EXPECT_EQ(Draw(draw), S_OK);
        EXPECT_EQ(Pixel(3, 2), 0xFFFF0000) << "frame " << frame;
        EXPECT_EQ(Pixel(7, 2), 0U) << "frame " << frame;
        EXPECT_EQ(swapChain_->Present1(1, 0, &plain), S_OK);
    }
}

TEST_P(Direct2DAnySurface, ChangedPartReplacesWhatWasThere) {
    const auto frame = [&](float left) {
        return Draw([&](auto& context) {
            context.Clear();
            FillRectangle(context, D2D1::RectF(left, 0, left + 2, 2), D2D1::ColorF(1, 1, 1));
            FillRectangle(context, D2D1::RectF(0, 6, 2, 8), D2D1::ColorF(0, 1, 0));
        });
    };
    EXPECT_EQ(frame(0), S_OK);
    EXPECT_EQ(frame(10), S_OK);
    EXPECT_EQ(Pixel(0, 0), 0U);
    EXPECT_EQ(Pixel(10, 0), 0xFFFFFFFF);
    EXPECT_EQ(Pixel(1, 7), 0xFF00FF00);
}

TEST_F(Direct2DSurface, SwapChainCanBeResizedOnceTheTargetIsGone) {
    EXPECT_EQ(Draw([&](auto& context) { FillRectangle(context, D2D1::RectF(0, 0, 4, 4), D2D1::ColorF(1, 1, 1)); }),
              S_OK);
    EXPECT_EQ(swapChain_->ResizeBuffers(0, 32, 24, DXGI_FORMAT_UNKNOWN, waitable), DXGI_ERROR_INVALID_CALL);
    target_.Reset();
    EXPECT_EQ(swapChain_->ResizeBuffers(0, 32, 24, DXGI_FORMAT_UNKNOWN, waitable), S_OK);
    MakeTarget();
    EXPECT_EQ(target_->GetPixelSize().width, 32U);
    EXPECT_EQ(Draw([&](auto& context) {
                  context.Clear();
                  FillRectangle(context, D2D1::RectF(30, 22, 32, 24), D2D1::ColorF(1, 1, 1));
              }),
              S_OK);
    EXPECT_EQ(Pixel(31, 23), 0xFFFFFFFF);
}

/// A picture of one colour below the drawing, as a software device puts it off.
class Direct2DPutOffSurface : public Direct2DSurface {
protected:
    void SetUp() override {
        Direct2DSurface::SetUp();
        if (HasFatalFailure()) return;
        graphics_ = Direct3D::GraphicsDevice::From(Surface().Get());
        if (!graphics_->IsSoftware()) GTEST_SKIP() << "On hardware no picture is put off.";
    }
    void TearDown() override {
        graphics_.reset();
        Direct2DSurface::TearDown();
    }

    std::shared_ptr<Direct3D::Texture> Image() { return Direct3D::TextureOf(Surface().Get()); }

    /// Puts off filling the back buffer.
    void PutOffFill(std::uint32_t pixel) {
        const auto image = Image();
        graphics_->AwaitPixels(image);
        Direct3D::UnfinishedPicture picture(image, {});
        picture.AddDrawing([image, pixel] {
            for (UINT y = 0; y < height; ++y) {
                auto* const row = reinterpret_cast<std::uint32_t*>(image->Pixels() + y * image->Stride());
                for (UINT x = 0; x < width; ++x) row[x] = pixel;
            }
        });
        graphics_->PutOff(std::move(picture));
    }

    HRESULT DrawSquare(float left, const D2D1_COLOR_F& color) {
        return Draw([&](auto& context) { FillRectangle(context, D2D1::RectF(left, 0, left + 2, 2), color); });
    }

    static std::uint32_t PixelOf(const Direct3D::Texture& image, UINT x) {
        return reinterpret_cast<const std::uint32_t*>(image.Pixels())[x];
    }

    std::shared_ptr<Direct3D::GraphicsDevice> graphics_;
};

TEST_F(Direct2DPutOffSurface, ADrawingOverAPictureThatIsPutOffIsPutOffToo) {
    const auto image = Image();
    PutOffFill(0xFF0000FF);
    EXPECT_EQ(DrawSquare(4, D2D1::ColorF(1, 0, 0)), S_OK);
    EXPECT_TRUE(graphics_->IsPutOff(*image));
    graphics_->AwaitPixels(image);
    EXPECT_EQ(PixelOf(*image, 3), 0xFF0000FFU);
    EXPECT_EQ(PixelOf(*image, 4), 0xFFFF0000U);
}

TEST_F(Direct2DPutOffSurface, TheNextDrawingDoesNotChangeAPictureThatIsStillPutOff) {
    const auto image = Image();
    PutOffFill(0xFF0000FF);
    EXPECT_EQ(DrawSquare(4, D2D1::ColorF(1, 0, 0)), S_OK);
    constexpr DXGI_PRESENT_PARAMETERS plain{};
    EXPECT_EQ(swapChain_->Present1(1, 0, &plain), S_OK);
    EXPECT_TRUE(graphics_->IsPutOff(*image));
    EXPECT_EQ(DrawSquare(4, D2D1::ColorF(0, 1, 0)), S_OK);
    graphics_->AwaitPixels(image);
    EXPECT_EQ(PixelOf(*image, 4), 0xFFFF0000U);
    EXPECT_EQ(Pixel(4, 0), 0xFF00FF00U) << "of the other buffer";
}

TEST_F(Direct2DPutOffSurface, ATargetThatGoesLeavesItsDrawingToThePicture) {
    const auto image = Image();
    PutOffFill(0xFF0000FF);
    EXPECT_EQ(DrawSquare(4, D2D1::ColorF(1, 0, 0)), S_OK);
    target_.Reset();
    EXPECT_FALSE(graphics_->IsPutOff(*image));
    EXPECT_EQ(PixelOf(*image, 4), 0xFFFF0000U);
}

TEST_F(Direct2DPutOffSurface, AClearIsPutOffWithTheColourItHad) {
    const auto image = Image();
    PutOffFill(0xFF0000FF);
    EXPECT_EQ(Draw([](auto& context) { context.Clear(D2D1::ColorF(1, 1, 1)); }), S_OK);
    EXPECT_TRUE(graphics_->IsPutOff(*image));
    graphics_->AwaitPixels(image);
    EXPECT_EQ(PixelOf(*image, 0), 0xFFFFFFFFU);
}

}  // namespace
