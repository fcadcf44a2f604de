#include "Window/WindowSurface.h"

#include "Core/Check.h"
#include "Core/DeviceManager.h"
#include "Core/Log.h"
#include "Core/RenderDevice.h"

using Microsoft::WRL::ComPtr;

namespace Tamborel {

namespace {

constexpr UINT kBufferCount = 2;
constexpr float kDpi = 96.0F;  // one unit is one pixel

DXGI_SWAP_CHAIN_DESC1 SwapChainDescription(SIZE size, UINT alphaMode) {
    DXGI_SWAP_CHAIN_DESC1 desc{};
    desc.Width = static_cast<UINT>(size.cx);
    desc.Height = static_cast<UINT>(size.cy);
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.Stereo = FALSE;
    desc.SampleDesc.Count = 1;
    desc.SampleDesc.Quality = 0;
    desc.BufferUsage = DXGI_USAGE_RENDER_TARGET_OUTPUT;
    desc.BufferCount = kBufferCount;
    desc.Scaling = DXGI_SCALING_STRETCH;
    desc.SwapEffect = DXGI_SWAP_EFFECT_FLIP_SEQUENTIAL;
    desc.AlphaMode = static_cast<DXGI_ALPHA_MODE>(alphaMode);
    desc.Flags = DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT;
    return desc;
}

D2D1_BITMAP_PROPERTIES1 TargetProperties(UINT alphaMode) {
    D2D1_BITMAP_PROPERTIES1 properties{};
    properties.pixelFormat.format = DXGI_FORMAT_B8G8R8A8_UNORM;
    properties.pixelFormat.alphaMode =
        alphaMode == DXGI_ALPHA_MODE_IGNORE ? D2D1_ALPHA_MODE_IGNORE : D2D1_ALPHA_MODE_PREMULTIPLIED;
    properties.dpiX = kDpi;
    properties.dpiY = kDpi;
    properties.bitmapOptions = D2D1_BITMAP_OPTIONS_TARGET | D2D1_BITMAP_OPTIONS_CANNOT_DRAW;
    properties.colorContext = nullptr;
    return properties;
}

}  // namespace

// The checks quote their expression: a line break in it is a blank in the report.
// clang-format off

HRESULT WindowSurface::Initialize(Tamborel::RenderDevice& renderDevice, SIZE size, UINT alphaMode,
                                  IDCompositionVisual* visual) {
    RenderDevice = &renderDevice;
    Size = size;
    AlphaMode = alphaMode;

    const DXGI_SWAP_CHAIN_DESC1 desc = SwapChainDescription(size, alphaMode);
    ComPtr<IDXGISwapChain1> swapChain1;
    TAMBOREL_CHECK(DeviceManager::Get().GetDXGIFactory()->CreateSwapChainForComposition(
        renderDevice.GetD3DDevice(), &desc, nullptr, &swapChain1));
    TAMBOREL_CHECK(swapChain1.As(&SwapChain));
    ApplyColorSpace();
    TAMBOREL_CHECK(SwapChain->SetMaximumFrameLatency(1));
    FrameLatencyWaitable = SwapChain->GetFrameLatencyWaitableObject();
    DC.Reset();
    TAMBOREL_CHECK(renderDevice.GetD2DDevice()->CreateDeviceContext(
        D2D1_DEVICE_CONTEXT_OPTIONS_NONE, reinterpret_cast<ID2D1DeviceContext**>(DC.GetAddressOf())));
    TAMBOREL_CHECK(visual->SetContent(SwapChain.Get()));
    TAMBOREL_CHECK(CreateBuffers());
    ResetFrameState();
    return S_OK;
}

HRESULT WindowSurface::CreateBuffers() {
    if (!RenderDevice) return E_FAIL;

    ComPtr<IDXGISurface2> dxgiSurface;
    TAMBOREL_CHECK(SwapChain->GetBuffer(0, IID_PPV_ARGS(&dxgiSurface)));
    const D2D1_BITMAP_PROPERTIES1 bmpProps = TargetProperties(AlphaMode);
    TAMBOREL_CHECK(DC->CreateBitmapFromDxgiSurface(
        dxgiSurface.Get(), &bmpProps, &TargetBitmap));

    ComPtr<ID3D11Texture2D> backBuf;
    TAMBOREL_CHECK(SwapChain->GetBuffer(0, IID_PPV_ARGS(&backBuf)));
    TAMBOREL_CHECK(RenderDevice->GetD3DDevice()->CreateRenderTargetView(backBuf.Get(), nullptr, &RTV));
    return S_OK;
}

HRESULT WindowSurface::Resize(SIZE newSize) {
    if (newSize.cx == Size.cx && newSize.cy == Size.cy) return S_OK;
    Size = newSize;
    // ResizeBuffers fails while anyone holds the back buffer. The context doesn't: EndDraw cleared its target.
    RTV.Reset();
    TargetBitmap.Reset();
    if (!SwapChain) return E_FAIL;
    TAMBOREL_CHECK(SwapChain->ResizeBuffers(
        0, static_cast<UINT>(newSize.cx), static_cast<UINT>(newSize.cy),
        DXGI_FORMAT_UNKNOWN, DXGI_SWAP_CHAIN_FLAG_FRAME_LATENCY_WAITABLE_OBJECT));
    ApplyColorSpace();
    TAMBOREL_CHECK(CreateBuffers());
    ResetFrameState();
    return S_OK;
}

// clang-format on

// Plain sRGB, said out loud where the platform can be told. Without it the surface works as well.
void WindowSurface::ApplyColorSpace() {
    ComPtr<IDXGISwapChain3> swapChain3;
    if (FAILED(SwapChain.As(&swapChain3))) return;
    UINT support = 0;
    if (FAILED(swapChain3->CheckColorSpaceSupport(DXGI_COLOR_SPACE_RGB_FULL_G22_NONE_P709, &support))) return;
    if ((support & DXGI_SWAP_CHAIN_COLOR_SPACE_SUPPORT_FLAG_PRESENT) == 0) return;
    (void)swapChain3->SetColorSpace1(DXGI_COLOR_SPACE_RGB_FULL_G22_NONE_P709);
}

HRESULT WindowSurface::BeginDraw() {
    ResetFrameState();
    DC->SetTarget(TargetBitmap.Get());
    DC->BeginDraw();
    IsDrawing = true;
    return S_OK;
}

HRESULT WindowSurface::EndDraw() {
    const HRESULT hr = DC->EndDraw(nullptr, nullptr);
    DC->SetTarget(nullptr);
    IsDrawing = false;
    if (FAILED(hr)) Logf("[WindowSurface] EndDraw failed: hr=0x%08X\n", static_cast<unsigned>(hr));
    return hr;
}

void WindowSurface::Present(UINT syncInterval) {
    const DXGI_PRESENT_PARAMETERS parameters{};
    (void)SwapChain->Present1(syncInterval, 0, &parameters);
}

void WindowSurface::ResetFrameState() {
    SdrWhiteScale = 1.0F;
    IsDrawing = false;
}

void WindowSurface::Release() {
    RTV.Reset();
    TargetBitmap.Reset();
    if (FrameLatencyWaitable) {
        CloseHandle(FrameLatencyWaitable);
        FrameLatencyWaitable = nullptr;
    }
    SwapChain.Reset();
    DC.Reset();
    RenderDevice = nullptr;
    ResetFrameState();
}

}  // namespace Tamborel
