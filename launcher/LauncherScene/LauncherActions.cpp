#include "launcher/LauncherScene/LauncherActions.h"

#include "launcher/GameDiscovery/FolderPicker.h"
#include "launcher/GameDiscovery/Validation.h"

#include "Platform/Interface/Paths.h"

#include "Window/FrameWindow.h"

#include <exception>

LauncherSettings LauncherActions::Load() {
    return LoadSettings();
}

void LauncherActions::Save(const LauncherSettings& settings) {
    try {
        SaveSettings(settings);
    } catch (const std::exception&) {
        // Without a state folder nothing is remembered, and the launcher works on.
    }
}

bool LauncherActions::IsValidFolder(const std::wstring& folder) {
    try {
        return !GameDiscovery::ValidateFolder(Platform::PathFromText(folder)).Folder.empty();
    } catch (const std::exception&) {
        return false;
    }
}

GameDiscovery::Result LauncherActions::Discover(bool browse, HWND owner, const std::wstring& folder) noexcept {
    return GameDiscovery::Discover(browse, owner, Platform::PathFromText(folder));
}

GameLaunch::Result LauncherActions::Start(const std::wstring& folder, bool modern, DWORD displayMode,
                                          bool fullscreen) noexcept {
    return GameLaunch::Start(Platform::PathFromText(folder), modern, displayMode, fullscreen, false);
}

std::optional<DWORD> LauncherActions::ExitCode(const GameLaunch::Handle& game) {
    if (WaitForSingleObject(game.Process, 0) != WAIT_OBJECT_0) return std::nullopt;
    DWORD code = 0;
    GetExitCodeProcess(game.Process, &code);
    return code;
}

SceneSurroundings LauncherActions::Surroundings(const Tamborel::FrameWindow* window) {
    if (!window) return {};
    const SIZE size = window->FrameSurfaceSize();
    const HWND handle = window->Handle();
    const UINT dpi = GetDpiForWindow(handle);
    // A window that is just going has neither.
    return {.width = static_cast<UINT>(size.cx),
            .height = static_cast<UINT>(size.cy),
            .dpi = dpi ? dpi : 96,
            .zoomed = IsZoomed(handle) != FALSE};
}

HWND LauncherActions::Owner(const Tamborel::FrameWindow* window) {
    return window ? window->Handle() : nullptr;
}
