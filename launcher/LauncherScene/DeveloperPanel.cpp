// For people who work on the screen: the game's states without a game, and the card and the background live.

#include "launcher/LauncherScene/Colours.h"
#include "launcher/LauncherScene/LauncherScene.h"

#include "Background/BackgroundRenderer.h"

#include <algorithm>
#include <cmath>
#include <utility>

using Tamborel::ColorGrade;
using Tamborel::InputEvent;
using Tamborel::RectangleNode;

namespace {

constexpr float kTrackLeft = 250.0F;
constexpr float kTrackWidth = 400.0F;

struct GradeRow {
    const wchar_t* name;
    float ColorGrade::*value;
    float minimum;
    float span;
    float multiplier;  // of the value, in the label
    const wchar_t* unit;
};

constexpr GradeRow kGradeRows[] = {
    {L"Hue", &ColorGrade::hue, -180, 360, 1, L"°"},
    {L"Saturation", &ColorGrade::saturation, 0, 2, 100, L"%"},
    {L"Brightness", &ColorGrade::brightness, -1, 2, 100, L"%"},
    {L"Contrast", &ColorGrade::contrast, 0, 2, 100, L"%"},
};

constexpr float RowY(std::size_t index) {
    return 915.0F + 34.0F * static_cast<float>(index);
}

/// Text is laid out anew only where it differs.
void SetText(Tamborel::TextPrimitive& node, std::wstring text) {
    if (node.text == text) return;
    node.text = std::move(text);
    node.layoutDirty = true;
}

}  // namespace

void LauncherScene::AddDeveloperPanel() {
    constexpr std::uint32_t fill = 0x272E33;
    const bool copper = backgroundRenderer && backgroundRenderer->SurfaceTuning().emberStrength > 0;
    TextAt(36, 787, 350, 25, smokeTest ? L"Smoke test · Game actions are simulated" : L"Developer controls", 11,
           kMutedText);
    ButtonAt(
        470, 785, 99, 28, L"No game",
        [this] {
            installationValid = false;
            modeMenuOpen = false;
        },
        !gameRunning, fill, kText);
    // Only what the screen believes: a real process runs on, and its end is still told.
    ButtonAt(
        579, 785, 99, 28, L"Game exit", [this] { gameRunning = false; }, gameRunning, fill, kText);
    ButtonAt(
        688, 785, 96, 28, L"Reset", [this] { Reset(); }, true, fill, kText);

    opacityLabel = TextAt(36, 829, 210, 26, L"", 13, kMutedText);
    RectangleAt(kTrackLeft, 839, kTrackWidth, 4, 0x59656B, 0, 2);
    opacityThumb = EllipseAt(kTrackLeft + 4 * static_cast<float>(overlayOpacity), 841, 7, kAccent);
    AddSliderZone(842, 17, [this](float x) {
        // Cut off, not rounded: below zero the clamp decides.
        // NOLINTNEXTLINE(bugprone-incorrect-roundings)
        overlayOpacity = std::clamp(static_cast<std::int32_t>((x - kTrackLeft) * 0.25F + 0.5F), 0, 100);
    });
    ButtonAt(
        688, 827, 96, 28, L"85% default", [this] { overlayOpacity = 85; }, true, fill, kText);

    backgroundLabel = TextAt(36, 872, 490, 26, L"", 13, kMutedText);
    ButtonAt(
        550, 870, 234, 28, copper ? L"Metal copper: on" : L"Metal copper: off",
        [this] {
            if (!backgroundRenderer) return;
            Tamborel::BackgroundTuning tuning = backgroundRenderer->SurfaceTuning();
            tuning.emberStrength = tuning.emberStrength > 0 ? 0.0F : 0.85F;
            backgroundRenderer->SetSurfaceTuning(tuning);
        },
        true, fill, kText);
    for (std::size_t index = 0; index < colorLabels.size(); ++index) AddColourRow(index);
    ButtonAt(
        688, 903, 96, 28, L"Reset color",
        [this] {
            if (backgroundRenderer) backgroundRenderer->SetColorGrade({0, 1, 0, 1});
        },
        true, fill, kText);
}

void LauncherScene::AddColourRow(std::size_t index) {
    const float y = RowY(index);
    colorLabels[index] = TextAt(36, y - 12, 210, 26, L"", 13, kMutedText);
    RectangleAt(kTrackLeft, y - 2, kTrackWidth, 4, 0x59656B, 0, 2);
    colorThumbs[index] = EllipseAt(450, y, 7, kAccent);
    AddSliderZone(y, 16, [this, index](float x) {
        if (!backgroundRenderer) return;
        const GradeRow& row = kGradeRows[index];
        ColorGrade grade = backgroundRenderer->Grade();
        grade.*row.value = std::clamp((x - kTrackLeft) / kTrackWidth, 0.0F, 1.0F) * row.span + row.minimum;
        backgroundRenderer->SetColorGrade(grade);
    });
}

std::shared_ptr<RectangleNode> LauncherScene::AddSliderZone(float y, float halfHeight,
                                                            std::function<void(float x)> onDrag) {
    auto zone = std::make_shared<RectangleNode>();
    zone->rect = {240, y - halfHeight, 660, y + halfHeight};
    // One handler for both: dragging needs no state of its own.
    zone->onPointerDown = [onDrag = std::move(onDrag)](const InputEvent& event) {
        if ((event.buttons & 1U) != 0) onDrag(event.x);
    };
    zone->onPointerMove = zone->onPointerDown;
    AddChild(zone);
    return zone;
}

void LauncherScene::Reset() {
    gameRunning = false;
    installationValid = smokeTest || (!folder.empty() && actions_->IsValidFolder(folder));
    modernRenderer = true;
    fullscreen = true;
    displayMode = 4;
    overlayOpacity = 85;
    smokeBrowsed = false;
    modeMenuOpen = false;
}

void LauncherScene::RefreshDeveloperPanel() {
    opacityThumb->center = {static_cast<float>(overlayOpacity) * 4 + kTrackLeft, 841};
    SetText(*opacityLabel, L"Overlay opacity: " + std::to_wstring(overlayOpacity) + L"%");

    const ColorGrade grade = backgroundRenderer ? backgroundRenderer->Grade() : ColorGrade{};
    for (std::size_t index = 0; index < colorThumbs.size(); ++index) {
        const GradeRow& row = kGradeRows[index];
        const float value = grade.*row.value;
        colorThumbs[index]->center = {(value - row.minimum) * kTrackWidth / row.span + kTrackLeft, RowY(index)};
        const long shown = std::lround(value * row.multiplier);
        SetText(*colorLabels[index], std::wstring(row.name) + L": " + std::to_wstring(shown) + row.unit);
    }
    if (backgroundRenderer) {
        const std::string_view name = Tamborel::BackgroundDisplayName(backgroundRenderer->Kind());
        SetText(*backgroundLabel, L"Background: " + std::wstring(name.begin(), name.end()));
    }
}
