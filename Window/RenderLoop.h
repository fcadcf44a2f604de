// A window's render thread. Everything in this file and in Render*.cpp runs on it, except where it says so.
#pragma once

#include "Background/BlitFrameRecord.h"
#include "Composition/DCompTree.h"
#include "Scene/BrushCache.h"
#include "Scene/InputRouter.h"
#include "Window/RenderCounters.h"
#include "Window/RenderSide.h"
#include "Window/WindowState.h"
#include "Window/WindowSurface.h"

#include <d3d11_4.h>
#include <windows.h>
#include <wrl/client.h>

#include <cstdint>
#include <memory>

namespace Tamborel {

class BackgroundRenderer;
class FrameChrome;
class RenderDevice;
class SceneNode;

/// Owns all that draws in a window: the device, both surfaces, the composition tree, the scene's roots and the
/// consumer's side of the input ring. A frame runs only as far as flags demand, so a window that stands still issues no
/// draw, present or commit; waits are on the surfaces' latency objects, so animation runs at the display's rate.
class RenderLoop final : public RenderSide {
public:
    /// Nanoseconds of a clock that never goes back.
    using Clock = std::int64_t (*)();
    static std::int64_t SteadyNanoseconds();

    explicit RenderLoop(const RenderSideSetup& setup, Clock clock = SteadyNanoseconds);
    ~RenderLoop() override;

    void Run() override;
    void SetBackground(BackgroundRenderer* renderer) override;
    std::shared_ptr<SceneNode> ClientRoot() override { return clientRoot_; }
    SIZE FrameSurfaceSize() const override { return frameSurface_ ? frameSurface_->GetSize() : SIZE{}; }

    void SetChromeTitle(const std::wstring& title) override;
    void SetChromeTheme(const ChromeTheme& theme) override;
    void SetChromeTitleImage(const std::shared_ptr<ImageAsset>& image) override;

    /// The title bar; null when it could not be made.
    std::shared_ptr<FrameChrome> Chrome() const { return chrome_; }

    /// The root on the frame surface, the chrome's parent.
    std::shared_ptr<SceneNode> FrameRoot() const { return frameRoot_; }

    // What Run is made of, for whoever drives the loop by hand: SetUp, then RenderFrame as long as it says so with
    // CountFrame after each, then TearDown.

    /// Makes everything. False after the first failure; nothing is undone then.
    [[nodiscard]] bool SetUp();
    /// One turn: waits for what it needs, then does what the flags ask for. False when it is time to stop.
    [[nodiscard]] bool RenderFrame();
    /// Within a size loop, tells the UI thread that a frame is finished.
    void CountFrame();
    /// Lets go of everything, backgrounds first and the device last. Harmless when repeated.
    void TearDown();

    /// For diagnosis; any thread may read.
    RenderCounters Counters;

private:
    // What one turn decides once and then sticks to.
    struct Turn {
        bool inSizeMove = false;
        bool animating = false;
        bool framePresented = false;
        bool clientPresented = false;
        float seconds = 0;
        float dpiScale = 1;
        bool zoomed = false;
        BlitFrameRecord record;
    };

    // RenderSetup.cpp
    bool SetUpSurfaces();
    bool SetUpDirect3D();
    void SetUpChrome();
    void SetUpFallbackBackground();
    HRESULT BuildTree(POINT clientOffset, SIZE outer, SIZE client);

    // RenderFrame.cpp
    void MarkAllDirty();
    BackgroundRenderer* ActiveBackground() const;
    bool ClientPassDue(const Turn& turn) const;
    bool WaitForTurn(const Turn& turn);
    bool WaitForSurface(const WindowSurface& surface) const;
    float AdvanceClock();
    void TakeResize();
    void ReadWindow(Turn& turn);
    HitTestMetrics ReadChrome(const Turn& turn);
    void WatchChanges(const Turn& turn);
    void BuildRecord(Turn& turn);
    void UpdateScene(const Turn& turn);
    void DrainInput();
    void AnimateScene(const Turn& turn);
    void CommitTurn(const Turn& turn);

    // RenderPasses.cpp
    void FramePass(Turn& turn);
    void ClientPass(Turn& turn);
    bool DrawBackground(BlitFrameRecord& record);
    void DrawClientScene(const Turn& turn);
    void ReadBack();

    HWND window_;
    WindowState& state_;
    const std::atomic<bool>& stopRequested_;
    HANDLE stopEvent_;
    std::function<void(bool)> ready_;
    Clock clock_;

    // In the order of making: what comes later goes first.
    std::unique_ptr<RenderDevice> device_;
    DCompTree tree_;
    std::unique_ptr<WindowSurface> frameSurface_;
    std::unique_ptr<WindowSurface> clientSurface_;
    Microsoft::WRL::ComPtr<ID3D11Texture2D> stagingTexture_;  // 1 by 1, for the read-back
    Microsoft::WRL::ComPtr<ID3D11DeviceContext4> deferredContext_;
    BrushCache clientCache_;
    BrushCache frameCache_;
    std::shared_ptr<SceneNode> clientRoot_;
    std::shared_ptr<SceneNode> frameRoot_;
    std::shared_ptr<FrameChrome> chrome_;
    std::wstring title_;  // what the chrome is made with
    InputRouter router_;
    std::unique_ptr<BackgroundRenderer> fallback_;
    BackgroundRenderer* background_ = nullptr;  // the application's, not owned

    bool clientVisible_ = true;  // the client area has a size
    // The client surface's permit was taken and no frame has used it since: its wait would never end.
    bool clientPermitHeld_ = false;
    POINT clientOffset_{0, 0};     // the one in force, pixels
    std::int32_t lastHover_ = -2;  // zones seen last frame; -2 is none that exists
    std::int32_t lastPressed_ = -2;
    bool lastZoomed_ = false;
    bool lastInSizeMove_ = false;
    bool hasTime_ = false;
    std::int64_t lastTime_ = 0;  // nanoseconds
    float time_ = 0;             // seconds since the loop began
};

}  // namespace Tamborel
