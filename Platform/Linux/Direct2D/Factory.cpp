#include "Platform/Linux/Direct2D/Factory.h"

#include "Platform/Linux/Direct2D/Device.h"
#include "Platform/Linux/Direct2D/Geometry.h"
#include "Platform/Linux/Direct2D/Transform.h"

#include <new>

namespace Platform::Direct2D {

namespace {

template <class Interface>
HRESULT MakeDevice(Factory* factory, const LayerTargetMaker& targets, IDXGIDevice* dxgiDevice, Interface** device) {
    if (!device) return E_POINTER;
    *device = nullptr;
    if (!dxgiDevice) return E_INVALIDARG;
    *device = new (std::nothrow) Device(factory, targets, dxgiDevice);
    return *device ? S_OK : E_OUTOFMEMORY;
}

std::shared_ptr<const Path> PathOf(ID2D1Geometry* geometry) {
    const auto* const source = dynamic_cast<const PathSource*>(geometry);
    return source ? source->GetPath() : nullptr;
}

}  // namespace

HRESULT Factory::CreateGeometryGroup(D2D1_FILL_MODE mode, ID2D1Geometry** geometries, UINT32 count,
                                     ID2D1GeometryGroup** group) try {
    if (!group) return E_POINTER;
    *group = nullptr;
    auto path = std::make_shared<Path>();
    path->fillMode = mode;
    for (UINT32 i = 0; i < count; ++i) {
        const std::shared_ptr<const Path> part = PathOf(geometries[i]);
        if (!part) return geometries[i] ? D2DERR_WRONG_STATE : E_INVALIDARG;
        path->Append(*part, identity);
    }
    *group = new FinishedGeometry<ID2D1GeometryGroup>(this, std::move(path));
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Factory::CreateTransformedGeometry(ID2D1Geometry* source, const D2D1_MATRIX_3X2_F* transform,
                                           ID2D1TransformedGeometry** geometry) try {
    if (!geometry) return E_POINTER;
    *geometry = nullptr;
    if (!source || !transform) return E_INVALIDARG;
    const std::shared_ptr<const Path> part = PathOf(source);
    if (!part) return D2DERR_WRONG_STATE;
    auto path = std::make_shared<Path>();
    path->fillMode = part->fillMode;
    path->Append(*part, *transform);
    *geometry = new FinishedGeometry<ID2D1TransformedGeometry>(this, std::move(path));
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT Factory::CreatePathGeometry(ID2D1PathGeometry** geometry) {
    if (!geometry) return E_POINTER;
    *geometry = new (std::nothrow) PathGeometry(this);
    return *geometry ? S_OK : E_OUTOFMEMORY;
}

HRESULT Factory::CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device** device) {
    return MakeDevice(this, targets_, dxgiDevice, device);
}

HRESULT Factory::CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device1** device) {
    return MakeDevice(this, targets_, dxgiDevice, device);
}

HRESULT Factory::CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device2** device) {
    return MakeDevice(this, targets_, dxgiDevice, device);
}

}  // namespace Platform::Direct2D
