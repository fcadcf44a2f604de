// Fakes of Direct2D's geometries: paths, moved ones and groups. They hold what they are made of and no points.
#pragma once

#include "tests/fakes/FakeDirect2D.h"

#include <vector>

namespace Fakes {

template <class Interface>
class FakeGeometry : public FakeResource<Interface, ID2D1Geometry> {
public:
    using FakeResource<Interface, ID2D1Geometry>::FakeResource;
    HRESULT GetBounds(const D2D1_MATRIX_3X2_F*, D2D1_RECT_F* bounds) const override {
        *bounds = {};
        return this->Call("GetBounds");
    }
};

class FakeSink final : public FakeObject<ID2D1GeometrySink, ID2D1SimplifiedGeometrySink> {
public:
    FakeSink() : FakeObject("Sink") {}
    void SetFillMode(D2D1_FILL_MODE) override {}
    void SetSegmentFlags(D2D1_PATH_SEGMENT) override {}
    void BeginFigure(D2D1_POINT_2F, D2D1_FIGURE_BEGIN) override {}
    void AddLines(const D2D1_POINT_2F*, UINT32) override {}
    void AddBeziers(const D2D1_BEZIER_SEGMENT*, UINT32) override {}
    void EndFigure(D2D1_FIGURE_END) override {}
    HRESULT Close() override { return Call("Close"); }
    void AddLine(D2D1_POINT_2F) override {}
    void AddBezier(const D2D1_BEZIER_SEGMENT*) override {}
};

class FakePath final : public FakeGeometry<ID2D1PathGeometry> {
public:
    FakePath() : FakeGeometry("Path") {}
    HRESULT Open(ID2D1GeometrySink** sink) override { return Make<FakeSink>(Call("Open"), sink); }
};

class FakeMovedGeometry final : public FakeGeometry<ID2D1TransformedGeometry> {
public:
    explicit FakeMovedGeometry(ID2D1Geometry* source) : FakeGeometry("Moved"), source_(source) {}

private:
    Microsoft::WRL::ComPtr<ID2D1Geometry> source_;
};

class FakeGroup final : public FakeGeometry<ID2D1GeometryGroup> {
public:
    explicit FakeGroup(std::vector<Microsoft::WRL::ComPtr<ID2D1Geometry>> parts)
        : FakeGeometry("Group"), parts_(std::move(parts)) {}

private:
    std::vector<Microsoft::WRL::ComPtr<ID2D1Geometry>> parts_;
};

}  // namespace Fakes
