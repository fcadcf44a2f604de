#pragma once

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Direct2D/LayerTarget.h"

#include <d2d1_3.h>

namespace Platform::Direct2D {

/// Makes devices and geometry. Nothing in it changes, so any thread may use it.
class Factory final : public ComObject<ID2D1Factory3, ID2D1Factory2, ID2D1Factory1, ID2D1Factory> {
public:
    explicit Factory(const LayerTargetMaker& targets) : ComObject("ID2D1Factory"), targets_(targets) {}

    HRESULT CreateGeometryGroup(D2D1_FILL_MODE mode, ID2D1Geometry** geometries, UINT32 count,
                                ID2D1GeometryGroup** group) override;
    HRESULT CreateTransformedGeometry(ID2D1Geometry* source, const D2D1_MATRIX_3X2_F* transform,
                                      ID2D1TransformedGeometry** geometry) override;
    HRESULT CreatePathGeometry(ID2D1PathGeometry** geometry) override;
    HRESULT CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device** device) override;
    HRESULT CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device1** device) override;
    HRESULT CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device2** device) override;

private:
    ~Factory() override = default;

    const LayerTargetMaker& targets_;
};

}  // namespace Platform::Direct2D
