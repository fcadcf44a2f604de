// SVG documents for Direct2D.
#pragma once

#include <d2d1_2.h>

enum D2D1_SVG_ATTRIBUTE_POD_TYPE : UINT32 {
    D2D1_SVG_ATTRIBUTE_POD_TYPE_FLOAT = 0,
    D2D1_SVG_ATTRIBUTE_POD_TYPE_COLOR = 1,
    D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH = 12,
};

enum D2D1_SVG_LENGTH_UNITS : UINT32 {
    D2D1_SVG_LENGTH_UNITS_NUMBER = 0,
    D2D1_SVG_LENGTH_UNITS_PERCENTAGE = 1,
};

struct D2D1_SVG_LENGTH {
    FLOAT value;
    D2D1_SVG_LENGTH_UNITS units;
};

struct ID2D1SvgElement : ID2D1Resource {
    /// `value` points to the record of `type`, whose size is `size` bytes.
    virtual HRESULT STDMETHODCALLTYPE SetAttributeValue(PCWSTR name, D2D1_SVG_ATTRIBUTE_POD_TYPE type,
                                                        const void* value, UINT32 size) = 0;
};
VELORINTH_DECLARE_IID(ID2D1SvgElement, 0xac7b67a6, 0x183e, 0x49c1, 0xa8, 0x23, 0x0e, 0xbe, 0x40, 0xb0, 0xdb, 0x29);

struct ID2D1SvgDocument : ID2D1Resource {
    virtual HRESULT STDMETHODCALLTYPE SetViewportSize(D2D1_SIZE_F viewportSize) = 0;
    virtual D2D1_SIZE_F STDMETHODCALLTYPE GetViewportSize() const = 0;
    /// Adds a reference to what it returns; null if the document has no root.
    virtual void STDMETHODCALLTYPE GetRoot(ID2D1SvgElement** root) = 0;
};
VELORINTH_DECLARE_IID(ID2D1SvgDocument, 0x86b88e4d, 0xafa4, 0x4d7b, 0x88, 0xe4, 0x68, 0xa5, 0x1c, 0x4a, 0x0a, 0xec);
