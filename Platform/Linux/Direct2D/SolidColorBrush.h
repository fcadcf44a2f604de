#pragma once

#include "Platform/Linux/Direct2D/Resource.h"

namespace Platform::Direct2D {

/// A colour to paint with. A drawing call takes the colour of the moment; later changes don't reach it.
class SolidColorBrush final : public Resource<ID2D1SolidColorBrush, ID2D1Brush> {
public:
    SolidColorBrush(ComPtr<ID2D1Factory> factory, const D2D1_COLOR_F& color, FLOAT opacity)
        : Resource("ID2D1SolidColorBrush", std::move(factory)), color_(color), opacity_(opacity) {}

    void SetOpacity(FLOAT opacity) override { opacity_ = opacity; }
    FLOAT GetOpacity() const override { return opacity_; }
    void SetColor(const D2D1_COLOR_F* color) override { color_ = *color; }
    D2D1_COLOR_F GetColor() const override { return color_; }

private:
    ~SolidColorBrush() override = default;

    D2D1_COLOR_F color_;
    FLOAT opacity_;
};

}  // namespace Platform::Direct2D
