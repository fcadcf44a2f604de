// The context's drawing calls.

#include "Platform/Linux/Direct2D/DeviceContext.h"
#include "Platform/Linux/Direct2D/SolidColorBrush.h"
#include "Platform/Linux/Direct2D/Transform.h"

#include <new>
#include <typeinfo>

namespace Platform::Direct2D {

bool DeviceContext::CanDraw() noexcept {
    if (!drawing_ || !target_) Fail(D2DERR_WRONG_STATE);
    return SUCCEEDED(failure_);
}

void DeviceContext::Record(Shape shape, const D2D1_COLOR_F& color, std::optional<float> strokeWidth) noexcept try {
    DrawCommand command{std::move(shape), transform_, color, strokeWidth, antialiasMode_ != D2D1_ANTIALIAS_MODE_ALIASED,
                        std::nullopt,     {}};
    if (!clips_.empty()) command.clip = clips_.back();
    const D2D1_SIZE_U size = target_->GetPixelSize();
    command.bounds = BoundsOf(command, {0, 0, static_cast<int>(size.width), static_cast<int>(size.height)});
    if (!command.bounds.IsEmpty()) list_.commands.push_back(std::move(command));
} catch (const std::bad_alloc&) {
    Fail(E_OUTOFMEMORY);
}

void DeviceContext::Paint(Shape shape, ID2D1Brush* brush, std::optional<float> strokeWidth,
                          ID2D1StrokeStyle* style) noexcept {
    if (!CanDraw()) return;
    if (style) {
        Fail(NotImplemented("A stroke style"));
        return;
    }
    // All of this system's brushes are of one final class; asking so costs a tenth of a cast, for every drawing call.
    if (!brush || typeid(*brush) != typeid(SolidColorBrush)) {
        Fail(E_INVALIDARG);
        return;
    }
    const auto& solid = static_cast<const SolidColorBrush&>(*brush);
    D2D1_COLOR_F color = solid.GetColor();
    color.a *= solid.GetOpacity();
    Record(std::move(shape), color, strokeWidth);
}

void DeviceContext::DrawLine(D2D1_POINT_2F from, D2D1_POINT_2F to, ID2D1Brush* brush, FLOAT strokeWidth,
                             ID2D1StrokeStyle* style) {
    Paint(LineShape{from, to}, brush, strokeWidth, style);
}

void DeviceContext::DrawRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush, FLOAT strokeWidth,
                                  ID2D1StrokeStyle* style) {
    Paint(RectShape{*rect}, brush, strokeWidth, style);
}

void DeviceContext::FillRectangle(const D2D1_RECT_F* rect, ID2D1Brush* brush) {
    Paint(RectShape{*rect}, brush, std::nullopt, nullptr);
}

void DeviceContext::DrawRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush, FLOAT strokeWidth,
                                         ID2D1StrokeStyle* style) {
    Paint(RoundedRectShape{*rect}, brush, strokeWidth, style);
}

void DeviceContext::FillRoundedRectangle(const D2D1_ROUNDED_RECT* rect, ID2D1Brush* brush) {
    Paint(RoundedRectShape{*rect}, brush, std::nullopt, nullptr);
}

void DeviceContext::DrawEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush, FLOAT strokeWidth,
                                ID2D1StrokeStyle* style) {
    Paint(EllipseShape{*ellipse}, brush, strokeWidth, style);
}

void DeviceContext::FillEllipse(const D2D1_ELLIPSE* ellipse, ID2D1Brush* brush) {
    Paint(EllipseShape{*ellipse}, brush, std::nullopt, nullptr);
}

void DeviceContext::PaintGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, std::optional<float> strokeWidth,
                                  ID2D1StrokeStyle* style) noexcept {
    if (!CanDraw()) return;
    const auto* const source = dynamic_cast<const PathSource*>(geometry);
    std::shared_ptr<const Path> path = source ? source->GetPath() : nullptr;
    if (!path) {
        Fail(source ? D2DERR_WRONG_STATE : E_INVALIDARG);
        return;
    }
    Paint(PathShape{std::move(path)}, brush, strokeWidth, style);
}

void DeviceContext::DrawGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, FLOAT strokeWidth,
                                 ID2D1StrokeStyle* style) {
    PaintGeometry(geometry, brush, strokeWidth, style);
}

void DeviceContext::FillGeometry(ID2D1Geometry* geometry, ID2D1Brush* brush, ID2D1Brush* opacityBrush) {
    if (opacityBrush) Fail(NotImplemented("FillGeometry with an opacity brush"));
    PaintGeometry(geometry, brush, std::nullopt, nullptr);
}

}  // namespace Platform::Direct2D
