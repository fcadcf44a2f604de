#include "Platform/Linux/Direct2D/Path.h"

#include "Platform/Linux/Direct2D/Transform.h"

#include <algorithm>

namespace Platform::Direct2D {

void Path::Curve(const D2D1_BEZIER_SEGMENT& bezier) {
    steps.push_back(Step::Curve);
    points.insert(points.end(), {bezier.point1, bezier.point2, bezier.point3});
}

void Path::Append(const Path& other, const D2D1_MATRIX_3X2_F& transform) {
    steps.insert(steps.end(), other.steps.begin(), other.steps.end());
    points.reserve(points.size() + other.points.size());
    for (const D2D1_POINT_2F& point : other.points) points.push_back(Apply(transform, point));
}

bool operator==(const Path& a, const Path& b) noexcept {
    const auto samePoint = [](const D2D1_POINT_2F& p, const D2D1_POINT_2F& q) { return p.x == q.x && p.y == q.y; };
    return a.fillMode == b.fillMode && a.steps == b.steps && std::ranges::equal(a.points, b.points, samePoint);
}

D2D1_RECT_F Path::Bounds() const noexcept {
    if (points.empty()) return {};
    D2D1_RECT_F bounds{points[0].x, points[0].y, points[0].x, points[0].y};
    for (const D2D1_POINT_2F& point : points) {
        bounds.left = std::min(bounds.left, point.x);
        bounds.top = std::min(bounds.top, point.y);
        bounds.right = std::max(bounds.right, point.x);
        bounds.bottom = std::max(bounds.bottom, point.y);
    }
    return bounds;
}

}  // namespace Platform::Direct2D
