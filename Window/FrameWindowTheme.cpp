// Title, title image, theme and icons. Any thread.
#include "Window/FrameWindow.h"
#include "Window/WindowIcons.h"

#include <utility>

namespace Tamborel {

void FrameWindow::SetTitle(std::wstring title) {
    {
        const std::lock_guard lock(configMutex_);
        config_.title = title;
    }
    if (const HWND window = Handle()) SetWindowTextW(window, title.c_str());
    PostToRenderThread([this, title = std::move(title)] {
        if (renderSide_) renderSide_->SetChromeTitle(title);
    });
}

void FrameWindow::SetChromeTheme(const ChromeTheme& theme) {
    ChromeTheme effective = ReplaceThemeOverride(theme);
    SendIcons(Handle(), effective);
    PostToRenderThread([this, effective = std::move(effective)] {
        if (renderSide_) renderSide_->SetChromeTheme(effective);
    });
}

void FrameWindow::SetTitleImage(std::shared_ptr<ImageAsset> image) {
    {
        const std::lock_guard lock(state_.Theme.Mutex);
        state_.Theme.TitleImage = image;
    }
    PostToRenderThread([this, image = std::move(image)] {
        if (renderSide_) renderSide_->SetChromeTitleImage(image);
    });
}

/// Stores the overlay and what follows from it. A copy of the effective theme.
ChromeTheme FrameWindow::ReplaceThemeOverride(std::optional<ChromeTheme> overlay) {
    const std::lock_guard lock(state_.Theme.Mutex);
    state_.Theme.Override = std::move(overlay);
    state_.Theme.Effective = GetDefaultChromeTheme();
    if (state_.Theme.Override)
        state_.Theme.Effective = MergeChromeTheme(state_.Theme.Effective, *state_.Theme.Override);
    DeriveMetricsLocked();
    return state_.Theme.Effective;
}

void FrameWindow::DeriveMetricsLocked() {
    state_.Theme.Metrics = DeriveThemeMetrics(state_.Theme.Effective);
    state_.CaptionMetrics.Store(HitTestMetricsOf(state_.Theme.Metrics));
}

}  // namespace Tamborel
