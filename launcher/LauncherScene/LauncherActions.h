// What the screen sets in motion and what it asks of its surroundings: the seam at which tests and the picture tool put
// their own.
#pragma once

#include "launcher/GameDiscovery/Result.h"
#include "launcher/GameLaunch/Start.h"
#include "launcher/LauncherScene/SceneFit.h"
#include "launcher/Settings/Settings.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

namespace Tamborel {
class FrameWindow;
}

/// The real ones. Stateless: one object serves the screen and all its workers, and outlives neither.
class LauncherActions {
public:
    virtual ~LauncherActions() = default;

    /// Render thread, or the thread that makes the screen.
    virtual LauncherSettings Load();
    /// Render thread. A failure goes unnoticed.
    virtual void Save(const LauncherSettings& settings);
    /// Whether the folder holds a usable game. A folder that can't be judged holds none.
    virtual bool IsValidFolder(const std::wstring& folder);

    /// The search, or the folder chooser when `browse`. Worker thread; never throws.
    virtual GameDiscovery::Result Discover(bool browse, HWND owner, const std::wstring& folder) noexcept;
    /// Worker thread; never throws.
    virtual GameLaunch::Result Start(const std::wstring& folder, bool modern, DWORD displayMode,
                                     bool fullscreen) noexcept;

    /// The exit code of a game that has ended; nothing while it runs. Never waits.
    virtual std::optional<DWORD> ExitCode(const GameLaunch::Handle& game);

    /// The window as it is at this moment. Render thread. A null window, as in a picture without one, has no size.
    virtual SceneSurroundings Surroundings(const Tamborel::FrameWindow* window);
    /// The owner of a dialog; null without a window.
    virtual HWND Owner(const Tamborel::FrameWindow* window);
};
