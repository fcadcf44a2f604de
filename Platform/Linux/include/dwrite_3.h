// DirectWrite 3: font sets, and fonts that lie in memory.
#pragma once

#include <dwrite_2.h>

struct IDWriteFontSet : IUnknown {
    virtual UINT32 STDMETHODCALLTYPE GetFontCount() = 0;
};
VELORINTH_DECLARE_IID(IDWriteFontSet, 0x53585141, 0xd9f8, 0x4095, 0x83, 0x21, 0xd7, 0x3c, 0xf6, 0xbd, 0x11, 0x6b);

struct IDWriteFontCollection1 : IDWriteFontCollection {
    virtual HRESULT STDMETHODCALLTYPE GetFontSet(IDWriteFontSet** set) = 0;
};
VELORINTH_DECLARE_IID(IDWriteFontCollection1, 0x53585141, 0xd9f8, 0x4095, 0x83, 0x21, 0xd7, 0x3c, 0xf6, 0xbd, 0x11,
                      0x6c);

struct IDWriteFontSetBuilder : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE AddFontSet(IDWriteFontSet* set) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFontSet(IDWriteFontSet** set) = 0;
};
VELORINTH_DECLARE_IID(IDWriteFontSetBuilder, 0x2f642afe, 0x9c68, 0x4f40, 0xb8, 0xbe, 0x45, 0x74, 0x01, 0xaf, 0xcb,
                      0x3d);

struct IDWriteFontSetBuilder1 : IDWriteFontSetBuilder {
    /// Adds every face of the file. DWRITE_E_FILEFORMAT if it holds no font.
    virtual HRESULT STDMETHODCALLTYPE AddFontFile(IDWriteFontFile* file) = 0;
};
VELORINTH_DECLARE_IID(IDWriteFontSetBuilder1, 0x3ff7715f, 0x3cdc, 0x4dc6, 0x9b, 0x72, 0xec, 0x56, 0x21, 0xdc, 0xca,
                      0xfd);

struct IDWriteInMemoryFontFileLoader : IDWriteFontFileLoader {
    /// With an owner, the file reads `data` where it lies and holds a reference to the owner; without one it keeps a
    /// copy. E_INVALIDARG if the loader is not registered with the factory.
    virtual HRESULT STDMETHODCALLTYPE CreateInMemoryFontFileReference(IDWriteFactory* factory, const void* data,
                                                                      UINT32 size, IUnknown* owner,
                                                                      IDWriteFontFile** file) = 0;
    virtual UINT32 STDMETHODCALLTYPE GetFileCount() = 0;
};
VELORINTH_DECLARE_IID(IDWriteInMemoryFontFileLoader, 0xdc102f47, 0xa12d, 0x4b1c, 0x82, 0x2d, 0x9e, 0x11, 0x7e, 0x33,
                      0x04, 0x3f);

struct IDWriteFactory3 : IDWriteFactory2 {
    virtual HRESULT STDMETHODCALLTYPE CreateFontSetBuilder(IDWriteFontSetBuilder** builder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFontCollectionFromFontSet(IDWriteFontSet* set,
                                                                      IDWriteFontCollection1** collection) = 0;
};
VELORINTH_DECLARE_IID(IDWriteFactory3, 0x9a1b41c3, 0xd3bb, 0x466a, 0x87, 0xfc, 0xfe, 0x67, 0x55, 0x6a, 0x3b, 0x65);

struct IDWriteFactory4 : IDWriteFactory3 {};
VELORINTH_DECLARE_IID(IDWriteFactory4, 0x4b0b5bd3, 0x0797, 0x4549, 0x8a, 0xc5, 0xfe, 0x91, 0x5c, 0xc5, 0x38, 0x56);

struct IDWriteFactory5 : IDWriteFactory4 {
    using IDWriteFactory3::CreateFontSetBuilder;
    virtual HRESULT STDMETHODCALLTYPE CreateFontSetBuilder(IDWriteFontSetBuilder1** builder) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateInMemoryFontFileLoader(IDWriteInMemoryFontFileLoader** loader) = 0;
};
VELORINTH_DECLARE_IID(IDWriteFactory5, 0x958db99a, 0xbe2a, 0x4f09, 0xaf, 0x7d, 0x65, 0x18, 0x98, 0x03, 0xd1, 0xd3);

constexpr HRESULT DWRITE_E_FILEFORMAT = static_cast<HRESULT>(0x88985000);
