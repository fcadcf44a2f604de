// A target in memory to draw on, and a context that draws on it.
#pragma once

#include "Platform/Linux/Direct2D/LayerTarget.h"

#include <d2d1_3.h>
#include <wrl/client.h>

#include <cstdint>
#include <optional>
#include <vector>

/// What one EndDraw handed over.
struct ComposedFrame {
    std::vector<std::uint32_t> pixels;  ///< Premultiplied, 0xAARRGGBB; rows without gaps. Empty if nothing was drawn.
    std::vector<Platform::Direct2D::PixelRect> painted;
    std::vector<Platform::Direct2D::PixelRect> changed;
    std::optional<D2D1_COLOR_F> clear;
};

/// Records what a target is handed. `result` is what the target answers.
struct ComposeRecord {
    std::vector<ComposedFrame> frames;
    HRESULT result = S_OK;
};

class Canvas {
public:
    explicit Canvas(UINT32 width, UINT32 height, D2D1_ALPHA_MODE alphaMode = D2D1_ALPHA_MODE_PREMULTIPLIED);

    ID2D1DeviceContext5& Context() { return *context_.Get(); }
    ID2D1Factory3& Factory() { return *factory_.Get(); }
    ID2D1Device2& Device() { return *device_.Get(); }
    ID2D1Bitmap1& Target() { return *target_.Get(); }
    ComposeRecord& Record() { return *record_; }

    Microsoft::WRL::ComPtr<ID2D1SolidColorBrush> Brush(float r, float g, float b, float a = 1.0F);

    /// Draws a frame and returns EndDraw's result.
    template <class Function>
    HRESULT Draw(Function draw) {
        context_->BeginDraw();
        draw(*context_.Get());
        return context_->EndDraw();
    }

    /// A pixel of the last frame. 0 if nothing was drawn.
    std::uint32_t Pixel(UINT32 x, UINT32 y) const;

private:
    UINT32 width_;
    std::shared_ptr<ComposeRecord> record_;
    std::unique_ptr<Platform::Direct2D::LayerTargetMaker> targets_;
    Microsoft::WRL::ComPtr<ID2D1Factory3> factory_;
    Microsoft::WRL::ComPtr<ID2D1Device2> device_;
    Microsoft::WRL::ComPtr<ID2D1DeviceContext5> context_;
    Microsoft::WRL::ComPtr<ID2D1Bitmap1> target_;
};
