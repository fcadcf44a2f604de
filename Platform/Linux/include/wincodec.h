// WIC: image decoding. Interfaces hold the methods that have a caller here, in the order of the system's tables.
// Implemented in Platform/Linux/Imaging.
#pragma once

#include <combaseapi.h>
#include <objidl.h>

struct IWICPalette;

using WICPixelFormatGUID = GUID;
using REFWICPixelFormatGUID = REFGUID;

enum WICDecodeOptions : UINT32 { WICDecodeMetadataCacheOnDemand = 0, WICDecodeMetadataCacheOnLoad = 1 };
enum WICBitmapDitherType : UINT32 { WICBitmapDitherTypeNone = 0 };
enum WICBitmapPaletteType : UINT32 { WICBitmapPaletteTypeCustom = 0, WICBitmapPaletteTypeMedianCut = 1 };

struct WICRect {
    INT X;
    INT Y;
    INT Width;
    INT Height;
};

constexpr HRESULT WINCODEC_ERR_WRONGSTATE = static_cast<HRESULT>(0x88982F04);
constexpr HRESULT WINCODEC_ERR_NOTINITIALIZED = static_cast<HRESULT>(0x88982F0C);
constexpr HRESULT WINCODEC_ERR_COMPONENTNOTFOUND = static_cast<HRESULT>(0x88982F50);
constexpr HRESULT WINCODEC_ERR_IMAGESIZEOUTOFRANGE = static_cast<HRESULT>(0x88982F51);
constexpr HRESULT WINCODEC_ERR_BADIMAGE = static_cast<HRESULT>(0x88982F60);
constexpr HRESULT WINCODEC_ERR_BADHEADER = static_cast<HRESULT>(0x88982F61);
constexpr HRESULT WINCODEC_ERR_FRAMEMISSING = static_cast<HRESULT>(0x88982F62);
constexpr HRESULT WINCODEC_ERR_STREAMREAD = static_cast<HRESULT>(0x88982F72);
constexpr HRESULT WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT = static_cast<HRESULT>(0x88982F80);
constexpr HRESULT WINCODEC_ERR_INSUFFICIENTBUFFER = static_cast<HRESULT>(0x88982F8C);

inline constexpr CLSID CLSID_WICImagingFactory2{
    0x317d06e8, 0x5f24, 0x433d, {0xbd, 0xf7, 0x79, 0xce, 0x68, 0xd8, 0xab, 0xc2}};
inline constexpr GUID GUID_WICPixelFormat32bppPBGRA{
    0x6fddc324, 0x4e03, 0x4bfe, {0xb1, 0x85, 0x3d, 0x77, 0x76, 0x8d, 0xc9, 0x10}};

struct IWICBitmapSource : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetSize(UINT* width, UINT* height) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPixelFormat(WICPixelFormatGUID* format) = 0;
    /// A null rectangle is the whole picture; `stride` and `size` are in bytes.
    virtual HRESULT STDMETHODCALLTYPE CopyPixels(const WICRect* rect, UINT stride, UINT size, BYTE* pixels) = 0;
};
VELORINTH_DECLARE_IID(IWICBitmapSource, 0x00000120, 0xa8f2, 0x4877, 0xba, 0x0a, 0xfd, 0x2b, 0x66, 0x45, 0xfb, 0x94);

struct IWICBitmapFrameDecode : IWICBitmapSource {};
VELORINTH_DECLARE_IID(IWICBitmapFrameDecode, 0x3b16811b, 0x6a43, 0x4ec9, 0xa8, 0x13, 0x3d, 0x93, 0x0c, 0x13, 0xb9,
                      0x40);

struct IWICFormatConverter : IWICBitmapSource {
    virtual HRESULT STDMETHODCALLTYPE Initialize(IWICBitmapSource* source, REFWICPixelFormatGUID format,
                                                 WICBitmapDitherType dither, IWICPalette* palette,
                                                 double alphaThresholdPercent,
                                                 WICBitmapPaletteType paletteTranslate) = 0;
};
VELORINTH_DECLARE_IID(IWICFormatConverter, 0x00000301, 0xa8f2, 0x4877, 0xba, 0x0a, 0xfd, 0x2b, 0x66, 0x45, 0xfb, 0x94);

struct IWICBitmapDecoder : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetFrameCount(UINT* count) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFrame(UINT index, IWICBitmapFrameDecode** frame) = 0;
};
VELORINTH_DECLARE_IID(IWICBitmapDecoder, 0x9edde9e7, 0x8dee, 0x47ea, 0x99, 0xdf, 0xe6, 0xfa, 0xf2, 0xed, 0x44, 0xbf);

struct IWICStream : IStream {
    /// Once per stream. The bytes are not copied and stay where they are as long as the stream lives.
    virtual HRESULT STDMETHODCALLTYPE InitializeFromMemory(BYTE* bytes, DWORD size) = 0;
};
VELORINTH_DECLARE_IID(IWICStream, 0x135ff860, 0x22b7, 0x4ddf, 0xb0, 0xf6, 0x21, 0x8f, 0x4f, 0x29, 0x9a, 0x43);

struct IWICImagingFactory : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE CreateDecoderFromStream(IStream* stream, const GUID* vendor,
                                                              WICDecodeOptions options,
                                                              IWICBitmapDecoder** decoder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFormatConverter(IWICFormatConverter** converter) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateStream(IWICStream** stream) = 0;
};
VELORINTH_DECLARE_IID(IWICImagingFactory, 0xec5ec8a9, 0xc395, 0x4314, 0x9c, 0x77, 0x54, 0xd7, 0xa9, 0x35, 0xff, 0x70);

struct IWICImagingFactory2 : IWICImagingFactory {};
VELORINTH_DECLARE_IID(IWICImagingFactory2, 0x7b816b45, 0x1996, 0x4476, 0xb1, 0x32, 0xde, 0x9e, 0x24, 0x7c, 0x8a, 0xf0);
