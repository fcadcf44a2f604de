// The launcher, for the tests that use it as a player does: it also writes what is on its screen to the file that the
// environment variable VELORINTH_NODES names, whenever that has changed. The file is always whole.

#include "launcher/Entry/Entry.h"
#include "launcher/LauncherScene/LauncherScene.h"
#include "tools/scene_shot/NodesJson.h"

#include "Background/BackgroundRenderer.h"
#include "Core/Toolkit.h"
#include "Window/FrameWindow.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

class ToldScene : public LauncherScene {
public:
    using LauncherScene::LauncherScene;

    void Update(float deltaSeconds) override {
        LauncherScene::Update(deltaSeconds);
        std::string nodes = SceneShot::NodesJson(children);
        if (file_.empty() || nodes == told_) return;
        told_ = std::move(nodes);
        const std::string unfinished = file_ + ".new";
        std::ofstream(unfinished, std::ios::binary) << told_;
        if (std::rename(unfinished.c_str(), file_.c_str()) != 0) std::perror(file_.c_str());
    }

private:
    static std::string FileName() {
        const char* const name = std::getenv("VELORINTH_NODES");
        return name ? name : "";
    }

    std::string file_ = FileName();
    std::string told_;
};

struct ToldSystem {
    using BackgroundRenderer = Tamborel::BackgroundRenderer;
    using FrameWindow = Tamborel::FrameWindow;
    using LauncherScene = ToldScene;

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
    return static_cast<int>(RunLauncher<ToldSystem>(instance, showCommand));
}
