#include "Platform/Linux/Direct2D/Geometry.h"

#include "Platform/Linux/Direct2D/Transform.h"

#include <new>

namespace Platform::Direct2D {

namespace {

/// Fills a path geometry. A call out of order, or one for which there is no memory, is told by Close.
class GeometrySink final : public ComObject<ID2D1GeometrySink, ID2D1SimplifiedGeometrySink> {
public:
    explicit GeometrySink(PathGeometry* geometry)
        : ComObject("ID2D1GeometrySink"), geometry_(geometry), path_(std::make_shared<Path>()) {}

    void SetFillMode(D2D1_FILL_MODE mode) override {
        if (path_) path_->fillMode = mode;
    }
    void SetSegmentFlags(D2D1_PATH_SEGMENT flags) override {
        if (flags != D2D1_PATH_SEGMENT_NONE) NotImplemented("SetSegmentFlags");
    }
    void BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN) override {
        Add(State::Between, [&] { path_->Move(start); });
        inFigure_ = true;
    }
    void AddLines(const D2D1_POINT_2F* points, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) AddLine(points[i]);
    }
    void AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) AddBezier(&beziers[i]);
    }
    void AddLine(D2D1_POINT_2F point) override {
        Add(State::InFigure, [&] { path_->Line(point); });
    }
    void AddBezier(const D2D1_BEZIER_SEGMENT* bezier) override {
        Add(State::InFigure, [&] { path_->Curve(*bezier); });
    }
    void EndFigure(D2D1_FIGURE_END end) override {
        Add(State::InFigure, [&] {
            if (end == D2D1_FIGURE_END_CLOSED) path_->Close();
        });
        inFigure_ = false;
    }
    HRESULT Close() override {
        if (inFigure_ || !path_) failure_ = D2DERR_WRONG_STATE;
        if (SUCCEEDED(failure_)) geometry_->Finish(std::move(path_));
        path_ = nullptr;
        return failure_;
    }

private:
    enum class State { Between, InFigure };

    ~GeometrySink() override = default;

    template <class Function>
    void Add(State expected, Function add) try {
        if (!path_ || inFigure_ != (expected == State::InFigure)) {
            failure_ = D2DERR_WRONG_STATE;
        } else if (SUCCEEDED(failure_)) {
            add();
        }
    } catch (const std::bad_alloc&) {
        failure_ = E_OUTOFMEMORY;
    }

    ComPtr<PathGeometry> geometry_;
    std::shared_ptr<Path> path_;  // null once closed
    bool inFigure_ = false;
    HRESULT failure_ = S_OK;
};

}  // namespace

HRESULT PathBounds(const Path* path, const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) noexcept {
    if (!bounds) return E_POINTER;
    *bounds = {};
    if (!path) return D2DERR_WRONG_STATE;
    *bounds = worldTransform ? Bounds(*worldTransform, path->Bounds()) : path->Bounds();
    return S_OK;
}

HRESULT PathGeometry::Open(ID2D1GeometrySink** sink) try {
    if (!sink) return E_POINTER;
    *sink = nullptr;
    const std::lock_guard lock(mutex_);
    if (opened_) return D2DERR_WRONG_STATE;
    *sink = new GeometrySink(this);
    opened_ = true;
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT PathGeometry::GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const {
    return PathBounds(GetPath().get(), worldTransform, bounds);
}

std::shared_ptr<const Path> PathGeometry::GetPath() const {
    const std::lock_guard lock(mutex_);
    return path_;
}

void PathGeometry::Finish(std::shared_ptr<const Path> path) {
    const std::lock_guard lock(mutex_);
    path_ = std::move(path);
}

}  // namespace Platform::Direct2D
