// BackgroundRenderer: what callers set.
#include "Background/BackgroundSettings.h"

#include "Background/BackgroundRenderer.h"

#include <algorithm>
#include <cmath>

namespace Tamborel {

namespace {

void AssignFinite(float& field, float value, float least, float most) {
    if (std::isfinite(value)) field = std::clamp(value, least, most);
}

bool IsClockReading(double seconds) {
    return std::isfinite(seconds) && seconds >= 0.0;
}

}  // namespace

void BackgroundRenderer::SetBackground(BackgroundKind kind) {
    if (kind != kind_) {
        sunriseLastTime_.reset();
        surfaceLastTime_.reset();
    }
    kind_ = kind;
    if (initialized_) ActivatePixelShader();
}

void BackgroundRenderer::SetColorGrade(const ColorGrade& grade) {
    const auto index = KindIndex(kind_);
    if (!index) return;
    ColorGrade& current = grades_[*index];
    AssignFinite(current.hue, grade.hue, -180.0F, 180.0F);
    AssignFinite(current.saturation, grade.saturation, 0.0F, 2.0F);
    AssignFinite(current.brightness, grade.brightness, -1.0F, 1.0F);
    AssignFinite(current.contrast, grade.contrast, 0.0F, 2.0F);
}

ColorGrade BackgroundRenderer::Grade() const {
    const auto index = KindIndex(kind_);
    return index ? grades_[*index] : ColorGrade{};
}

void BackgroundRenderer::SetSurfaceTuning(const BackgroundTuning& tuning) {
    AssignFinite(tuning_.timeScale, tuning.timeScale, 0.0F, 16.0F);
    AssignFinite(tuning_.emberStrength, tuning.emberStrength, 0.0F, 16.0F);
    AssignFinite(tuning_.pointerStrength, tuning.pointerStrength, 0.0F, 16.0F);
    AssignFinite(tuning_.viewScale, tuning.viewScale, 0.1F, 10.0F);
    AssignFinite(tuning_.fineDetail, tuning.fineDetail, 0.0F, 10.0F);
    if (tuning.sampleSpacing == 2 || tuning.sampleSpacing == 4) tuning_.sampleSpacing = tuning.sampleSpacing;
}

void BackgroundRenderer::SetSunriseParameters(float rate, float glow) {
    AssignFinite(sunriseRate_, rate, 0.0F, 16.0F);
    AssignFinite(sunriseGlow_, glow, 0.0F, 16.0F);
}

void BackgroundRenderer::SetSunriseClock(double seconds, std::int32_t frame) {
    if (!IsClockReading(seconds)) return;
    sunriseClock_ = seconds;
    sunriseFrame_ = frame;
    sunriseLastTime_.reset();
}

void BackgroundRenderer::SetSurfaceClock(double seconds) {
    if (!IsClockReading(seconds)) return;
    surfaceClock_ = seconds;
    surfaceLastTime_.reset();
}

void BackgroundRenderer::SetPointer(float u, float v, bool active) {
    pointer_ = {};
    if (!active || !std::isfinite(u) || !std::isfinite(v)) return;
    pointer_.u = std::clamp(u, 0.0F, 1.0F);
    pointer_.v = 1.0F - std::clamp(v, 0.0F, 1.0F);
    pointer_.active = 1.0F;
}

}  // namespace Tamborel
