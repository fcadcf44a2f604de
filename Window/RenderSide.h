// What FrameWindow knows of its render thread: the seam at which tests put a stand-in without a graphics device.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>

namespace Tamborel {

class BackgroundRenderer;
class ImageAsset;
class SceneNode;
struct ChromeTheme;
struct WindowState;

/// The render thread's work. Made, used and destroyed on the render thread.
class RenderSide {
public:
    RenderSide() = default;
    virtual ~RenderSide() = default;
    RenderSide(const RenderSide&) = delete;
    RenderSide& operator=(const RenderSide&) = delete;

    /// Sets up, reports once through `ready`, draws frames until stopped and cleans up. Runs the posted closures, and
    /// only within them the operations below may be called.
    virtual void Run() = 0;

    /// Takes another background, not owned, null for none; the one before gives up its device resources. One that can't
    /// be initialised is logged and not taken.
    virtual void SetBackground(BackgroundRenderer* renderer) = 0;

    /// The root of the scene on the client surface.
    virtual std::shared_ptr<SceneNode> ClientRoot() = 0;

    /// Size in pixels of the surface that covers the whole window, 0 by 0 while there is none. Also within the frame's
    /// walks of the scene.
    virtual SIZE FrameSurfaceSize() const { return {}; }

    // What the title bar and frame are to show. A render side without a chrome has no use for it.
    virtual void SetChromeTitle(const std::wstring&) {}
    virtual void SetChromeTheme(const ChromeTheme&) {}
    virtual void SetChromeTitleImage(const std::shared_ptr<ImageAsset>&) {}
};

/// What a RenderSide is given. All of it outlives the RenderSide.
struct RenderSideSetup {
    HWND window;
    WindowState& state;
    const std::atomic<bool>& stopRequested;
    HANDLE stopEvent;                 ///< Signalled once after stopRequested was set; waited on beside the frame waits.
    std::function<void(bool)> ready;  ///< To be called exactly once: whether the set-up succeeded.
    std::wstring title{};             ///< The window's, for its title bar.
};

/// Makes the render side of a window: in programs the render loop, in tests whatever the test links.
[[nodiscard]] std::unique_ptr<RenderSide> MakeRenderSide(const RenderSideSetup& setup);

}  // namespace Tamborel
