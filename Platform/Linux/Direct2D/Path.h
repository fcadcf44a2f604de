// An outline of lines and curves: what a geometry holds once its sink is closed.
#pragma once

#include <d2d1.h>

#include <memory>
#include <vector>

namespace Platform::Direct2D {

struct Path {
    enum class Step : unsigned char { Move, Line, Curve, Close };

    D2D1_FILL_MODE fillMode = D2D1_FILL_MODE_ALTERNATE;
    std::vector<Step> steps;
    std::vector<D2D1_POINT_2F> points;  ///< One for a Move or Line, three for a Curve, none for a Close.

    void Move(D2D1_POINT_2F to) { Add(Step::Move, to); }
    void Line(D2D1_POINT_2F to) { Add(Step::Line, to); }
    void Curve(const D2D1_BEZIER_SEGMENT& bezier);
    void Close() { steps.push_back(Step::Close); }
    /// Adds another's outline, taken through a matrix. The fill mode stays.
    void Append(const Path& other, const D2D1_MATRIX_3X2_F& transform);

    /// The box around all points, which contains the outline. All zero if there are none.
    D2D1_RECT_F Bounds() const noexcept;

    friend bool operator==(const Path& a, const Path& b) noexcept;

private:
    void Add(Step step, D2D1_POINT_2F point) {
        steps.push_back(step);
        points.push_back(point);
    }
};

/// What our geometries are besides the interface: the way to their outline.
class PathSource {
public:
    /// Null while a sink is still open. The path never changes.
    virtual std::shared_ptr<const Path> GetPath() const = 0;

protected:
    ~PathSource() = default;
};

}  // namespace Platform::Direct2D
