#include "tests/fakes/FakeDirect2D.h"

namespace Fakes {

HRESULT FakeDrawingFactory::CreateGeometryGroup(D2D1_FILL_MODE, ID2D1Geometry**, UINT32 count,
                                                ID2D1GeometryGroup** group) {
    *group = nullptr;
    const HRESULT result = Call("CreateGeometryGroup", count);
    return FAILED(result) ? result : E_NOTIMPL;
}

HRESULT FakeDrawingFactory::CreateTransformedGeometry(ID2D1Geometry* source, const D2D1_MATRIX_3X2_F*,
                                                      ID2D1TransformedGeometry** geometry) {
    *geometry = nullptr;
    const HRESULT result = Call("CreateTransformedGeometry", source);
    return FAILED(result) ? result : E_NOTIMPL;
}

HRESULT FakeDrawingFactory::CreatePathGeometry(ID2D1PathGeometry** geometry) {
    *geometry = nullptr;
    const HRESULT result = Call("CreatePathGeometry");
    return FAILED(result) ? result : E_NOTIMPL;
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
    return Make<FakeDrawingContext>(Call("CreateDeviceContext", options), context);
}
HRESULT FakeDrawingDevice::CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext1** context) {
    return Make<FakeDrawingContext>(Call("CreateDeviceContext", options), context);
}
HRESULT FakeDrawingDevice::CreateDeviceContext(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext2** context) {
    return Make<FakeDrawingContext>(Call("CreateDeviceContext", options), context);
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
