#include "launcher/LauncherScene/SceneFit.h"

#include <algorithm>

namespace {

constexpr float kTitleBar = 36.0F;      // units; also taken off a maximised window
constexpr float kFrame = 1.0F;          // the inner border, at each side
constexpr float kMargin = 8.0F;         // the window's own frame: left, right and bottom
constexpr float kPaddingShare = 0.05F;  // of the smaller side
constexpr float kLargestPadding = 12.0F;

}  // namespace

Tamborel::Matrix3x2 FitScene(const SceneSurroundings& surroundings, float canvasHeight) {
    const float scale = static_cast<float>(surroundings.dpi) / 96.0F;
    const float frame = surroundings.zoomed ? 0.0F : kFrame;
    const float margin = surroundings.zoomed ? 0.0F : kMargin;
    const float width = std::max(static_cast<float>(surroundings.width) / scale - 2 * (frame + margin), 1.0F);
    const float height =
        std::max(static_cast<float>(surroundings.height) / scale - kTitleBar - margin - 2 * frame, 1.0F);
    const float padding = std::min(std::min(width, height) * kPaddingShare, kLargestPadding);
    const float fit = std::min((width - 2 * padding) / kCanvasWidth, (height - 2 * padding) / canvasHeight);
    return {fit, 0, 0, fit, (width - kCanvasWidth * fit) * 0.5F, (height - canvasHeight * fit) * 0.5F};
}
