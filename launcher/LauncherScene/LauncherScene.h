#pragma once

#include "launcher/LauncherScene/DecorationNodes.h"
#include "launcher/LauncherScene/LauncherActions.h"

#include "Scene/Button.h"
#include "Scene/ImageAsset.h"
#include "Scene/SceneNode.h"

#include <array>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <string>

namespace Tamborel {
class BackgroundRenderer;
class FrameWindow;
}  // namespace Tamborel

/// The launcher's one screen: its state in plain flags, its two kinds of background task, and its nodes, which are made
/// anew whenever a flag has changed.
///
/// Made on the application's thread before it is attached to a window; from then on the render thread's alone. Workers
/// see copies, and their way back is a future. The destructor waits for no task and stops no game.
///
/// The fields are public for the picture tool and the tests, which set states that only time and luck would bring.
class LauncherScene : public Tamborel::SceneNode {
public:
    /// `window` and `background` are borrowed and have to outlive the screen; either may be null where there is none.
    /// Loads the settings and judges the remembered folder, unless `simulate`, in which nothing outside is touched.
    LauncherScene(Tamborel::FrameWindow* window, Tamborel::BackgroundRenderer* background, bool showDeveloperControls,
                  bool simulate, std::shared_ptr<LauncherActions> actions = std::make_shared<LauncherActions>());
    ~LauncherScene() override;

    /// Starts the search, or the folder chooser when `browse`. Ignored while one of them is at work.
    void SelectGame(bool browse);

    /// Starts the game with the choices of this moment. Ignored unless there is something to start.
    void Launch();

    /// Takes in what the tasks and the game have come to, fits the canvas to the window, and rebuilds and saves where
    /// anything changed.
    void Update(float deltaSeconds) override;

    /// Replaces all nodes by those of the present state.
    void Rebuild();

    bool gameRunning = false;
    bool installationValid;
    bool modernRenderer = true;
    bool fullscreen = true;
    bool modeMenuOpen = false;
    bool developerControls;
    std::int32_t displayMode = 4;
    std::int32_t overlayOpacity = 85;  ///< Of the card, percent.
    bool needsRebuild = true;
    Tamborel::FrameWindow* frameWindow;
    Tamborel::BackgroundRenderer* backgroundRenderer;
    std::shared_ptr<Tamborel::ImageAsset> logoImage;
    float logoWidth = 330.0F;  ///< Scene units.
    std::shared_ptr<Tamborel::RectangleNode> cardNode;
    std::shared_ptr<DecorationEllipse> opacityThumb;
    std::shared_ptr<DecorationText> opacityLabel;
    std::shared_ptr<DecorationText> backgroundLabel;
    std::array<std::shared_ptr<DecorationText>, 4> colorLabels;
    std::array<std::shared_ptr<DecorationEllipse>, 4> colorThumbs;
    bool smokeBrowsed = false;
    bool smokeTest;
    bool checking = false;
    bool checkingBrowse = false;
    std::wstring folder;
    std::wstring statusText;
    std::wstring installationText;
    std::future<GameDiscovery::Result> discoveryFuture;
    bool launching = false;
    std::future<GameLaunch::Result> launchFuture;
    std::shared_ptr<GameLaunch::Handle> gameHandle;

private:
    using Click = std::function<void()>;

    // Workflow: LauncherScene.cpp.
    void SetUpLogo();
    void TakeLaunchResult();
    void WatchGame();
    void TakeDiscoveryResult();
    LauncherSettings Settings() const;

    // Nodes: SceneNodes.cpp. Colours are 0xRRGGBB.
    std::shared_ptr<Tamborel::RectangleNode> RectangleAt(float x, float y, float width, float height,
                                                         std::uint32_t fill, std::uint32_t stroke = 0, float radius = 0,
                                                         float fillAlpha = 1);
    std::shared_ptr<DecorationText> TextAt(float x, float y, float width, float height, std::wstring text, float size,
                                           std::uint32_t colour, bool semibold = false);
    std::shared_ptr<DecorationEllipse> EllipseAt(float centreX, float centreY, float radius, std::uint32_t colour);
    std::shared_ptr<Tamborel::Button> ButtonAt(float x, float y, float width, float height, std::wstring text,
                                               Click onClick, bool enabled, std::uint32_t fill,
                                               std::uint32_t textColour, bool bordered = false);

    // The screen, top to bottom: SceneLayout.cpp.
    void AddHeader();
    void AddInstallation();
    void AddRendererCard(int index);
    void AddDisplay();
    void AddFooter();
    void AddModeMenu();
    bool ChoicesEnabled() const { return !gameRunning && !launching; }

    // DeveloperPanel.cpp.
    void AddDeveloperPanel();
    void AddColourRow(std::size_t index);
    std::shared_ptr<Tamborel::RectangleNode> AddSliderZone(float y, float halfHeight,
                                                           std::function<void(float x)> onDrag);
    void Reset();
    void RefreshDeveloperPanel();

    std::shared_ptr<LauncherActions> actions_;
};
