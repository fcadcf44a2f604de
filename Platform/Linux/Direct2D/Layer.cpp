#include "Platform/Linux/Direct2D/Layer.h"

#include <utility>

namespace Platform::Direct2D {

Layer::Layer(std::unique_ptr<LayerTarget> target) : target_(std::move(target)) {}

Layer::~Layer() {
    target_->LetGo();
}

HRESULT Layer::Show(DisplayList list) {
    const D2D1_SIZE_U size = target_->Size();
    const PixelRect extent{0, 0, static_cast<int>(size.width), static_cast<int>(size.height)};
    const std::vector<PixelRect> changed = Cover(Difference(shown_.commands, list.commands), extent);
    if (!changed.empty()) {
        target_->LetGo();
        if (!rasterizer_) rasterizer_ = std::make_unique<Rasterizer>(extent.Width(), extent.Height());
        for (const PixelRect& rect : changed) rasterizer_->Repaint(rect, list.commands);
        std::vector<PixelRect> bounds;
        bounds.reserve(list.commands.size());
        for (const DrawCommand& command : list.commands) bounds.push_back(command.bounds);
        painted_ = Cover(bounds, extent);
    }
    shown_ = std::move(list);
    const LayerFrame frame{rasterizer_ ? rasterizer_->Pixels() : nullptr, rasterizer_ ? rasterizer_->Stride() : 0,
                           painted_, changed, shown_.clear};
    return target_->Compose(frame);
}

}  // namespace Platform::Direct2D
