// DirectWrite: fonts, text formats and layouts. Interfaces hold the methods that have a caller here, in the order of
// the system's tables. Implemented in Platform/Linux/DirectWrite.
#pragma once

#include <d2d1.h>

enum DWRITE_FACTORY_TYPE : int { DWRITE_FACTORY_TYPE_SHARED = 0, DWRITE_FACTORY_TYPE_ISOLATED = 1 };

enum DWRITE_FONT_WEIGHT : int {
    DWRITE_FONT_WEIGHT_THIN = 100,
    DWRITE_FONT_WEIGHT_LIGHT = 300,
    DWRITE_FONT_WEIGHT_NORMAL = 400,
    DWRITE_FONT_WEIGHT_REGULAR = 400,
    DWRITE_FONT_WEIGHT_MEDIUM = 500,
    DWRITE_FONT_WEIGHT_SEMI_BOLD = 600,
    DWRITE_FONT_WEIGHT_BOLD = 700,
    DWRITE_FONT_WEIGHT_BLACK = 900,
};

enum DWRITE_FONT_STRETCH : int {
    DWRITE_FONT_STRETCH_UNDEFINED = 0,
    DWRITE_FONT_STRETCH_ULTRA_CONDENSED = 1,
    DWRITE_FONT_STRETCH_CONDENSED = 3,
    DWRITE_FONT_STRETCH_NORMAL = 5,
    DWRITE_FONT_STRETCH_EXPANDED = 7,
    DWRITE_FONT_STRETCH_ULTRA_EXPANDED = 9,
};

enum DWRITE_FONT_STYLE : int {
    DWRITE_FONT_STYLE_NORMAL = 0,
    DWRITE_FONT_STYLE_OBLIQUE = 1,
    DWRITE_FONT_STYLE_ITALIC = 2,
};

enum DWRITE_TEXT_ALIGNMENT : int {
    DWRITE_TEXT_ALIGNMENT_LEADING = 0,
    DWRITE_TEXT_ALIGNMENT_TRAILING = 1,
    DWRITE_TEXT_ALIGNMENT_CENTER = 2,
    DWRITE_TEXT_ALIGNMENT_JUSTIFIED = 3,
};

enum DWRITE_PARAGRAPH_ALIGNMENT : int {
    DWRITE_PARAGRAPH_ALIGNMENT_NEAR = 0,
    DWRITE_PARAGRAPH_ALIGNMENT_FAR = 1,
    DWRITE_PARAGRAPH_ALIGNMENT_CENTER = 2,
};

enum DWRITE_WORD_WRAPPING : int {
    DWRITE_WORD_WRAPPING_WRAP = 0,
    DWRITE_WORD_WRAPPING_NO_WRAP = 1,
    DWRITE_WORD_WRAPPING_EMERGENCY_BREAK = 2,
    DWRITE_WORD_WRAPPING_WHOLE_WORD = 3,
    DWRITE_WORD_WRAPPING_CHARACTER = 4,
};

enum DWRITE_READING_DIRECTION : int {
    DWRITE_READING_DIRECTION_LEFT_TO_RIGHT = 0,
    DWRITE_READING_DIRECTION_RIGHT_TO_LEFT = 1,
};

enum DWRITE_FLOW_DIRECTION : int {
    DWRITE_FLOW_DIRECTION_TOP_TO_BOTTOM = 0,
    DWRITE_FLOW_DIRECTION_BOTTOM_TO_TOP = 1,
};

struct IDWriteFactory;
struct IDWriteFontFace;
struct IDWriteInlineObject;

using IDWriteGeometrySink = ID2D1SimplifiedGeometrySink;

struct DWRITE_MATRIX {
    FLOAT m11;
    FLOAT m12;
    FLOAT m21;
    FLOAT m22;
    FLOAT dx;
    FLOAT dy;
};

struct DWRITE_GLYPH_OFFSET {
    FLOAT advanceOffset;
    FLOAT ascenderOffset;
};

struct DWRITE_GLYPH_RUN {
    IDWriteFontFace* fontFace;
    FLOAT fontEmSize;
    UINT32 glyphCount;
    const UINT16* glyphIndices;
    const FLOAT* glyphAdvances;
    const DWRITE_GLYPH_OFFSET* glyphOffsets;
    BOOL isSideways;
    UINT32 bidiLevel;  // An odd one runs to the left: the origin is at its right end.
};

/// Where a run's text comes from.
struct DWRITE_GLYPH_RUN_DESCRIPTION {
    const WCHAR* localeName;
    const WCHAR* string;
    UINT32 stringLength;
    const UINT16* clusterMap;
    UINT32 textPosition;
};

/// Offsets count downward from the baseline to the line's upper edge.
struct DWRITE_UNDERLINE {
    FLOAT width;
    FLOAT thickness;
    FLOAT offset;
    FLOAT runHeight;
    DWRITE_READING_DIRECTION readingDirection;
    DWRITE_FLOW_DIRECTION flowDirection;
    const WCHAR* localeName;
    DWRITE_MEASURING_MODE measuringMode;
};

struct DWRITE_STRIKETHROUGH {
    FLOAT width;
    FLOAT thickness;
    FLOAT offset;
    DWRITE_READING_DIRECTION readingDirection;
    DWRITE_FLOW_DIRECTION flowDirection;
    const WCHAR* localeName;
    DWRITE_MEASURING_MODE measuringMode;
};

/// Counts WCHARs.
struct DWRITE_TEXT_RANGE {
    UINT32 startPosition;
    UINT32 length;
};

/// Lengths count WCHARs and contain each other: the line's with its trailing white space, that with its line break.
struct DWRITE_LINE_METRICS {
    UINT32 length;
    UINT32 trailingWhitespaceLength;
    UINT32 newlineLength;
    FLOAT height;
    FLOAT baseline;
    BOOL isTrimmed;
};

/// In device-independent pixels, against the layout box's upper left corner.
struct DWRITE_TEXT_METRICS {
    FLOAT left;
    FLOAT top;
    FLOAT width;
    FLOAT widthIncludingTrailingWhitespace;
    FLOAT height;
    FLOAT layoutWidth;
    FLOAT layoutHeight;
    UINT32 maxBidiReorderingDepth;
    UINT32 lineCount;
};

struct IDWriteFontFileLoader : IUnknown {};
VELORINTH_DECLARE_IID(IDWriteFontFileLoader, 0x727cad4e, 0xd6af, 0x4c9e, 0x8a, 0x08, 0xd6, 0x95, 0xb1, 0x1c, 0xaa,
                      0x49);

struct IDWriteFontFile : IUnknown {};
VELORINTH_DECLARE_IID(IDWriteFontFile, 0x739d886a, 0xcef5, 0x47dc, 0x87, 0x69, 0x1a, 0x8b, 0x41, 0xbe, 0xbb, 0xb0);

struct IDWriteFontFace : IUnknown {
    /// Adds the run's glyphs as closed figures, y downward, the run's origin at (0, 0), and sets the winding fill mode.
    /// A null `advances` stands for the face's own, a null `offsets` for none.
    virtual HRESULT STDMETHODCALLTYPE GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphs, const FLOAT* advances,
                                                         const DWRITE_GLYPH_OFFSET* offsets, UINT32 count,
                                                         BOOL isSideways, BOOL isRightToLeft,
                                                         IDWriteGeometrySink* sink) = 0;
};
VELORINTH_DECLARE_IID(IDWriteFontFace, 0x5f49804d, 0x7024, 0x4d43, 0xbf, 0xa9, 0xd2, 0x59, 0x84, 0xf5, 0x38, 0x49);

struct IDWriteFontCollection : IUnknown {
    virtual UINT32 STDMETHODCALLTYPE GetFontFamilyCount() = 0;
    /// Family names match without regard to case. A name that is not there is S_OK with `*exists` FALSE and `*index`
    /// 0xFFFFFFFF.
    virtual HRESULT STDMETHODCALLTYPE FindFamilyName(const WCHAR* name, UINT32* index, BOOL* exists) = 0;
};
VELORINTH_DECLARE_IID(IDWriteFontCollection, 0xa84cee02, 0x3eea, 0x4eee, 0xa8, 0x27, 0x87, 0xc1, 0xa0, 0x2a, 0x0f,
                      0xcc);

struct IDWritePixelSnapping : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void* context, BOOL* disabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCurrentTransform(void* context, DWRITE_MATRIX* transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void* context, FLOAT* pixelsPerDip) = 0;
};
VELORINTH_DECLARE_IID(IDWritePixelSnapping, 0xeaf3a2da, 0xecf4, 0x4d24, 0xb6, 0x44, 0xb3, 0x4f, 0x68, 0x42, 0x02, 0x4b);

struct IDWriteTextRenderer : IDWritePixelSnapping {
    virtual HRESULT STDMETHODCALLTYPE DrawGlyphRun(void* context, FLOAT baselineX, FLOAT baselineY,
                                                   DWRITE_MEASURING_MODE measuring, const DWRITE_GLYPH_RUN* run,
                                                   const DWRITE_GLYPH_RUN_DESCRIPTION* description,
                                                   IUnknown* effect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawUnderline(void* context, FLOAT baselineX, FLOAT baselineY,
                                                    const DWRITE_UNDERLINE* underline, IUnknown* effect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawStrikethrough(void* context, FLOAT baselineX, FLOAT baselineY,
                                                        const DWRITE_STRIKETHROUGH* strikethrough,
                                                        IUnknown* effect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawInlineObject(void* context, FLOAT originX, FLOAT originY,
                                                       IDWriteInlineObject* object, BOOL isSideways, BOOL isRightToLeft,
                                                       IUnknown* effect) = 0;
};
VELORINTH_DECLARE_IID(IDWriteTextRenderer, 0xef8a8135, 0x5cc6, 0x45fe, 0x88, 0x25, 0xc5, 0xa0, 0x72, 0x4e, 0xb8, 0x19);

struct IDWriteTextFormat : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE SetTextAlignment(DWRITE_TEXT_ALIGNMENT alignment) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT alignment) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetWordWrapping(DWRITE_WORD_WRAPPING wrapping) = 0;
    virtual DWRITE_TEXT_ALIGNMENT STDMETHODCALLTYPE GetTextAlignment() = 0;
    virtual DWRITE_PARAGRAPH_ALIGNMENT STDMETHODCALLTYPE GetParagraphAlignment() = 0;
    virtual DWRITE_WORD_WRAPPING STDMETHODCALLTYPE GetWordWrapping() = 0;
    /// Adds a reference to what it returns; null stands for the system's fonts.
    virtual HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** collection) = 0;
    /// Without the terminating zero.
    virtual UINT32 STDMETHODCALLTYPE GetFontFamilyNameLength() = 0;
    /// `size` counts the terminating zero; E_NOT_SUFFICIENT_BUFFER if it is too small.
    virtual HRESULT STDMETHODCALLTYPE GetFontFamilyName(WCHAR* name, UINT32 size) = 0;
    virtual DWRITE_FONT_WEIGHT STDMETHODCALLTYPE GetFontWeight() = 0;
    virtual DWRITE_FONT_STYLE STDMETHODCALLTYPE GetFontStyle() = 0;
    virtual DWRITE_FONT_STRETCH STDMETHODCALLTYPE GetFontStretch() = 0;
    /// In device-independent pixels.
    virtual FLOAT STDMETHODCALLTYPE GetFontSize() = 0;
    virtual UINT32 STDMETHODCALLTYPE GetLocaleNameLength() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLocaleName(WCHAR* name, UINT32 size) = 0;
};
VELORINTH_DECLARE_IID(IDWriteTextFormat, 0x9c906818, 0x31d7, 0x4fd3, 0xa1, 0x51, 0x7c, 0x5e, 0x22, 0x5d, 0xb5, 0x5a);

/// Text set in a box. White space at the end of a line hangs over and counts for no alignment. One thread at a time.
struct IDWriteTextLayout : IDWriteTextFormat {
    virtual HRESULT STDMETHODCALLTYPE SetMaxWidth(FLOAT maxWidth) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetMaxHeight(FLOAT maxHeight) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetUnderline(BOOL underline, DWRITE_TEXT_RANGE range) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrikethrough(BOOL strikethrough, DWRITE_TEXT_RANGE range) = 0;
    virtual FLOAT STDMETHODCALLTYPE GetMaxWidth() = 0;
    virtual FLOAT STDMETHODCALLTYPE GetMaxHeight() = 0;
    /// Hands each glyph run, with its place, to the renderer.
    virtual HRESULT STDMETHODCALLTYPE Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX,
                                           FLOAT originY) = 0;
    /// E_NOT_SUFFICIENT_BUFFER if there are more lines than `maxCount`; `actualCount` tells how many there are.
    virtual HRESULT STDMETHODCALLTYPE GetLineMetrics(DWRITE_LINE_METRICS* metrics, UINT32 maxCount,
                                                     UINT32* actualCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_TEXT_METRICS* metrics) = 0;
};
VELORINTH_DECLARE_IID(IDWriteTextLayout, 0x53737037, 0x6d14, 0x410b, 0x9b, 0xfe, 0x0b, 0x18, 0x2b, 0xb7, 0x09, 0x61);

/// Makes fonts, formats and layouts. Any thread.
struct IDWriteFactory : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE RegisterFontFileLoader(IDWriteFontFileLoader* loader) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnregisterFontFileLoader(IDWriteFontFileLoader* loader) = 0;
    /// A null collection stands for the system's fonts. The family need not exist. `size` is in device-independent
    /// pixels and above 0.
    virtual HRESULT STDMETHODCALLTYPE CreateTextFormat(const WCHAR* family, IDWriteFontCollection* collection,
                                                       DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                                                       DWRITE_FONT_STRETCH stretch, FLOAT size, const WCHAR* locale,
                                                       IDWriteTextFormat** format) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTextLayout(const WCHAR* text, UINT32 length, IDWriteTextFormat* format,
                                                       FLOAT maxWidth, FLOAT maxHeight, IDWriteTextLayout** layout) = 0;
};
VELORINTH_DECLARE_IID(IDWriteFactory, 0xb859ee5a, 0xd838, 0x4b5b, 0xa2, 0xe8, 0x1a, 0xdc, 0x7d, 0x93, 0xdb, 0x48);

/// Makes a factory: IDWriteFactory to IDWriteFactory5. The shared kind is one object for the process.
HRESULT WINAPI DWriteCreateFactory(DWRITE_FACTORY_TYPE type, REFIID iid, IUnknown** factory) noexcept;
