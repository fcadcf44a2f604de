// What the UI thread and the render thread of a window share. Everything else belongs to one of them.
#pragma once

#include "Window/ChromeTheme.h"
#include "Window/ClosureQueue.h"
#include "Window/FrameTick.h"
#include "Window/InputRing.h"
#include "Window/Metrics.h"
#include "Window/SharedValue.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

namespace Tamborel {

/// The theme fields of a window, all guarded by `Mutex`. The default theme's mutex may be taken inside it, never the
/// other way round; it is held only to copy records.
struct WindowTheme {
    std::mutex Mutex;
    std::optional<ChromeTheme> Override;
    ChromeTheme Effective;  ///< The default theme overlaid with Override.
    ThemeMetrics Metrics;   ///< Derived from Effective.
    std::shared_ptr<ImageAsset> TitleImage;
};

/// Shared by a window's UI thread and render thread. A frame tolerates a value that is one frame old, so the flags need
/// no order among themselves, with one exception: PendingGeometry is written whole before ResizePending is set.
struct WindowState {
    std::atomic<bool> FrameDirty{true};    ///< The frame surface needs a pass.
    std::atomic<bool> ClientDirty{true};   ///< The client surface needs a pass.
    std::atomic<bool> CommitNeeded{true};  ///< A composition commit is due.

    /// Set by the render thread once both surfaces exist, cleared before they go. Without them a size is not news.
    std::atomic<bool> SurfacesReady{false};

    SharedValue<WindowGeometry> PendingGeometry;  ///< UI thread writes; only ever replaced whole.
    std::atomic<bool> ResizePending{false};       ///< PendingGeometry holds news. UI sets, render exchanges with false.

    std::atomic<bool> InSizeMove{false};         ///< A modal size or move loop runs. UI thread.
    std::atomic<std::uint64_t> FrameCounter{0};  ///< Frames finished in this size loop. Render counts, UI resets.
    FrameTick FrameTickEvent;                    ///< Signalled by the render thread after each count.

    std::atomic<std::int32_t> HoverZone{NoZone};    ///< Caption zone under the pointer. UI thread.
    std::atomic<std::int32_t> PressedZone{NoZone};  ///< Caption zone pressed. UI thread.

    SharedValue<HitTestMetrics> CaptionMetrics;  ///< Render thread refreshes at each frame; the UI thread hit-tests.

    WindowTheme Theme;
    InputRing Input;
    ClosureQueue Closures;
};

}  // namespace Tamborel
