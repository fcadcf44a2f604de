// The screen on its canvas, in scene units. Every node has its literal place; what follows the window is the one
// transform of the whole.

#include "launcher/LauncherScene/Colours.h"
#include "launcher/LauncherScene/DisplayModes.h"
#include "launcher/LauncherScene/LauncherScene.h"

#include "Scene/ImagePrimitive.h"

#include <utility>

using Tamborel::Button;
using Tamborel::ImagePrimitive;

void LauncherScene::Rebuild() {
    while (!children.empty()) RemoveChild(children.back().get());
    AddHeader();
    AddInstallation();
    for (const int index : {0, 1}) AddRendererCard(index);
    AddDisplay();
    AddFooter();
    if (developerControls) AddDeveloperPanel();
    if (modeMenuOpen) AddModeMenu();
}

void LauncherScene::AddHeader() {
    cardNode = RectangleAt(0, 0, kCanvasWidth, CanvasHeight(developerControls), 0x000000, 0, 12,
                           static_cast<float>(overlayOpacity) / 100.0F);

    constexpr float logoShape = 520.0F / 2771.0F;
    auto logo = std::make_shared<ImagePrimitive>();
    logo->asset = logoImage;
    logo->rect = {36, 24, 36 + logoWidth, 24 + logoWidth * logoShape};
    AddChild(std::move(logo));

    TextAt(410, 32, 374, 24, L"© 2026 Velorinth Interactive", 14, kMutedText)->textAlignment = kTextTrailing;
    RectangleAt(36, 96, 748, 1, kRule);
    TextAt(36, 108, 748, 35, L"Play Quake II with a software renderer", 25, kText, true);
    TextAt(36, 149, 748, 26, L"Choose your renderer and display settings, then launch the game.", 14, kMutedText);
    RectangleAt(36, 185, 748, 1, kRule);
}

void LauncherScene::AddInstallation() {
    const bool chosen = !folder.empty();
    const wchar_t* const name = installationValid ? L"Quake II · Classic installation"
                                : chosen          ? L"Invalid installation"
                                                  : L"No installation selected";
    std::wstring path = folder;
    if (!installationValid && !chosen) path = L"Select the folder containing quake2.exe.";
    if (installationValid && smokeTest) path = L"C:\\Games\\Quake II (test fixture)";
    const wchar_t* const badge = checking            ? L"Checking…"
                                 : installationValid ? L"● Ready"
                                 : chosen            ? L"Not ready"
                                                     : L"Not selected";
    std::wstring message = installationText;
    if (message.empty()) {
        message = installationValid ? L"Quake II installation verified." : L"Find or browse for your game folder.";
    }

    TextAt(36, 199, 450, 23, L"Game installation", 13, kText, true);
    RectangleAt(36, 234, 748, 80, kField, kRule, 8);
    RectangleAt(54, 253, 40, 40, 0x323129, 0, 8);
    TextAt(60, 258, 35, 30, L"Q II", 16, 0xD5C18E, true);
    TextAt(110, 246, 400, 26, name, 14, kText, true);
    TextAt(110, 273, 400, 36, std::move(path), 11, kMutedText);
    TextAt(540, 244, 225, 23, badge, 11, installationValid && !checking ? kAccent : kMutedText);
    TextAt(540, 269, 225, 40, std::move(message), 11, kMutedText);

    const bool enabled = ChoicesEnabled() && !checking;
    ButtonAt(
        36, 325, 148, 35, L"Find automatically", [this] { SelectGame(false); }, enabled, 0x272E33, kText, true);
    ButtonAt(
        194, 325, 161, 35, L"Browse for game…", [this] { SelectGame(true); }, enabled, 0x1B2024, kText, true);
    TextAt(36, 363, 748, 23, statusText, 11, kMutedText);
    TextAt(36, 387, 500, 23, L"Renderer", 13, kText, true);
}

void LauncherScene::AddRendererCard(int index) {
    const bool modern = index == 0;
    const bool selected = modern == modernRenderer;
    const float x = modern ? 36.0F : 420.0F;
    const std::uint32_t fill = selected ? kSelected : 0x20262A;
    RectangleAt(x, 424, 364, 101, fill, selected ? kAccent : kRule, 8);
    // The whole card is the button; the radio mark and the words over it let the pointer through.
    ButtonAt(
        x + 1, 425, 362, 99, L"", [this, modern] { modernRenderer = modern; }, ChoicesEnabled(), fill, kText);
    EllipseAt(x + 23, 450, 7, selected ? kAccent : 0x59656B);
    EllipseAt(x + 23, 450, 5, fill);
    if (selected) EllipseAt(x + 23, 450, 3, kAccent);
    TextAt(x + 42, 434, 70, 28, modern ? L"KVR2" : L"KVR", 14, kText, true);
    TextAt(x + 94, 437, 150, 23, modern ? L"MODERN" : L"ORIGINAL", 10, modern ? kAccent : 0xC7BAA0);
    TextAt(x + 42, 466, 310, 46,
           modern ? L"Multithreaded, tile-based rendering\nwith AVX2 and AVX-512 support."
                  : L"The classic software renderer, written in 2003.\nSingle-threaded SSE and MMX.",
           12, kMutedText);
}

void LauncherScene::AddDisplay() {
    RectangleAt(36, 550, 748, 1, kRule);
    TextAt(36, 567, 360, 27, L"Resolution", 13, kText, true);
    TextAt(432, 567, 350, 27, L"Display mode", 13, kText, true);
    RectangleAt(36, 604, 360, 43, kField, 0x455056, 6);
    ButtonAt(
        37, 605, 358, 41, L"", [this] { modeMenuOpen = !modeMenuOpen; }, ChoicesEnabled(), kField, kText);
    TextAt(49, 609, 302, 32, DisplayModeName(displayMode), 13, kText);
    TextAt(365, 608, 20, 32, L"⌄", 16, kMutedText);
    ButtonAt(
        432, 611, 35, 22, L"", [this] { fullscreen = !fullscreen; }, ChoicesEnabled(), fullscreen ? 0x61B5A9 : 0x455057,
        kText);
    EllipseAt(fullscreen ? 457.0F : 442.0F, 622, 7, 0xE6EEEE);
    TextAt(480, 606, 200, 35, L"Fullscreen", 14, kText);
    TextAt(36, 655, 360, 22, L"Standard Quake II display modes.", 11, kMutedText);
    TextAt(432, 655, 350, 22, fullscreen ? L"Use the entire screen." : L"Play in a window on your desktop.", 11,
           kMutedText);
}

void LauncherScene::AddFooter() {
    const wchar_t* const state = gameRunning         ? L"Quake II is running"
                                 : installationValid ? L"Ready to launch"
                                                     : L"Select a Quake II installation";
    const wchar_t* const launch = gameRunning      ? L"Game running"
                                  : modernRenderer ? L"Launch with KVR2 ↗"
                                                   : L"Launch with KVR ↗";
    RectangleAt(0, 696, kCanvasWidth, 74, kRaised);
    RectangleAt(0, 696, kCanvasWidth, 1, kRule);
    TextAt(36, 711, 480, 44, state, 13, kText, true)->paragraphAlignment = kParagraphCentre;
    ButtonAt(
        588, 711, 196, 44, launch, [this] { Launch(); }, installationValid && ChoicesEnabled() && !checking, kAccent,
        0x112622);
}

void LauncherScene::AddModeMenu() {
    // Unseen, and over everything else: a click beside the list closes it.
    auto backdrop = std::make_shared<Button>();
    backdrop->rect = {0, 0, kCanvasWidth, CanvasHeight(developerControls)};
    backdrop->label.clear();
    backdrop->normalColor = {};
    backdrop->hoverColor = {};
    backdrop->pressedColor = {};
    backdrop->onClick = [this] {
        modeMenuOpen = false;
        needsRebuild = true;
    };
    AddChild(std::move(backdrop));

    RectangleAt(36, 252, 360, 344, kRaised, 0x536168, 6);
    for (std::int32_t mode = 0; mode < kDisplayModeCount; ++mode) {
        const bool current = mode == displayMode;
        ButtonAt(
            40, 256 + 33 * static_cast<float>(mode), 352, 32,
            (current ? L"●  " : L"    ") + std::wstring(DisplayModeName(mode)),
            [this, mode] {
                displayMode = mode;
                modeMenuOpen = false;
            },
            true, current ? kSelected : kRaised, kText);
    }
}
