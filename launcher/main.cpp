// The Velorinth Launcher for Quake II.

#include "launcher/Entry/Entry.h"
#include "launcher/LauncherScene/LauncherScene.h"

#include "Background/BackgroundRenderer.h"
#include "Core/Toolkit.h"
#include "Window/FrameWindow.h"

namespace {

struct RealSystem {
    using BackgroundRenderer = Tamborel::BackgroundRenderer;
    using FrameWindow = Tamborel::FrameWindow;
    using LauncherScene = ::LauncherScene;

    static void SetDpiAwareness() { SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2); }
    static HRESULT Initialize() { return Tamborel::Initialize(); }
    static std::wstring CommandLine() { return GetCommandLineW(); }
    static void WaitForWindows() { Tamborel::WaitForWindows(); }
    static void Shutdown() { Tamborel::Shutdown(); }

    static std::optional<RECT> PrimaryWorkArea() {
        MONITORINFO info{};
        info.cbSize = sizeof info;
        if (!GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info)) return std::nullopt;
        return info.rcWork;
    }
};

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    return static_cast<int>(RunLauncher<RealSystem>(instance, showCommand));
}
