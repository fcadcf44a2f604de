#include "Scene/TextPrimitive.h"

#include "Core/DeviceManager.h"
#include "Scene/DrawContext.h"
#include "Scene/GlyphOutlineRenderer.h"

#include <algorithm>

namespace Tamborel {

using Microsoft::WRL::ComPtr;

bool TextPrimitive::HitTest(Point local) const {
    return Contains(bounds, local);
}

void TextPrimitive::Prepare(DrawContext& context) {
    if (layoutDirty) {
        layout.Reset();
        outline.Reset();
        // Cleared before anything is tried: what fails once is not tried again in every frame.
        layoutDirty = false;
        if (!text.empty() && !MakeLayout()) return;
    }
    SceneNode::Prepare(context);
}

bool TextPrimitive::MakeLayout() {
    const DeviceManager& devices = DeviceManager::Get();
    IDWriteFactory3* const factory = devices.GetDWriteFactory();
    if (!factory) return false;
    ComPtr<IDWriteTextFormat> format;
    const HRESULT made = factory->CreateTextFormat(
        fontFamily.c_str(), nullptr, static_cast<DWRITE_FONT_WEIGHT>(fontWeight), DWRITE_FONT_STYLE_NORMAL,
        DWRITE_FONT_STRETCH_NORMAL, fontSize, L"", format.GetAddressOf());
    if (FAILED(made) || !format) return false;
    format->SetTextAlignment(static_cast<DWRITE_TEXT_ALIGNMENT>(textAlignment));
    format->SetParagraphAlignment(static_cast<DWRITE_PARAGRAPH_ALIGNMENT>(paragraphAlignment));
    format->SetWordWrapping(static_cast<DWRITE_WORD_WRAPPING>(wordWrapping));
    const float width = std::max(0.0F, bounds.right - bounds.left);
    const float height = std::max(0.0F, bounds.bottom - bounds.top);
    factory->CreateTextLayout(text.c_str(), static_cast<UINT32>(text.size()), format.Get(), width, height,
                              layout.GetAddressOf());
    // Made without a stroke as well, so that giving the text one later costs no rebuild.
    if (layout) outline = GlyphOutlineBuilder(layout.Get(), devices.GetD2DFactory(), bounds.left, bounds.top);
    return true;
}

void TextPrimitive::Draw(DrawContext& context) {
    context.SetTransform(worldTransform);
    const bool clipped = PushNodeClip(context);
    if (layout) {
        if (clipToBounds) context.PushClip(bounds, D2D1_ANTIALIAS_MODE_ALIASED);
        // The stroke goes first: the fill covers its inner half.
        if (outlineWidth > 0 && outline) {
            context.StrokeGeometry(outline.Get(), context.GetBrush(outlineColor), outlineWidth);
        }
        context.DrawLayout({bounds.left, bounds.top}, layout.Get(), context.GetBrush(color));
        if (clipToBounds) context.PopClip();
    }
    DrawChildren(context);
    PopNodeClip(context, clipped);
}

}  // namespace Tamborel
