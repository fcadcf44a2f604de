// The context's text.

#include "Platform/Linux/Direct2D/DeviceContext.h"

#include <dwrite.h>

#include <algorithm>

namespace Platform::Direct2D {

void DeviceContext::DrawText(const WCHAR* text, UINT length, IDWriteTextFormat* format, const D2D1_RECT_F* layoutRect,
                             ID2D1Brush* brush, D2D1_DRAW_TEXT_OPTIONS options, DWRITE_MEASURING_MODE) {
    if (!CanDraw()) return;
    if (!format || !layoutRect) {
        Fail(E_INVALIDARG);
        return;
    }
    ComPtr<IDWriteFactory> factory;
    ComPtr<IDWriteTextLayout> layout;
    HRESULT result = DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory),
                                         reinterpret_cast<IUnknown**>(factory.GetAddressOf()));
    if (SUCCEEDED(result)) {
        const float width = std::max(0.0F, layoutRect->right - layoutRect->left);
        const float height = std::max(0.0F, layoutRect->bottom - layoutRect->top);
        result = factory->CreateTextLayout(text, length, format, width, height, &layout);
    }
    if (FAILED(result)) {
        Fail(result);
        return;
    }
    const bool clip = (options & D2D1_DRAW_TEXT_OPTIONS_CLIP) != 0;
    if (clip) PushAxisAlignedClip(layoutRect, antialiasMode_);
    DrawTextLayout({layoutRect->left, layoutRect->top}, layout.Get(), brush, D2D1_DRAW_TEXT_OPTIONS_NONE);
    if (clip) PopAxisAlignedClip();
}

void DeviceContext::DrawTextLayout(D2D1_POINT_2F origin, IDWriteTextLayout* layout, ID2D1Brush* brush,
                                   D2D1_DRAW_TEXT_OPTIONS options) {
    if (!CanDraw()) return;
    auto* const source = dynamic_cast<DirectWrite::TextSource*>(layout);
    std::shared_ptr<const DirectWrite::TextContent> content = source ? source->Content() : nullptr;
    if (!content) {
        Fail(source ? E_OUTOFMEMORY : E_INVALIDARG);
        return;
    }
    const bool clip = (options & D2D1_DRAW_TEXT_OPTIONS_CLIP) != 0;
    const D2D1_RECT_F box{origin.x, origin.y, origin.x + content->metrics.layoutWidth,
                          origin.y + content->metrics.layoutHeight};
    if (clip) PushAxisAlignedClip(&box, antialiasMode_);
    Paint(TextShape{std::move(content), origin}, brush, std::nullopt, nullptr);
    if (clip) PopAxisAlignedClip();
}

}  // namespace Platform::Direct2D
