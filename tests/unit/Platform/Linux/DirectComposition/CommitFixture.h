// A window with two swap chains under one tree, from present to screen.
#pragma once

#include "PresenterFixture.h"

#include "tests/support/SwapChainDescription.h"

#include <d3d11_4.h>
#include <dcomp.h>

#include <array>

/// A colour of Direct3D, and pixels as a display gives them back.
namespace CommitColors {
using Color = std::array<float, 4>;
inline constexpr Color red{1, 0, 0, 1};
inline constexpr Color blue{0, 0, 1, 1};
inline constexpr Color nothing{0, 0, 0, 0};
inline constexpr std::uint32_t redPixel = 0x00FF0000;
inline constexpr std::uint32_t greenPixel = 0x0000FF00;
inline constexpr std::uint32_t bluePixel = 0x000000FF;
inline constexpr std::uint32_t whitePixel = 0x00FFFFFF;
}  // namespace CommitColors

/// A window with a frame, which covers its left half, over a client of the window's size.
class CommitTest : public PresenterTest {
protected:
    void SetUp() override {
        PresenterTest::SetUp();
        Make();
        Microsoft::WRL::ComPtr<ID3D11Device> device;
        ASSERT_EQ(D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, D3D11_CREATE_DEVICE_BGRA_SUPPORT,
                                    nullptr, 0, D3D11_SDK_VERSION, &device, nullptr, &context_),
                  S_OK);
        ASSERT_EQ(device.As(&device_), S_OK);
        ASSERT_EQ(CreateDXGIFactory2(0, IID_PPV_ARGS(&factory_)), S_OK);
        ASSERT_EQ(DCompositionCreateDevice2(device.Get(), IID_PPV_ARGS(&composition_)), S_OK);
        ASSERT_EQ(composition_->CreateTargetForHwnd(window_, TRUE, &target_), S_OK);
        Microsoft::WRL::ComPtr<IDCompositionVisual2> root;
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
        Microsoft::WRL::ComPtr<IDCompositionVisual2> visual;
        Microsoft::WRL::ComPtr<IDXGISwapChain2> chain;
    };

    SwapChainLayer MakeLayer(IDCompositionVisual2* root, UINT width, DXGI_ALPHA_MODE alphaMode) {
        const DXGI_SWAP_CHAIN_DESC1 desc = SwapChainDescription(width, windowHeight, alphaMode);
        SwapChainLayer layer;
        Microsoft::WRL::ComPtr<IDXGISwapChain1> chain;
        EXPECT_EQ(factory_->CreateSwapChainForComposition(device_.Get(), &desc, nullptr, &chain), S_OK);
        EXPECT_EQ(chain.As(&layer.chain), S_OK);
        EXPECT_EQ(composition_->CreateVisual(&layer.visual), S_OK);
        EXPECT_EQ(layer.visual->SetContent(layer.chain.Get()), S_OK);
        EXPECT_EQ(root->AddVisual(layer.visual.Get(), FALSE, nullptr), S_OK);
        return layer;
    }

    void Present(const SwapChainLayer& layer, const CommitColors::Color& color) {
        Microsoft::WRL::ComPtr<ID3D11Texture2D> buffer;
        Microsoft::WRL::ComPtr<ID3D11RenderTargetView> view;
        EXPECT_EQ(layer.chain->GetBuffer(0, IID_PPV_ARGS(&buffer)), S_OK);
        EXPECT_EQ(device_->CreateRenderTargetView(buffer.Get(), nullptr, &view), S_OK);
        context_->ClearRenderTargetView(view.Get(), color.data());
        Present(layer);
    }

    static void Present(const SwapChainLayer& layer) {
        constexpr DXGI_PRESENT_PARAMETERS plain{};
        EXPECT_EQ(layer.chain->Present1(1, 0, &plain), S_OK);
    }

    std::uint32_t PixelAt(int x, int y) const { return ShownPart(x, y, 1, 1).At(0, 0); }
    std::uint32_t Left() const { return PixelAt(10, 10); }
    std::uint32_t Right() const { return PixelAt(windowWidth - 10, 10); }

    Microsoft::WRL::ComPtr<ID3D11Device5> device_;
    Microsoft::WRL::ComPtr<ID3D11DeviceContext> context_;
    Microsoft::WRL::ComPtr<IDXGIFactory7> factory_;
    Microsoft::WRL::ComPtr<IDCompositionDesktopDevice> composition_;
    Microsoft::WRL::ComPtr<IDCompositionTarget> target_;
    SwapChainLayer client_;
    SwapChainLayer frame_;
};
