#include "BlitReference.h"

#include <algorithm>
#include <cmath>

namespace {

using Tamborel::BlitConstants;
using Tamborel::Float4;

enum class Region { Outside, TitleBar, Frame, InnerBorder, Interior };

struct Metrics {
    double frame, title, border, left, top, right, bottom;
};

double NotNegative(float value) {
    return std::max(static_cast<double>(value), 0.0);
}

Metrics MetricsOf(const BlitConstants& c) {
    Metrics m{NotNegative(c.ChromeMetrics[0]),        NotNegative(c.ChromeMetrics[1]),
              NotNegative(c.ChromeMetrics[2]),        NotNegative(c.ClientFrameExtension[0]),
              NotNegative(c.ClientFrameExtension[1]), NotNegative(c.ClientFrameExtension[2]),
              NotNegative(c.ClientFrameExtension[3])};
    if (c.IsMaximized <= 0.5F) return m;
    const long policy = std::clamp(std::lround(c.MaximizedChromePolicy), 0L, 2L);
    if (policy == 2) return {};
    if (policy == 0) m.frame = m.border = 0.0;
    return m;
}

Region RegionAt(const BlitConstants& c, int x, int y) {
    const double width = static_cast<double>(c.WindowMetrics[0]);
    const double height = static_cast<double>(c.WindowMetrics[1]);
    if (width <= 0.0 || height <= 0.0) return Region::Outside;
    const Metrics m = MetricsOf(c);
    const double windowX = x + static_cast<double>(c.WindowMetrics[2]);
    const double windowY = y + static_cast<double>(c.WindowMetrics[3]);
    // How far the pixel is inside the client rectangle, from each of its edges; negative outside.
    const double fromLeft = windowX - (m.left + m.frame);
    const double fromTop = windowY - (m.top + m.title);
    const double toRight = (width - m.frame - m.right) - windowX;
    const double toBottom = (height - m.frame - m.bottom) - windowY;
    if (toBottom <= 0.0) return Region::Frame;
    if (fromTop < 0.0) return Region::TitleBar;
    if (fromLeft < 0.0 || toRight <= 0.0) return Region::Frame;
    if (c.ChromeMetrics[3] <= 0.5F || m.border <= 0.0) return Region::Interior;
    const bool nearEdge = fromLeft < m.border || fromTop < m.border || toRight <= m.border || toBottom <= m.border;
    return nearEdge ? Region::InnerBorder : Region::Interior;
}

void Mix(Texel& color, const Float4& fill) {
    const double alpha = std::clamp(static_cast<double>(fill[3]), 0.0, 1.0);
    for (std::size_t i = 0; i < 3; ++i) color[i] = color[i] * (1.0 - alpha) + static_cast<double>(fill[i]) * alpha;
}

bool IsNeutral(const Tamborel::ColorGrade& grade) {
    const auto near = [](float value, double neutral) {
        return std::abs(static_cast<double>(value) - neutral) <= 1e-5;
    };
    return near(grade.hue, 0.0) && near(grade.saturation, 1.0) && near(grade.brightness, 0.0) &&
           near(grade.contrast, 1.0);
}

double Dot(const Texel& color, double red, double green, double blue) {
    return color[0] * red + color[1] * green + color[2] * blue;
}

void TurnHue(Texel& color, double degrees) {
    const double angle = degrees * 0.01745329;
    const double luma = Dot(color, 0.299, 0.587, 0.114);
    const double i = Dot(color, 0.596, -0.274, -0.322);
    const double q = Dot(color, 0.211, -0.523, 0.312);
    const double turnedI = i * std::cos(angle) - q * std::sin(angle);
    const double turnedQ = i * std::sin(angle) + q * std::cos(angle);
    color[0] = luma + 0.956 * turnedI + 0.621 * turnedQ;
    color[1] = luma - 0.272 * turnedI - 0.647 * turnedQ;
    color[2] = luma - 1.106 * turnedI + 1.703 * turnedQ;
}

void Grade(Texel& color, const Tamborel::ColorGrade& grade) {
    if (std::abs(grade.hue) > 1e-5F) TurnHue(color, static_cast<double>(grade.hue));
    const double luma = Dot(color, 0.2126, 0.7152, 0.0722);
    for (std::size_t i = 0; i < 3; ++i) {
        double value = luma + static_cast<double>(grade.saturation) * (color[i] - luma);
        value += static_cast<double>(grade.brightness);
        value = (value - 0.5) * static_cast<double>(grade.contrast) + 0.5;
        color[i] = std::clamp(value, 0.0, 1.0);
    }
}

}  // namespace

Texel BlitBeforeDither(const BlitConstants& constants, const Texel& source, int x, int y) {
    const bool theme = constants.UseThemeBackground > 0.5F;
    Texel color = source;
    if (!theme) {
        for (std::size_t i = 0; i < 4; ++i) color[i] = static_cast<double>(constants.FlatInteriorFill[i]);
    }
    if (theme && !IsNeutral(constants.ColorGrade)) Grade(color, constants.ColorGrade);
    for (std::size_t i = 0; i < 3; ++i) color[i] *= static_cast<double>(constants.SdrWhiteScale);
    switch (RegionAt(constants, x, y)) {
        case Region::TitleBar:
            Mix(color, constants.TitleBarFill);
            break;
        case Region::Frame:
            Mix(color, constants.FrameFill);
            break;
        case Region::InnerBorder:
            Mix(color, constants.InnerBorderColor);
            break;
        case Region::Outside:
        case Region::Interior:
            break;
    }
    return color;
}
