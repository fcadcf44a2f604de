#include "Platform/Linux/Direct2D/InPlaceLayerTarget.h"

#include "Platform/Linux/Direct3D/SurfaceAccess.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Platform::Direct2D {

namespace {

/// Rounded to nearest, as a device stores a colour.
std::uint32_t PixelOf(const D2D1_COLOR_F& color) {
    const auto byte = [](float value) {
        // The comparison is false for what is not a number, which counts as 0.
        return value > 0.0F ? static_cast<std::uint32_t>(std::lround(std::min(value, 1.0F) * 255.0F)) : 0U;
    };
    return byte(color.a) << 24U | byte(color.r) << 16U | byte(color.g) << 8U | byte(color.b);
}

Pixels PixelsOf(const Direct3D::Texture& image) {
    return {reinterpret_cast<std::uint32_t*>(image.Pixels()), image.Stride() / sizeof(std::uint32_t),
            static_cast<int>(image.Size().width), static_cast<int>(image.Size().height)};
}

/// BlendSpans and FindSpans read only.
Pixels PixelsOf(const LayerFrame& frame, const D2D1_SIZE_U& size) {
    return {const_cast<std::uint32_t*>(reinterpret_cast<const std::uint32_t*>(frame.pixels)),
            frame.stride / sizeof(std::uint32_t), static_cast<int>(size.width), static_cast<int>(size.height)};
}

}  // namespace

InPlaceLayerTarget::InPlaceLayerTarget(IDXGISurface* surface, std::shared_ptr<Direct3D::GraphicsDevice> device)
    : surface_(surface), device_(std::move(device)) {
    if (const std::shared_ptr<Direct3D::Texture> image = Direct3D::TextureOf(surface)) {
        size_ = {image->Size().width, image->Size().height};
    }
}

HRESULT InPlaceLayerTarget::Compose(const LayerFrame& frame) noexcept try {
    const std::shared_ptr<Direct3D::Texture> image = Direct3D::TextureOf(surface_.Get());
    if (!image || !image->Pixels()) return D2DERR_RECREATE_TARGET;
    if (!frame.changed.empty()) {
        int top = frame.changed.front().top;
        int bottom = frame.changed.front().bottom;
        for (const PixelRect& rect : frame.changed) {
            top = std::min(top, rect.top);
            bottom = std::max(bottom, rect.bottom);
        }
        FindSpansAgain(PixelsOf(frame, size_), top, bottom, spans_);
    }
    if (!frame.clear && spans_.empty()) return S_OK;
    auto pending = std::make_shared<const char>();
    const auto lay = [this, target = PixelsOf(*image), layer = PixelsOf(frame, size_), clear = frame.clear, pending] {
        if (clear) SetAll(target, PixelOf(*clear));
        if (!spans_.empty()) BlendSpans(target, layer, spans_, 0, 0);
    };
    const auto lock = device_->Lock();
    if (device_->AddToPicture(image, lay)) {
        isPending_ = pending;
        return S_OK;
    }
    device_->AwaitPixels(image);
    lay();
    return S_OK;
} catch (...) {
    return Direct3D::CurrentFailure();
}

void InPlaceLayerTarget::LetGo() noexcept {
    if (isPending_.expired()) return;
    try {
        device_->FinishPicture();
    } catch (...) {
        device_->DropPicture();  // it reads the layer; there is nobody to tell that it lacks a part
    }
}

}  // namespace Platform::Direct2D
