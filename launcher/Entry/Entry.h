// The launcher's top level: what is brought up, in which order, and how it is taken down. A template over the toolkit,
// so that the tests can watch the orders on both paths.
#pragma once

#include "Background/BackgroundKind.h"
#include "Background/BackgroundSettings.h"
#include "Window/WindowConfig.h"

#include <windows.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

/// What the process says of its run.
enum class LauncherExit : int { Ended = 0, NoToolkit = 1, NoWindow = 2 };

/// The launcher's window in its own size.
inline Tamborel::WindowConfig LauncherWindow() {
    Tamborel::ChromeTheme theme;
    theme.FrameWidth = 8.0F;
    theme.TitleHeight = 36.0F;
    theme.Scale = 1.0F;
    theme.InnerBorderWidth = 1.0F;
    theme.ClientExtensionLeft = 0.0F;
    theme.ClientExtensionTop = 0.0F;
    theme.ClientExtensionRight = 0.0F;
    theme.ClientExtensionBottom = 0.0F;

    Tamborel::WindowConfig config;
    config.title = L"Velorinth Launcher for Quake II";
    config.width = 1538;
    config.height = 1505;
    config.resizable = true;
    config.theme = std::move(theme);
    return config;
}

/// Shrinks the window to a monitor's work area and centres it there; half a pixel goes to the left and to the top.
inline void FitToWorkArea(Tamborel::WindowConfig& config, const RECT& work) {
    const LONG width = work.right - work.left;
    const LONG height = work.bottom - work.top;
    config.width = std::min<std::int32_t>(config.width, width);
    config.height = std::min<std::int32_t>(config.height, height);
    config.x = work.left + (width - config.width) / 2;
    config.y = work.top + (height - config.height) / 2;
}

/// `System` supplies the types BackgroundRenderer, FrameWindow and LauncherScene, and as static functions what the
/// platform and the toolkit do.
template <class System>
LauncherExit RunLauncher(HINSTANCE instance, int showCommand) {
    System::SetDpiAwareness();
    if (FAILED(System::Initialize())) return LauncherExit::NoToolkit;
    // Kept for whoever debugs a running launcher; it has no switches.
    const std::wstring commandLine = System::CommandLine();
    bool ended = false;
    {
        typename System::BackgroundRenderer renderer;
        typename System::FrameWindow window;
        auto config = std::make_unique<Tamborel::WindowConfig>(LauncherWindow());
        if (const std::optional<RECT> work = System::PrimaryWorkArea()) FitToWorkArea(*config, *work);

        ended = window.Create(instance, showCommand, *config) && window.WaitUntilReady();
        if (ended) {
            window.SetBackgroundRenderer(&renderer);
            window.PostToRenderThread([&renderer] {
                renderer.SetBackground(Tamborel::BackgroundKind::LiquidMetal);
                renderer.SetColorGrade({.hue = 21.0F, .saturation = 0.45F, .brightness = 0.0F, .contrast = 1.0F});
                Tamborel::BackgroundTuning tuning = renderer.SurfaceTuning();
                tuning.emberStrength = 0.0F;
                renderer.SetSurfaceTuning(tuning);
            });
            // Settings and the remembered folder are read here, while the window already shows.
            auto scene = std::make_shared<typename System::LauncherScene>(&window, &renderer, false, false);
            window.PostToRenderThread([&window, scene] { window.ClientRoot()->AddChild(scene); });
            System::WaitForWindows();
            window.Shutdown();
            scene.reset();
        } else {
            // Here the toolkit goes before the objects on this stack; after a good run it goes last.
            System::Shutdown();
        }
        config.reset();
    }
    if (!ended) return LauncherExit::NoWindow;
    System::Shutdown();
    return LauncherExit::Ended;
}
