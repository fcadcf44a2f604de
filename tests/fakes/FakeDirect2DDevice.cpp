#include "tests/fakes/FakeDirect2D.h"
#include "tests/fakes/FakeGeometry.h"

namespace Fakes {

HRESULT FakeDrawingFactory::CreateGeometryGroup(D2D1_FILL_MODE mode, ID2D1Geometry** geometries, UINT32 count,
                                                ID2D1GeometryGroup** group) {
    std::string names;
    for (UINT32 i = 0; i < count; ++i) names += (i ? " " : "") + Text(geometries[i]);
    const HRESULT result = Call("CreateGeometryGroup", mode, "[" + names + "]");
    return Make<FakeGroup>(result, group,
                           std::vector<Microsoft::WRL::ComPtr<ID2D1Geometry>>(geometries, geometries + count));
}

HRESULT FakeDrawingFactory::CreateTransformedGeometry(ID2D1Geometry* source, const D2D1_MATRIX_3X2_F* m,
                                                      ID2D1TransformedGeometry** geometry) {
    const HRESULT result =
        Call("CreateTransformedGeometry", source, "{" + Joined(m->_11, m->_12, m->_21, m->_22, m->_31, m->_32) + "}");
    return Make<FakeMovedGeometry>(result, geometry, source);
}

HRESULT FakeDrawingFactory::CreatePathGeometry(ID2D1PathGeometry** geometry) {
    return Make<FakePath>(Call("CreatePathGeometry"), geometry);
}

HRESULT FakeDrawingFactory::CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device** device) {
    return Make<FakeDrawingDevice>(Call("CreateDevice", dxgiDevice), device);
}
HRESULT FakeDrawingFactory::CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device1** device) {
    return Make<FakeDrawingDevice>(Call("CreateDevice", dxgiDevice), device);
}
HRESULT FakeDrawingFactory::CreateDevice(IDXGIDevice* dxgiDevice, ID2D1Device2** device) {
    return Make<FakeDrawingDevice>(Call("CreateDevice", dxgiDevice), device);
}

HRESULT FakeDrawingDevice::CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext** context) {
    return Make<FakeDrawingContext>(Call("CreateDeviceContext", options), context, this);
}
HRESULT FakeDrawingDevice::CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext1** context) {
    return Make<FakeDrawingContext>(Call("CreateDeviceContext", options), context, this);
}
HRESULT FakeDrawingDevice::CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext2** context) {
    return Make<FakeDrawingContext>(Call("CreateDeviceContext", options), context, this);
}

HRESULT FakeSvgDocument::SetViewportSize(D2D1_SIZE_F viewport) {
    const HRESULT result = Call("SetViewportSize", viewport.width, viewport.height);
    if (SUCCEEDED(result)) viewport_ = viewport;
    return result;
}

void FakeSvgDocument::GetRoot(ID2D1SvgElement** root) {
    *root = SUCCEEDED(Call("GetRoot")) ? new FakeSvgElement : nullptr;
}

HRESULT FakeSvgElement::SetAttributeValue(PCWSTR name, D2D1_SVG_ATTRIBUTE_POD_TYPE type, const void* value,
                                          UINT32 size) {
    const auto* const length = static_cast<const D2D1_SVG_LENGTH*>(value);
    return Call("SetAttributeValue", name, type, length->value, length->units, size);
}

D2D1_SIZE_F FakeBitmap::GetSize() const {
    return {static_cast<float>(size_.width) * 96.0F / properties_.dpiX,
            static_cast<float>(size_.height) * 96.0F / properties_.dpiY};
}

void FakeBitmap::GetDpi(FLOAT* x, FLOAT* y) const {
    *x = properties_.dpiX;
    *y = properties_.dpiY;
}

HRESULT FakeBitmap::GetSurface(IDXGISurface** surface) const {
    surface_.CopyTo(surface);
    return surface_ ? S_OK : E_FAIL;
}

}  // namespace Fakes

FAKE_FUNCTION HRESULT WINAPI D2D1CreateFactory(D2D1_FACTORY_TYPE type, REFIID iid, const D2D1_FACTORY_OPTIONS* options,
                                               void** factory) noexcept {
    const HRESULT result =
        Fakes::FreeCall("D2D1CreateFactory", type, options ? Fakes::Text(options->debugLevel) : std::string("null"));
    return Fakes::MakeAs<Fakes::FakeDrawingFactory>(result, iid, factory);
}

FAKE_FUNCTION BOOL WINAPI D2D1IsMatrixInvertible(const D2D1_MATRIX_3X2_F* matrix) noexcept {
    return matrix->_11 * matrix->_22 - matrix->_12 * matrix->_21 != 0.0F;
}

FAKE_FUNCTION BOOL WINAPI D2D1InvertMatrix(D2D1_MATRIX_3X2_F* matrix) noexcept {
    const D2D1_MATRIX_3X2_F m = *matrix;
    const float determinant = m._11 * m._22 - m._12 * m._21;
    if (determinant == 0.0F) return FALSE;
    matrix->_11 = m._22 / determinant;
    matrix->_12 = -m._12 / determinant;
    matrix->_21 = -m._21 / determinant;
    matrix->_22 = m._11 / determinant;
    matrix->_31 = (m._21 * m._32 - m._22 * m._31) / determinant;
    matrix->_32 = (m._12 * m._31 - m._11 * m._32) / determinant;
    return TRUE;
}
