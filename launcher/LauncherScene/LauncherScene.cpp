#include "launcher/LauncherScene/LauncherScene.h"

#include "Core/DeviceManager.h"

#include <dwrite_3.h>
#include <wrl/client.h>

#include <chrono>
#include <thread>
#include <utility>

namespace {

using Microsoft::WRL::ComPtr;

/// Runs `task` on a thread that nobody joins: the result travels in the future alone.
template <class Result, class Task>
std::future<Result> RunDetached(Task task) {
    std::packaged_task<Result()> packaged(std::move(task));
    std::future<Result> result = packaged.get_future();
    std::thread(std::move(packaged)).detach();
    return result;
}

template <class Result>
bool IsReady(const std::future<Result>& future) {
    return future.valid() && future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// Width of the headline in the logo's size and weight, which is the logo's; zero if it can't be told.
float MeasureHeadline() {
    constexpr std::wstring_view headline = L"Play Quake II with Velorinth";
    IDWriteFactory* const factory = Tamborel::DeviceManager::Get().GetDWriteFactory();
    ComPtr<IDWriteTextFormat> format;
    if (!factory ||
        FAILED(factory->CreateTextFormat(L"Segoe UI", nullptr, DWRITE_FONT_WEIGHT_SEMI_BOLD, DWRITE_FONT_STYLE_NORMAL,
                                         DWRITE_FONT_STRETCH_NORMAL, 25.0F, L"en-us", format.GetAddressOf()))) {
        return 0;
    }
    ComPtr<IDWriteTextLayout> layout;
    if (FAILED(factory->CreateTextLayout(headline.data(), static_cast<UINT32>(headline.size()), format.Get(), 748.0F,
                                         35.0F, layout.GetAddressOf()))) {
        return 0;
    }
    DWRITE_TEXT_METRICS metrics{};
    return SUCCEEDED(layout->GetMetrics(&metrics)) ? metrics.width : 0;
}

}  // namespace

LauncherScene::LauncherScene(Tamborel::FrameWindow* window, Tamborel::BackgroundRenderer* background,
                             bool showDeveloperControls, bool simulate, std::shared_ptr<LauncherActions> actions)
    : installationValid(simulate),
      developerControls(showDeveloperControls),
      frameWindow(window),
      backgroundRenderer(background),
      smokeTest(simulate),
      actions_(std::move(actions)) {
    if (!smokeTest) {
        LauncherSettings settings = actions_->Load();
        modernRenderer = settings.Modern;
        fullscreen = settings.Fullscreen;
        displayMode = settings.Mode;
        folder = std::move(settings.Folder);
        installationValid = !folder.empty() && actions_->IsValidFolder(folder);
    }
    SetUpLogo();
}

LauncherScene::~LauncherScene() = default;

void LauncherScene::SetUpLogo() {
    logoImage = Tamborel::ImageAsset::FromResource(nullptr, L"VELORINTH", L"SVG", true);
    if (const float width = MeasureHeadline(); width > 0) logoWidth = width;
}

void LauncherScene::SelectGame(bool browse) {
    if (smokeTest) {
        installationValid = true;
        smokeBrowsed = browse;
        return;
    }
    if (checking) return;
    checking = true;
    checkingBrowse = browse;
    statusText.clear();
    installationText = browse ? L"Choose your Quake II folder…" : L"Checking Steam libraries and common folders…";
    discoveryFuture =
        RunDetached<GameDiscovery::Result>([actions = actions_, browse, owner = actions_->Owner(frameWindow),
                                            folder = folder] { return actions->Discover(browse, owner, folder); });
}

void LauncherScene::Launch() {
    if (smokeTest) {
        gameRunning = true;
        modeMenuOpen = false;
        return;
    }
    if (gameRunning || launching || checking || !installationValid) return;
    launching = true;
    modeMenuOpen = false;
    statusText = L"Installing the selected driver and starting Quake II…";
    launchFuture = RunDetached<GameLaunch::Result>(
        [actions = actions_, folder = folder, modern = modernRenderer, mode = displayMode, full = fullscreen] {
            return actions->Start(folder, modern, static_cast<DWORD>(mode), full);
        });
}

void LauncherScene::Update(float deltaSeconds) {
    TakeLaunchResult();
    WatchGame();
    TakeDiscoveryResult();
    localTransform = FitScene(actions_->Surroundings(frameWindow), CanvasHeight(developerControls));
    if (needsRebuild) {
        Rebuild();
        if (!smokeTest) actions_->Save(Settings());
        needsRebuild = false;
    }
    cardNode->fillColor.a = static_cast<float>(overlayOpacity) / 100.0F;
    if (developerControls) RefreshDeveloperPanel();
    SceneNode::Update(deltaSeconds);
}

void LauncherScene::TakeLaunchResult() {
    if (!IsReady(launchFuture)) return;
    GameLaunch::Result result = launchFuture.get();
    launching = false;
    gameHandle = std::move(result.Process);
    gameRunning = gameHandle != nullptr;
    statusText = std::move(result.Message);
    needsRebuild = true;
}

void LauncherScene::WatchGame() {
    if (!gameHandle) return;
    const std::optional<DWORD> code = actions_->ExitCode(*gameHandle);
    if (!code) return;
    statusText = *code == 0 ? L"Quake II closed."
                            : L"Quake II exited with error " + std::to_wstring(*code) +
                                  L". See baseq2/qconsole.log in the game folder.";
    gameHandle.reset();
    gameRunning = false;
    needsRebuild = true;
}

void LauncherScene::TakeDiscoveryResult() {
    if (!IsReady(discoveryFuture)) return;
    GameDiscovery::Result result = discoveryFuture.get();
    checking = false;
    if (result.Cancelled) {
        installationText = installationValid ? L"Quake II installation verified." : L"Folder selection cancelled.";
    } else {
        installationText = std::move(result.Message);
        installationValid = !result.Folder.empty();
        folder = std::move(installationValid ? result.Folder : result.SelectedFolder);
    }
    needsRebuild = true;
}

LauncherSettings LauncherScene::Settings() const {
    return {.Folder = folder, .Modern = modernRenderer, .Fullscreen = fullscreen, .Mode = displayMode};
}
