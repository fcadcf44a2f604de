#include "Platform/Linux/DirectComposition/ShmPresenter.h"

#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/DirectComposition/Transformed.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

using Microsoft::WRL::ComPtr;

namespace Platform::DirectComposition {

namespace {

ComPtr<Direct3D::IPresentable> PresentableOf(IUnknown* content) {
    ComPtr<Direct3D::IPresentable> presentable;
    if (FAILED(content->QueryInterface(__uuidof(Direct3D::IPresentable),
                                       reinterpret_cast<void**>(presentable.GetAddressOf())))) {
        return nullptr;
    }
    return presentable;
}

bool IsWholePixelShift(const D2D_MATRIX_3X2_F& placement) {
    return placement.m11 == 1 && placement.m12 == 0 && placement.m21 == 0 && placement.m22 == 1 &&
           placement.dx == std::trunc(placement.dx) && placement.dy == std::trunc(placement.dy) &&
           std::fabs(placement.dx) < 32768 && std::fabs(placement.dy) < 32768;
}

Direct3D::PixelRect WholeOf(const Direct3D::Texture& texture) {
    return {0, 0, texture.Size().width, texture.Size().height};
}

bool IsSame(const SIZE& one, const SIZE& two) {
    return one.cx == two.cx && one.cy == two.cy;
}

bool HasPicture(const std::vector<Layer>& layers) {
    return std::ranges::any_of(layers, [](const Layer& layer) {
        const ComPtr<Direct3D::IPresentable> content = PresentableOf(layer.content);
        return content && content->Presented();
    });
}

bool HasIncomplete(const std::vector<Layer>& layers) {
    return std::ranges::any_of(layers, [](const Layer& layer) {
        const ComPtr<Direct3D::IPresentable> content = PresentableOf(layer.content);
        if (!content || !content->Presented()) return false;
        const auto lock = content->Graphics()->Lock();
        return content->Presented()->IsIncomplete();
    });
}

}  // namespace

ShmPresenter::ShmPresenter(HWND window, NativeWindowView view)
    : window_(window), screen_(std::make_shared<Screen>(std::move(view))) {
    seenListener_ = AddSeenListener(window_, [screen = screen_](bool seen) { screen->SetPace(seen); });
    exposedListener_ = AddExposedListener(window_, [screen = screen_] { screen->PutAgain(); });
    inputListener_ = AddInputListener(window_, [screen = screen_] { screen->Hurry(); });
    screen_->SetPace(IsWindowSeen(window_));
}

ShmPresenter::~ShmPresenter() {
    RemoveSeenListener(window_, seenListener_);
    RemoveExposedListener(window_, exposedListener_);
    RemoveInputListener(window_, inputListener_);
}

HRESULT ShmPresenter::Show(const std::vector<Layer>& layers) {
    toShow_.reset();
    const HRESULT result = Show(layers, Outdated::GiveUp);
    if (!toShow_) givenUp_ = {};
    return result;
}

HRESULT ShmPresenter::Show(const std::vector<Layer>& layers, Outdated outdated) try {
    HRESULT result = S_OK;
    const SIZE window = NativeWindowSize(window_);
    if (window.cx > 0 && window.cy > 0 && (hasShown_ || HasPicture(layers))) {
        hasShown_ = true;
        const SIZE size = PictureSize(layers, window);
        if (WouldLieWithinFormer(size, window)) {
            // The picture of the window's own size is on its way.
        } else if (HasIncomplete(layers) || (outdated == Outdated::GiveUp && IsSame(size, former_) &&
                                             IsSame(size, window) && GiveUpIfOutdated(layers))) {
            return S_OK;  // the picture that comes in its place is on its way
        } else if (SharedImage* const image = screen_->NextImage(size)) {
            Compose(image->View(), layers);
            screen_->PutNext();
            former_ = size;
            FrameShown(window_, size);
        } else {
            result = E_OUTOFMEMORY;
        }
    }
    MarkShown(layers);
    return result;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
} catch (const std::exception&) {
    return E_FAIL;  // The device failed; the picture on the screen stays.
}

// Only a picture that is still to be drawn and is the only news. If no frame follows, the thread shows it before it
// sleeps.
bool ShmPresenter::GiveUpIfOutdated(const std::vector<Layer>& layers) {
    ComPtr<Direct3D::IPresentable> news;
    for (const Layer& layer : layers) {
        ComPtr<Direct3D::IPresentable> content = PresentableOf(layer.content);
        if (!content || !content->HasNewPicture()) continue;
        if (news) return false;
        news = std::move(content);
    }
    if (!news) return false;
    const std::shared_ptr<Direct3D::Texture> texture = news->Presented();
    if (!texture->Pixels() || news->Graphics()->AwaitPixels(texture, [&] { return news->IsOutdated(); })) return false;

    GivenUp givenUp{layers, {}};
    for (const Layer& layer : layers) givenUp.contents.emplace_back(layer.content);
    givenUp_ = std::move(givenUp);
    toShow_.emplace(news->Waitable(), [this] {
        toShow_.reset();
        const GivenUp shown = std::exchange(givenUp_, {});
        static_cast<void>(Show(shown.layers, Outdated::Show));
    });
    news->GivenUp();
    return true;
}

// A window's size runs ahead of what is drawn for it. Contents that fill the window but for that are shown in their own
// size, and what lies around them stays as it was: a black bar would flash there until the next frame.
SIZE ShmPresenter::PictureSize(const std::vector<Layer>& layers, SIZE window) {
    SIZE extent{0, 0};
    std::vector<const IUnknown*> contents;
    for (const Layer& layer : layers) {
        const ComPtr<Direct3D::IPresentable> content = PresentableOf(layer.content);
        const std::shared_ptr<Direct3D::Texture> texture = content ? content->Presented() : nullptr;
        if (!texture) continue;
        if (!IsWholePixelShift(layer.placement)) return window;
        const VkExtent2D size = texture->Size();
        extent.cx = std::max(extent.cx, static_cast<LONG>(layer.placement.dx) + static_cast<LONG>(size.width));
        extent.cy = std::max(extent.cy, static_cast<LONG>(layer.placement.dy) + static_cast<LONG>(size.height));
        contents.push_back(layer.content);
    }
    const bool fills = extent.cx == window.cx && extent.cy == window.cy;
    const bool isOfAnotherSize = !fills && !contents.empty() && contents == filling_;
    if (fills) filling_ = std::move(contents);
    return isOfAnotherSize && extent.cx > 0 && extent.cy > 0 ? extent : window;
}

// Of two pictures that a growing window has outrun the second may be the smaller one. The rim of the first would stay
// around it. Within a picture of the window's own size a smaller one is what somebody wants.
bool ShmPresenter::WouldLieWithinFormer(SIZE size, SIZE window) const {
    if (IsSame(former_, window)) return false;
    return std::min(former_.cx, window.cx) > size.cx || std::min(former_.cy, window.cy) > size.cy;
}

void ShmPresenter::Compose(const Pixels& target, const std::vector<Layer>& layers) {
    for (auto& kept : kept_) kept->used = false;
    bool isBottom = true;
    for (const Layer& layer : layers) {
        const ComPtr<Direct3D::IPresentable> content = PresentableOf(layer.content);
        if (!content || !content->Presented()) continue;
        Kept& kept = Keep(content.Get());
        ComposeLayer(target, kept, layer.placement, isBottom);
        isBottom = false;
    }
    if (isBottom) BlackenOutside(target, 0, 0, 0, 0);
    DropUnused();
}

void ShmPresenter::ComposeLayer(const Pixels& target, Kept& kept, const D2D_MATRIX_3X2_F& placement, bool isBottom) {
    const std::shared_ptr<Direct3D::Texture> texture = kept.content->Presented();
    const int width = static_cast<int>(texture->Size().width);
    const int height = static_cast<int>(texture->Size().height);
    const bool isOpaque = kept.content->AlphaMode() == DXGI_ALPHA_MODE_IGNORE;

    if (!IsWholePixelShift(placement)) {
        Refresh(kept, texture);
        if (isBottom) BlackenOutside(target, 0, 0, 0, 0);
        PaintTransformed(target, kept.view, placement, isOpaque);
        return;
    }
    const int x = static_cast<int>(placement.dx);
    const int y = static_cast<int>(placement.dy);
    if (isBottom) BlackenOutside(target, x, y, x + width, y + height);
    if (isOpaque && !texture->Pixels() && x >= 0 && y >= 0 && x + width <= target.width &&
        y + height <= target.height) {
        kept.content->Graphics()->ReadBack(texture, WholeOf(*texture), target.Row(y) + x,
                                           target.stride * sizeof(std::uint32_t));
        return;
    }
    Refresh(kept, texture);
    if (isOpaque) {
        CopyOpaque(target, kept.view, x, y);
    } else {
        if (isBottom) BlackenOutside(target, 0, 0, 0, 0);
        BlendSpans(target, kept.view, kept.spans, x, y);
    }
}

// Brings the view up to date with what the content presented last.
void ShmPresenter::Refresh(Kept& kept, const std::shared_ptr<Direct3D::Texture>& texture) {
    if (kept.view.data && !kept.content->HasNewPicture()) return;
    const Direct3D::PixelRect whole = WholeOf(*texture);
    kept.view.width = static_cast<int>(whole.width);
    kept.view.height = static_cast<int>(whole.height);
    if (texture->Pixels()) {
        kept.content->Graphics()->AwaitPixels(texture);
        kept.texture = texture;
        kept.view.data = reinterpret_cast<std::uint32_t*>(texture->Pixels());
        kept.view.stride = texture->Stride() / sizeof(std::uint32_t);
    } else {
        kept.memory.resize(static_cast<std::size_t>(whole.width) * whole.height);
        kept.content->Graphics()->ReadBack(texture, whole, kept.memory.data(),
                                           std::size_t{whole.width} * sizeof(std::uint32_t));
        kept.view.data = kept.memory.data();
        kept.view.stride = whole.width;
    }
    if (kept.content->AlphaMode() != DXGI_ALPHA_MODE_IGNORE) FindSpans(kept.view, kept.spans);
}

ShmPresenter::Kept& ShmPresenter::Keep(Direct3D::IPresentable* content) {
    auto place = std::find_if(kept_.begin(), kept_.end(),
                              [&](const std::unique_ptr<Kept>& kept) { return kept->content.Get() == content; });
    if (place == kept_.end()) {
        place = kept_.insert(kept_.end(), std::make_unique<Kept>());
        (*place)->content = content;
        screen_->Pace(content);
    }
    (*place)->used = true;
    return **place;
}

void ShmPresenter::DropUnused() {
    for (const auto& kept : kept_) {
        if (!kept->used) screen_->LeaveAlone(kept->content.Get());
    }
    std::erase_if(kept_, [](const std::unique_ptr<Kept>& kept) { return !kept->used; });
}

// Contents that could not be shown count as shown too: whoever draws them must not wait for ever.
void ShmPresenter::MarkShown(const std::vector<Layer>& layers) {
    for (const Layer& layer : layers) {
        const ComPtr<Direct3D::IPresentable> content = PresentableOf(layer.content);
        if (content && content->HasNewPicture()) content->Shown();
    }
}

std::unique_ptr<Presenter> MakePresenter(HWND window) {
    std::optional<NativeWindowView> view = ViewNativeWindow(window);
    if (!view) return nullptr;
    return std::make_unique<ShmPresenter>(window, std::move(*view));
}

}  // namespace Platform::DirectComposition
