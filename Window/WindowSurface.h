// One swap chain of a window and the two ways to draw into it. Render thread only.
#pragma once

#include <d2d1_3.h>
#include <d3d11_4.h>
#include <dcomp.h>
#include <dxgi1_6.h>
#include <windows.h>
#include <wrl/client.h>

namespace Tamborel {

class RenderDevice;

/// A swap chain for composition, bound to one visual of the window's tree, with a Direct2D target and a Direct3D view
/// on the same back buffer. One Direct2D unit is one physical pixel: the display's scale comes in through the scene's
/// transforms. A window has two of them, the frame with alpha and the opaque client.
///
/// Within a frame the order is BeginDraw, drawing, EndDraw, Present. No lock: a surface belongs to its render thread.
class WindowSurface {
public:
    WindowSurface() = default;
    ~WindowSurface() { Release(); }
    WindowSurface(const WindowSurface&) = delete;
    WindowSurface& operator=(const WindowSurface&) = delete;

    /// Makes the swap chain and shows it in `visual`. `renderDevice` must outlive the surface or its Release. `size` is
    /// in physical pixels; `alphaMode` a DXGI_ALPHA_MODE: premultiplied (1) or ignore (3). Failures are reported.
    [[nodiscard]] HRESULT Initialize(Tamborel::RenderDevice& renderDevice, SIZE size, UINT alphaMode,
                                     IDCompositionVisual* visual);

    /// Makes the target bitmap and the view of the current back buffer. E_FAIL, unreported, without a device.
    [[nodiscard]] HRESULT CreateBuffers();

    /// Gives the buffers a new size in pixels; the size already held is left as it is. After a failure the surface
    /// holds the new size and no target. Before Initialize it takes the size and is E_FAIL, unreported: that is enough
    /// of a surface for a chrome that is drawn elsewhere.
    HRESULT Resize(SIZE newSize);

    /// Opens the pass on the context. Always S_OK.
    HRESULT BeginDraw();
    /// Closes the pass and takes the target off the context, so that nothing holds the back buffer. A failure of the
    /// platform is logged and returned.
    HRESULT EndDraw();
    /// Hands the finished buffer to the visual. The result is dropped.
    void Present(UINT syncInterval);
    /// What starts anew with each pass.
    void ResetFrameState();
    /// Lets go of everything. Harmless on an empty surface.
    void Release();

    /// Null before Initialize. No reference is added.
    ID2D1DeviceContext5* GetDC() const { return DC.Get(); }
    /// The view of the back buffer for Direct3D. No reference is added.
    ID3D11RenderTargetView* GetRTV() const { return RTV.Get(); }
    /// No reference is added.
    IDXGISwapChain2* GetSwapChain() const { return SwapChain.Get(); }
    /// Satisfied once a frame may start. The surface closes it.
    HANDLE GetFrameLatencyWaitable() const { return FrameLatencyWaitable; }
    /// In physical pixels.
    SIZE GetSize() const { return Size; }
    /// Multiplier for painted colours, always 1 so far.
    float GetSdrWhiteScale() const { return SdrWhiteScale; }
    /// True between BeginDraw and EndDraw.
    bool GetIsDrawing() const { return IsDrawing; }

private:
    void ApplyColorSpace();

    // The names stand in the failure reports, which quote the failing expression.
    Tamborel::RenderDevice* RenderDevice = nullptr;
    Microsoft::WRL::ComPtr<IDXGISwapChain2> SwapChain;
    // The device hands out the newest context under its oldest name.
    Microsoft::WRL::ComPtr<ID2D1DeviceContext5> DC;
    Microsoft::WRL::ComPtr<ID2D1Bitmap1> TargetBitmap;
    Microsoft::WRL::ComPtr<ID3D11RenderTargetView> RTV;
    HANDLE FrameLatencyWaitable = nullptr;
    SIZE Size{0, 0};
    UINT AlphaMode = DXGI_ALPHA_MODE_IGNORE;
    bool IsDrawing = false;
    float SdrWhiteScale = 1.0F;
};

}  // namespace Tamborel
