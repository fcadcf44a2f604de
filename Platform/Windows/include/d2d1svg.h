// SVG documents for Direct2D, which the cross compiler's headers lack. Methods in the order of the system's tables, as
// published in the Windows SDK reference (learn.microsoft.com, d2d1svg.h). Where the reference overloads a name, the
// system's compiler puts the overloads into the table in the reverse order of their declaration; GCC does not, so they
// are declared here in the table's order.
#pragma once

#include <d2d1_1.h>

struct ID2D1SvgAttribute;
struct ID2D1SvgPaint;
struct ID2D1SvgStrokeDashArray;
struct ID2D1SvgPointCollection;
struct ID2D1SvgPathData;
struct D2D1_SVG_VIEWBOX;
interface ID2D1SvgDocument;

typedef enum D2D1_SVG_ATTRIBUTE_STRING_TYPE {
    D2D1_SVG_ATTRIBUTE_STRING_TYPE_SVG = 0,
    D2D1_SVG_ATTRIBUTE_STRING_TYPE_ID = 1,
    D2D1_SVG_ATTRIBUTE_STRING_TYPE_FORCE_DWORD = 0xffffffff
} D2D1_SVG_ATTRIBUTE_STRING_TYPE;

typedef enum D2D1_SVG_ATTRIBUTE_POD_TYPE {
    D2D1_SVG_ATTRIBUTE_POD_TYPE_FLOAT = 0,
    D2D1_SVG_ATTRIBUTE_POD_TYPE_COLOR = 1,
    D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH = 12,
    D2D1_SVG_ATTRIBUTE_POD_TYPE_FORCE_DWORD = 0xffffffff
} D2D1_SVG_ATTRIBUTE_POD_TYPE;

typedef enum D2D1_SVG_LENGTH_UNITS {
    D2D1_SVG_LENGTH_UNITS_NUMBER = 0,
    D2D1_SVG_LENGTH_UNITS_PERCENTAGE = 1,
    D2D1_SVG_LENGTH_UNITS_FORCE_DWORD = 0xffffffff
} D2D1_SVG_LENGTH_UNITS;

typedef enum D2D1_SVG_PAINT_TYPE {
    D2D1_SVG_PAINT_TYPE_NONE = 0,
    D2D1_SVG_PAINT_TYPE_FORCE_DWORD = 0xffffffff
} D2D1_SVG_PAINT_TYPE;

typedef enum D2D1_SVG_PATH_COMMAND {
    D2D1_SVG_PATH_COMMAND_CLOSE_PATH = 0,
    D2D1_SVG_PATH_COMMAND_FORCE_DWORD = 0xffffffff
} D2D1_SVG_PATH_COMMAND;

typedef struct D2D1_SVG_LENGTH {
    FLOAT value;
    D2D1_SVG_LENGTH_UNITS units;
} D2D1_SVG_LENGTH;

interface ID2D1SvgElement : public ID2D1Resource {
    STDMETHOD_(void, GetDocument)(ID2D1SvgDocument** document) PURE;
    STDMETHOD(GetTagName)(PWSTR name, UINT32 nameCount) PURE;
    STDMETHOD_(UINT32, GetTagNameLength)() PURE;
    STDMETHOD_(BOOL, IsTextContent)() PURE;
    STDMETHOD_(void, GetParent)(ID2D1SvgElement** parent) PURE;
    STDMETHOD_(BOOL, HasChildren)() PURE;
    STDMETHOD_(void, GetFirstChild)(ID2D1SvgElement** child) PURE;
    STDMETHOD_(void, GetLastChild)(ID2D1SvgElement** child) PURE;
    STDMETHOD(GetPreviousChild)(ID2D1SvgElement* referenceChild, ID2D1SvgElement** previousChild) PURE;
    STDMETHOD(GetNextChild)(ID2D1SvgElement* referenceChild, ID2D1SvgElement** nextChild) PURE;
    STDMETHOD(InsertChildBefore)(ID2D1SvgElement* newChild, ID2D1SvgElement* referenceChild) PURE;
    STDMETHOD(AppendChild)(ID2D1SvgElement* newChild) PURE;
    STDMETHOD(ReplaceChild)(ID2D1SvgElement* newChild, ID2D1SvgElement* oldChild) PURE;
    STDMETHOD(RemoveChild)(ID2D1SvgElement* oldChild) PURE;
    STDMETHOD(CreateChild)(PCWSTR tagName, ID2D1SvgElement** newChild) PURE;
    STDMETHOD_(BOOL, IsAttributeSpecified)(PCWSTR name, BOOL* inherited) PURE;
    STDMETHOD_(UINT32, GetSpecifiedAttributeCount)() PURE;
    STDMETHOD(GetSpecifiedAttributeName)(UINT32 index, PWSTR name, UINT32 nameCount, BOOL* inherited) PURE;
    STDMETHOD(GetSpecifiedAttributeNameLength)(UINT32 index, UINT32* nameLength, BOOL* inherited) PURE;
    STDMETHOD(RemoveAttribute)(PCWSTR name) PURE;
    STDMETHOD(SetTextValue)(const WCHAR* name, UINT32 nameCount) PURE;
    STDMETHOD(GetTextValue)(PWSTR name, UINT32 nameCount) PURE;
    STDMETHOD_(UINT32, GetTextValueLength)() PURE;
    STDMETHOD(SetAttributeValue)(PCWSTR name, D2D1_SVG_ATTRIBUTE_STRING_TYPE type, PCWSTR value) PURE;
    STDMETHOD(SetAttributeValue)
    (PCWSTR name, D2D1_SVG_ATTRIBUTE_POD_TYPE type, const void* value, UINT32 valueSizeInBytes) PURE;
    STDMETHOD(SetAttributeValue)(PCWSTR name, ID2D1SvgAttribute* value) PURE;
    STDMETHOD(GetAttributeValue)
    (PCWSTR name, D2D1_SVG_ATTRIBUTE_STRING_TYPE type, PWSTR value, UINT32 valueCount) PURE;
    STDMETHOD(GetAttributeValue)
    (PCWSTR name, D2D1_SVG_ATTRIBUTE_POD_TYPE type, void* value, UINT32 valueSizeInBytes) PURE;
    STDMETHOD(GetAttributeValue)(PCWSTR name, REFIID riid, void** value) PURE;
    STDMETHOD(GetAttributeValueLength)(PCWSTR name, D2D1_SVG_ATTRIBUTE_STRING_TYPE type, UINT32* valueLength) PURE;
};
__CRT_UUID_DECL(ID2D1SvgElement, 0xac7b67a6, 0x183e, 0x49c1, 0xa8, 0x23, 0x0e, 0xbe, 0x40, 0xb0, 0xdb, 0x29);

interface ID2D1SvgDocument : public ID2D1Resource {
    STDMETHOD(SetViewportSize)(D2D1_SIZE_F viewportSize) PURE;
    virtual D2D1_SIZE_F* STDMETHODCALLTYPE GetViewportSize(D2D1_SIZE_F* size) const PURE;
    D2D1_SIZE_F GetViewportSize() const {
        D2D1_SIZE_F size;
        GetViewportSize(&size);
        return size;
    }
    STDMETHOD(SetRoot)(ID2D1SvgElement* root) PURE;
    STDMETHOD_(void, GetRoot)(ID2D1SvgElement** root) PURE;
    STDMETHOD(FindElementById)(PCWSTR id, ID2D1SvgElement** svgElement) PURE;
    STDMETHOD(Serialize)(IStream* outputXmlStream, ID2D1SvgElement* subtree) PURE;
    STDMETHOD(Deserialize)(IStream* inputXmlStream, ID2D1SvgElement** subtree) PURE;
    STDMETHOD(CreatePaint)
    (D2D1_SVG_PAINT_TYPE paintType, const D2D1_COLOR_F* color, PCWSTR id, ID2D1SvgPaint** paint) PURE;
    STDMETHOD(CreateStrokeDashArray)
    (const D2D1_SVG_LENGTH* dashes, UINT32 dashesCount, ID2D1SvgStrokeDashArray** strokeDashArray) PURE;
    STDMETHOD(CreatePointCollection)
    (const D2D1_POINT_2F* points, UINT32 pointsCount, ID2D1SvgPointCollection** pointCollection) PURE;
    STDMETHOD(CreatePathData)
    (const FLOAT* segmentData, UINT32 segmentDataCount, const D2D1_SVG_PATH_COMMAND* commands, UINT32 commandsCount,
     ID2D1SvgPathData** pathData) PURE;
};
__CRT_UUID_DECL(ID2D1SvgDocument, 0x86b88e4d, 0xafa4, 0x4d7b, 0x88, 0xe4, 0x68, 0xa5, 0x1c, 0x4a, 0x0a, 0xec);
