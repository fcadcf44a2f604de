// What the launcher's top level runs on outside its tests.
#pragma once

#include "Background/BackgroundRenderer.h"
#include "Core/Toolkit.h"
#include "Window/FrameWindow.h"

#include <windows.h>

#include <optional>
#include <string>

/// The system and the toolkit as they are, for RunLauncher, with a screen of one's choice.
template <class Scene>
struct ToolkitSystem {
    using BackgroundRenderer = Tamborel::BackgroundRenderer;
    using FrameWindow = Tamborel::FrameWindow;
    using LauncherScene = Scene;

    static void SetDpiAwareness() { SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2); }
    static HRESULT Initialize() { return Tamborel::Initialize(); }
    static std::wstring CommandLine() { return GetCommandLineW(); }
    static void WaitForWindows() { Tamborel::WaitForWindows(); }
    static void Shutdown() { Tamborel::Shutdown(); }

    /// Nothing where the system doesn't tell.
    static std::optional<RECT> PrimaryWorkArea() {
        MONITORINFO info{};
        info.cbSize = sizeof info;
        if (!GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info)) return std::nullopt;
        return info.rcWork;
    }
};
