// Direct2D 1.3, which the cross compiler's headers lack. Methods in the order of the system's tables, as published in
// the Windows SDK reference (learn.microsoft.com, d2d1_3.h). Records and interfaces that only pass through signatures
// are declared by name.
#pragma once

#include <d2d1_2.h>
#include <d2d1svg.h>
#include <dwrite.h>
#include <dxgi1_4.h>

struct D2D1_GRADIENT_MESH_PATCH;
struct D2D1_INK_POINT;
struct D2D1_INK_STYLE_PROPERTIES;
struct D2D1_SIMPLE_COLOR_PROFILE;
struct D2D1_TRANSFORMED_IMAGE_SOURCE_PROPERTIES;
struct ID2D1ColorContext1;
struct ID2D1GradientMesh;
struct ID2D1ImageSource;
struct ID2D1ImageSourceFromWic;
struct ID2D1Ink;
struct ID2D1InkStyle;
struct ID2D1LookupTable3D;
struct ID2D1SpriteBatch;
struct ID2D1SvgGlyphStyle;
struct ID2D1TransformedImageSource;

typedef enum D2D1_IMAGE_SOURCE_LOADING_OPTIONS {
    D2D1_IMAGE_SOURCE_LOADING_OPTIONS_NONE = 0,
    D2D1_IMAGE_SOURCE_LOADING_OPTIONS_FORCE_DWORD = 0xffffffff
} D2D1_IMAGE_SOURCE_LOADING_OPTIONS;

typedef enum D2D1_IMAGE_SOURCE_FROM_DXGI_OPTIONS {
    D2D1_IMAGE_SOURCE_FROM_DXGI_OPTIONS_NONE = 0,
    D2D1_IMAGE_SOURCE_FROM_DXGI_OPTIONS_FORCE_DWORD = 0xffffffff
} D2D1_IMAGE_SOURCE_FROM_DXGI_OPTIONS;

typedef enum D2D1_SPRITE_OPTIONS {
    D2D1_SPRITE_OPTIONS_NONE = 0,
    D2D1_SPRITE_OPTIONS_FORCE_DWORD = 0xffffffff
} D2D1_SPRITE_OPTIONS;

typedef enum D2D1_COLOR_BITMAP_GLYPH_SNAP_OPTION {
    D2D1_COLOR_BITMAP_GLYPH_SNAP_OPTION_DEFAULT = 0,
    D2D1_COLOR_BITMAP_GLYPH_SNAP_OPTION_FORCE_DWORD = 0xffffffff
} D2D1_COLOR_BITMAP_GLYPH_SNAP_OPTION;

interface ID2D1DeviceContext2 : public ID2D1DeviceContext1 {
    STDMETHOD(CreateInk)(const D2D1_INK_POINT* startPoint, ID2D1Ink** ink) PURE;
    STDMETHOD(CreateInkStyle)(const D2D1_INK_STYLE_PROPERTIES* properties, ID2D1InkStyle** inkStyle) PURE;
    STDMETHOD(CreateGradientMesh)
    (const D2D1_GRADIENT_MESH_PATCH* patches, UINT32 patchesCount, ID2D1GradientMesh** gradientMesh) PURE;
    STDMETHOD(CreateImageSourceFromWic)
    (IWICBitmapSource* wicBitmapSource, D2D1_IMAGE_SOURCE_LOADING_OPTIONS loadingOptions, D2D1_ALPHA_MODE alphaMode,
     ID2D1ImageSourceFromWic** imageSource) PURE;
    STDMETHOD(CreateLookupTable3D)
    (D2D1_BUFFER_PRECISION precision, const UINT32* extents, const BYTE* data, UINT32 dataCount, const UINT32* strides,
     ID2D1LookupTable3D** lookupTable) PURE;
    STDMETHOD(CreateImageSourceFromDxgi)
    (IDXGISurface** surfaces, UINT32 surfaceCount, DXGI_COLOR_SPACE_TYPE colorSpace,
     D2D1_IMAGE_SOURCE_FROM_DXGI_OPTIONS options, ID2D1ImageSource** imageSource) PURE;
    STDMETHOD(GetGradientMeshWorldBounds)(ID2D1GradientMesh* gradientMesh, D2D1_RECT_F* bounds) const PURE;
    STDMETHOD_(void, DrawInk)(ID2D1Ink* ink, ID2D1Brush* brush, ID2D1InkStyle* inkStyle) PURE;
    STDMETHOD_(void, DrawGradientMesh)(ID2D1GradientMesh* gradientMesh) PURE;
    STDMETHOD_(void, DrawGdiMetafile)
    (ID2D1GdiMetafile* gdiMetafile, const D2D1_RECT_F* destination, const D2D1_RECT_F* source = nullptr) PURE;
    using ID2D1DeviceContext::DrawGdiMetafile;
    STDMETHOD(CreateTransformedImageSource)
    (ID2D1ImageSource* imageSource, const D2D1_TRANSFORMED_IMAGE_SOURCE_PROPERTIES* properties,
     ID2D1TransformedImageSource** transformedImageSource) PURE;
};
__CRT_UUID_DECL(ID2D1DeviceContext2, 0x394ea6a3, 0x0c34, 0x4321, 0x95, 0x0b, 0x6c, 0xa2, 0x0f, 0x0b, 0xe6, 0xc7);

interface ID2D1DeviceContext3 : public ID2D1DeviceContext2 {
    STDMETHOD(CreateSpriteBatch)(ID2D1SpriteBatch** spriteBatch) PURE;
    STDMETHOD_(void, DrawSpriteBatch)
    (ID2D1SpriteBatch* spriteBatch, UINT32 startIndex, UINT32 spriteCount, ID2D1Bitmap* bitmap,
     D2D1_BITMAP_INTERPOLATION_MODE interpolationMode = D2D1_BITMAP_INTERPOLATION_MODE_LINEAR,
     D2D1_SPRITE_OPTIONS spriteOptions = D2D1_SPRITE_OPTIONS_NONE) PURE;
};
__CRT_UUID_DECL(ID2D1DeviceContext3, 0x235a7496, 0x8351, 0x414c, 0xbc, 0xd4, 0x66, 0x72, 0xab, 0x2d, 0x8e, 0x00);

interface ID2D1DeviceContext4 : public ID2D1DeviceContext3 {
    STDMETHOD(CreateSvgGlyphStyle)(ID2D1SvgGlyphStyle** svgGlyphStyle) PURE;
    STDMETHOD_(void, DrawText)
    (const WCHAR* string, UINT32 stringLength, IDWriteTextFormat* textFormat, const D2D1_RECT_F* layoutRect,
     ID2D1Brush* defaultFillBrush, ID2D1SvgGlyphStyle* svgGlyphStyle, UINT32 colorPaletteIndex = 0,
     D2D1_DRAW_TEXT_OPTIONS options = D2D1_DRAW_TEXT_OPTIONS_ENABLE_COLOR_FONT,
     DWRITE_MEASURING_MODE measuringMode = DWRITE_MEASURING_MODE_NATURAL) PURE;
    using ID2D1RenderTarget::DrawText;
    STDMETHOD_(void, DrawTextLayout)
    (D2D1_POINT_2F origin, IDWriteTextLayout* textLayout, ID2D1Brush* defaultFillBrush,
     ID2D1SvgGlyphStyle* svgGlyphStyle, UINT32 colorPaletteIndex = 0,
     D2D1_DRAW_TEXT_OPTIONS options = D2D1_DRAW_TEXT_OPTIONS_ENABLE_COLOR_FONT) PURE;
    using ID2D1RenderTarget::DrawTextLayout;
    STDMETHOD_(void, DrawColorBitmapGlyphRun)
    (DWRITE_GLYPH_IMAGE_FORMATS glyphImageFormat, D2D1_POINT_2F baselineOrigin, const DWRITE_GLYPH_RUN* glyphRun,
     DWRITE_MEASURING_MODE measuringMode = DWRITE_MEASURING_MODE_NATURAL,
     D2D1_COLOR_BITMAP_GLYPH_SNAP_OPTION bitmapSnapOption = D2D1_COLOR_BITMAP_GLYPH_SNAP_OPTION_DEFAULT) PURE;
    STDMETHOD_(void, DrawSvgGlyphRun)
    (D2D1_POINT_2F baselineOrigin, const DWRITE_GLYPH_RUN* glyphRun, ID2D1Brush* defaultFillBrush = nullptr,
     ID2D1SvgGlyphStyle* svgGlyphStyle = nullptr, UINT32 colorPaletteIndex = 0,
     DWRITE_MEASURING_MODE measuringMode = DWRITE_MEASURING_MODE_NATURAL) PURE;
    STDMETHOD(GetColorBitmapGlyphImage)
    (DWRITE_GLYPH_IMAGE_FORMATS glyphImageFormat, D2D1_POINT_2F glyphOrigin, IDWriteFontFace* fontFace,
     FLOAT fontEmSize, UINT16 glyphIndex, BOOL isSideways, const D2D1_MATRIX_3X2_F* worldTransform, FLOAT dpiX,
     FLOAT dpiY, D2D1_MATRIX_3X2_F* glyphTransform, ID2D1Image** glyphImage) PURE;
    STDMETHOD(GetSvgGlyphImage)
    (D2D1_POINT_2F glyphOrigin, IDWriteFontFace* fontFace, FLOAT fontEmSize, UINT16 glyphIndex, BOOL isSideways,
     const D2D1_MATRIX_3X2_F* worldTransform, ID2D1Brush* defaultFillBrush, ID2D1SvgGlyphStyle* svgGlyphStyle,
     UINT32 colorPaletteIndex, D2D1_MATRIX_3X2_F* glyphTransform, ID2D1CommandList** glyphImage) PURE;
};
__CRT_UUID_DECL(ID2D1DeviceContext4, 0x8c427831, 0x3d90, 0x4476, 0xb6, 0x47, 0xc4, 0xfa, 0xe3, 0x49, 0xe4, 0xdb);

interface ID2D1DeviceContext5 : public ID2D1DeviceContext4 {
    STDMETHOD(CreateSvgDocument)
    (IStream* inputXmlStream, D2D1_SIZE_F viewportSize, ID2D1SvgDocument** svgDocument) PURE;
    STDMETHOD_(void, DrawSvgDocument)(ID2D1SvgDocument* svgDocument) PURE;
    STDMETHOD(CreateColorContextFromDxgiColorSpace)
    (DXGI_COLOR_SPACE_TYPE colorSpace, ID2D1ColorContext1** colorContext) PURE;
    STDMETHOD(CreateColorContextFromSimpleColorProfile)
    (const D2D1_SIMPLE_COLOR_PROFILE* simpleProfile, ID2D1ColorContext1** colorContext) PURE;
};
__CRT_UUID_DECL(ID2D1DeviceContext5, 0x7836d248, 0x68cc, 0x4df6, 0xb9, 0xe8, 0xde, 0x99, 0x1b, 0xf6, 0x2e, 0xb7);

interface ID2D1Device2 : public ID2D1Device1 {
    STDMETHOD(CreateDeviceContext)(D2D1_DEVICE_CONTEXT_OPTIONS options, ID2D1DeviceContext2** context) PURE;
    using ID2D1Device1::CreateDeviceContext;
    STDMETHOD_(void, FlushDeviceContexts)(ID2D1Bitmap* bitmap) PURE;
    STDMETHOD(GetDxgiDevice)(IDXGIDevice** dxgiDevice) PURE;
};
__CRT_UUID_DECL(ID2D1Device2, 0xa44472e1, 0x8dfb, 0x4e60, 0x84, 0x92, 0x6e, 0x28, 0x61, 0xc9, 0xca, 0x8b);

interface ID2D1Factory3 : public ID2D1Factory2 {
    STDMETHOD(CreateDevice)(IDXGIDevice* dxgiDevice, ID2D1Device2** device) PURE;
    using ID2D1Factory2::CreateDevice;
};
__CRT_UUID_DECL(ID2D1Factory3, 0x0869759f, 0x4f00, 0x413f, 0xb0, 0x3e, 0x2b, 0xda, 0x45, 0x40, 0x4d, 0x0f);
