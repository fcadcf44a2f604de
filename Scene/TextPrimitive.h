#pragma once

#include "Scene/Records.h"
#include "Scene/SceneNode.h"

#include <d2d1_3.h>
#include <dwrite_3.h>
#include <wrl/client.h>

#include <cstdint>
#include <string>

namespace Tamborel {

/// One block of text inside a box. Its layout and the outline of its glyphs are made by `Prepare` when `layoutDirty`
/// says so, and only then: whoever writes one of the fields that shape the text sets the flag as well. The node never
/// measures itself.
///
/// A text that can't be laid out paints nothing until the flag is set again. Families are the system's; an unknown one
/// is substituted by DirectWrite.
class TextPrimitive : public SceneNode {
public:
    // A change counts at once, or, where it says so, once `layoutDirty` is set.

    std::wstring text;  ///< Needs the flag.
    /// In local space: where the text goes, and what is hit. Nothing is cut at it (see `clipToBounds`). Needs the flag.
    Rect bounds;
    Color color{1, 1, 1, 1};                         ///< Of the glyphs.
    std::wstring fontFamily = L"Segoe UI Variable";  ///< Needs the flag, as all down to `wordWrapping` do.
    float fontSize = 14.0F;                          ///< In units of local space, above 0.
    std::uint32_t fontWeight = 400;                  ///< A DWRITE_FONT_WEIGHT.
    std::uint32_t textAlignment = 0;                 ///< A DWRITE_TEXT_ALIGNMENT; 0 is leading.
    std::uint32_t paragraphAlignment = 2;            ///< A DWRITE_PARAGRAPH_ALIGNMENT; 2 is the middle of `bounds`.
    std::uint32_t wordWrapping = 0;                  ///< A DWRITE_WORD_WRAPPING; 0 wraps.
    Color outlineColor{0, 0, 0, 1};                  ///< Of the stroke around the glyphs.
    float outlineWidth = 0;                          ///< The outer half of it shows. No stroke at 0.
    bool clipToBounds = false;                       ///< Cuts glyphs at `bounds`, along whole pixels.

    // What `Prepare` made. Both belong to no device, so a lost one does not touch them.

    Microsoft::WRL::ComPtr<IDWriteTextLayout> layout;
    Microsoft::WRL::ComPtr<ID2D1Geometry> outline;  ///< Placed at `bounds`.
    bool layoutDirty = true;                        ///< Set: the next `Prepare` makes both anew.

    ~TextPrimitive() override = default;

    /// Edges on the left and top of `bounds` are inside, those on the right and bottom are not.
    bool HitTest(Point local) const override;
    void Prepare(DrawContext& context) override;
    void Draw(DrawContext& context) override;

private:
    /// False if there is no text format to be had.
    bool MakeLayout();
};

}  // namespace Tamborel
