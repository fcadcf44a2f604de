// Frames the way the render loop makes them: RecordDraw, then the list is played on the immediate context under a lock,
// which is what RenderDevice::ExecuteImmediateCommandList does. RenderDevice itself would bring the devices of Direct2D
// and DirectComposition with it, which take no part here.
#pragma once

#include "Background/BackgroundRenderer.h"
#include "Scenario.h"

#include <wrl/client.h>

#include <mutex>

namespace BackgroundBench {

/// Throws std::runtime_error with the call's name where one fails.
class ToolkitLoop {
public:
    ToolkitLoop();

    /// Sets the renderer up for frames of this kind and size.
    void Prepare(const Scenario& scenario);

    /// Draws one frame and waits until the device is done with it.
    void DrawFrame();

private:
    template <class Interface>
    using ComPtr = Microsoft::WRL::ComPtr<Interface>;

    ComPtr<ID3D11Device> device_;
    ComPtr<ID3D11DeviceContext> immediate_;
    std::mutex mutex_;
    Tamborel::BackgroundRenderer renderer_;
    ComPtr<ID3D11DeviceContext> deferred_;
    ComPtr<ID3D11Texture2D> image_;
    ComPtr<ID3D11RenderTargetView> view_;
    ComPtr<ID3D11Texture2D> fence_;  // mapping it waits for the device
    Tamborel::SurfaceTarget surface_;
    Tamborel::BlitFrameRecord record_;
    float time_ = 0.0F;
};

}  // namespace BackgroundBench
