// Direct2D 1.2, which the cross compiler's headers lack. Methods in the order of the system's tables, as published in
// the Windows SDK reference (learn.microsoft.com, d2d1_2.h).
#pragma once

#include <d2d1_1.h>

struct ID2D1GeometryRealization;

typedef enum D2D1_RENDERING_PRIORITY {
    D2D1_RENDERING_PRIORITY_NORMAL = 0,
    D2D1_RENDERING_PRIORITY_LOW = 1,
    D2D1_RENDERING_PRIORITY_FORCE_DWORD = 0xffffffff
} D2D1_RENDERING_PRIORITY;

interface ID2D1DeviceContext1 : public ID2D1DeviceContext {
    STDMETHOD(CreateFilledGeometryRealization)
    (ID2D1Geometry* geometry, FLOAT flatteningTolerance, ID2D1GeometryRealization** realization) PURE;
    STDMETHOD(CreateStrokedGeometryRealization)
    (ID2D1Geometry* geometry, FLOAT flatteningTolerance, FLOAT strokeWidth, ID2D1StrokeStyle* strokeStyle,
     ID2D1GeometryRealization** realization) PURE;
    STDMETHOD_(void, DrawGeometryRealization)(ID2D1GeometryRealization* realization, ID2D1Brush* brush) PURE;
};
__CRT_UUID_DECL(ID2D1DeviceContext1, 0xd37f57e4, 0x6908, 0x459f, 0xa1, 0x99, 0xe7, 0x2f, 0x24, 0xf7, 0x99, 0x87);

interface ID2D1Device1 : public ID2D1Device {
    STDMETHOD_(D2D1_RENDERING_PRIORITY, GetRenderingPriority)() PURE;
    STDMETHOD_(void, SetRenderingPriority)(D2D1_RENDERING_PRIORITY priority) PURE;
    STDMETHOD(CreateDeviceContext)(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext1** context) PURE;
    using ID2D1Device::CreateDeviceContext;
};
__CRT_UUID_DECL(ID2D1Device1, 0xd21768e1, 0x23a4, 0x4823, 0xa1, 0x4b, 0x7c, 0x3e, 0xba, 0x85, 0xd6, 0x58);

interface ID2D1Factory2 : public ID2D1Factory1 {
    STDMETHOD(CreateDevice)(IDXGIDevice* dxgiDevice, ID2D1Device1** device) PURE;
    using ID2D1Factory1::CreateDevice;
};
__CRT_UUID_DECL(ID2D1Factory2, 0x94f81a73, 0x9212, 0x4376, 0x9c, 0x58, 0xb1, 0x6a, 0x3a, 0x0d, 0x39, 0x92);
