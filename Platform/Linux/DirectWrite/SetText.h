// From glyphs to lines in a box.
#pragma once

#include "Platform/Linux/DirectWrite/ShapedText.h"
#include "Platform/Linux/DirectWrite/TextContent.h"

#include <vector>

namespace Platform::DirectWrite {

/// The box that text is set in, and how.
struct TextBox {
    float width = 0.0F;
    float height = 0.0F;
    float tabWidth = 0.0F;
    DWRITE_TEXT_ALIGNMENT alignment = DWRITE_TEXT_ALIGNMENT_LEADING;
    DWRITE_PARAGRAPH_ALIGNMENT paragraphAlignment = DWRITE_PARAGRAPH_ALIGNMENT_NEAR;
    DWRITE_WORD_WRAPPING wrapping = DWRITE_WORD_WRAPPING_WRAP;
};

/// For each character whether it is marked; empty if none is.
struct TextMarks {
    std::vector<bool> underlined;
    std::vector<bool> struckThrough;
};

/// A line as clusters.
struct Line {
    std::size_t first;
    std::size_t end;   ///< With the white space that hangs over.
    std::size_t last;  ///< The end without it.
    float width;       ///< Without it.
    float fullWidth;
    UINT32 text;
    UINT32 length;  ///< With the line break.
    UINT32 newlineLength;
    bool wrapped;  ///< The paragraph goes on in the next line.
};

/// Breaks the paragraphs into lines and gives tabs their widths.
std::vector<Line> BreakLines(ShapedText& text, const TextBox& box);

/// Sets the text. Throws std::bad_alloc.
TextContent SetText(ShapedText text, const TextBox& box, const TextMarks& marks);

}  // namespace Platform::DirectWrite
