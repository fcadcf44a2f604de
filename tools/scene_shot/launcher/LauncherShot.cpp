#include "tools/scene_shot/launcher/LauncherShot.h"

#include "Background/BackgroundRenderer.h"
#include "launcher/Entry/Entry.h"
#include "tools/scene_shot/launcher/LauncherState.h"
#include "Window/BlitRecord.h"

#include <cmath>
#include <utility>

namespace SceneShot {

namespace {

using namespace Tamborel;

/// A world in which there is nothing but the picture. Nothing of the player's is read, written or started.
class PictureActions : public LauncherActions {
public:
    explicit PictureActions(const View& view) : view_(view) {}

    LauncherSettings Load() override { return {}; }
    void Save(const LauncherSettings&) override {}
    bool IsValidFolder(const std::wstring&) override { return false; }
    GameDiscovery::Result Discover(bool, HWND, const std::wstring&) noexcept override { return {}; }
    GameLaunch::Result Start(const std::wstring&, bool, DWORD, bool) noexcept override { return {}; }
    std::optional<DWORD> ExitCode(const GameLaunch::Handle&) override { return std::nullopt; }
    SceneSurroundings Surroundings(const FrameWindow*) override {
        return {.width = view_.width,
                .height = view_.height,
                .dpi = static_cast<UINT>(std::lround(view_.dpi)),
                .zoomed = false};
    }
    HWND Owner(const FrameWindow*) override { return nullptr; }

private:
    View view_;
};

/// Where the launcher's frame puts the client area.
Matrix3x2 ClientArea(const View& view) {
    const ChromeTheme theme = LauncherWindow().theme.value_or(ChromeTheme{});
    ThemeMetrics metrics;
    metrics.frameWidth = theme.FrameWidth.value_or(metrics.frameWidth);
    metrics.titleHeight = theme.TitleHeight.value_or(metrics.titleHeight);
    FramePlacement placement;
    placement.windowWidth = static_cast<std::int32_t>(view.width);
    placement.windowHeight = static_cast<std::int32_t>(view.height);
    placement.dpiScale = view.Scale();
    placement.innerBorder = true;
    return ClientRootTransform(BuildBlitFrameRecord(FrameLookOf(theme, metrics), placement), view.Scale());
}

/// The window's client root, with what the screen borrows.
class Client : public SceneNode {
public:
    Client(const View& view, const LauncherState& state) {
        localTransform = ClientArea(view);
        background_.SetBackground(BackgroundKind::LiquidMetal);
        background_.SetColorGrade({.hue = 21.0F, .saturation = 0.45F, .brightness = 0.0F, .contrast = 1.0F});
        BackgroundTuning tuning = background_.SurfaceTuning();
        tuning.emberStrength = 0.0F;
        background_.SetSurfaceTuning(tuning);
        auto screen = std::make_shared<LauncherScene>(nullptr, &background_, state.developer, state.developer,
                                                      std::make_shared<PictureActions>(view));
        Assume(*screen, state);
        AddChild(std::move(screen));
    }

private:
    BackgroundRenderer background_;
};

}  // namespace

Scene LauncherShot() {
    const auto state = std::make_shared<LauncherState>();
    Scene scene{"launcher", "the launcher's screen in one of its states",
                [state](const View& view) { return std::make_shared<Client>(view, *state); }};
    scene.backdrop = {0.30F, 0.36F, 0.38F, 1};  // About what the background comes to.
    scene.options = LauncherOptions(state);
    scene.listed = [](const SceneNode& root) -> const SceneNode& { return *root.children.front(); };
    return scene;
}

}  // namespace SceneShot
