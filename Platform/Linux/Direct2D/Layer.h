// A target's drawing, kept from frame to frame so that only what changed is rasterised.
#pragma once

#include "Platform/Linux/Direct2D/DisplayList.h"
#include "Platform/Linux/Direct2D/LayerTarget.h"
#include "Platform/Linux/Direct2D/Rasterizer.h"

#include <memory>

namespace Platform::Direct2D {

/// One thread at a time.
class Layer {
public:
    explicit Layer(std::unique_ptr<LayerTarget> target);
    ~Layer();
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;

    D2D1_SIZE_U Size() const noexcept { return target_->Size(); }

    /// Brings the kept picture up to the list and lays it on the target. A list that equals the last one rasterises
    /// nothing. Throws std::bad_alloc.
    HRESULT Show(DisplayList list);

private:
    std::unique_ptr<LayerTarget> target_;
    std::unique_ptr<Rasterizer> rasterizer_;  // null until something is drawn
    DisplayList shown_;
    std::vector<PixelRect> painted_;
};

}  // namespace Platform::Direct2D
