// What a presenter and its window's own thread have in common: the images, and the contents' pace.
#include "Platform/Linux/DirectComposition/ShmPresenter.h"

#include <chrono>
#include <utility>

namespace Platform::DirectComposition {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::nanoseconds displayPeriod = 1'000'000'000ns / 60;
// Of a window that nobody sees a frame is drawn now and then only: a large animated background costs a software device
// some 50 ms of processor time, and that is to stay below two percent.
constexpr std::chrono::nanoseconds hiddenPeriod = 3s;

}  // namespace

ShmPresenter::Screen::Screen(NativeWindowView nativeView)
    : view(std::move(nativeView)), context(xcb_generate_id(view.connection.get())) {
    xcb_create_gc(view.connection.get(), context, view.window, 0, nullptr);
}

ShmPresenter::Screen::~Screen() {
    for (auto& image : images) image.reset();
    xcb_free_gc(view.connection.get(), context);
    xcb_flush(view.connection.get());
}

SharedImage* ShmPresenter::Screen::NextImage(SIZE size) {
    const std::lock_guard lock(mutex);
    std::unique_ptr<SharedImage>& image = images[1 - current];
    if (image && image->View().width == size.cx && image->View().height == size.cy) {
        image->WaitUntilRead();
    } else {
        image.reset();
        image = SharedImage::Make(view.connection.get(), size.cx, size.cy);
    }
    return image.get();
}

void ShmPresenter::Screen::PutNext() {
    const std::lock_guard lock(mutex);
    current = 1 - current;
    images[current]->Put(view.window, context, view.depth);
}

// The server keeps nothing of what was covered.
void ShmPresenter::Screen::PutAgain() {
    const std::lock_guard lock(mutex);
    if (SharedImage* const image = images[current].get()) image->Put(view.window, context, view.depth);
}

void ShmPresenter::Screen::SetPace(bool isSeen) {
    const std::lock_guard lock(mutex);
    seen = isSeen;
    for (const auto& content : paced) content->SetPeriod(isSeen ? displayPeriod : hiddenPeriod);
}

// What nobody sees has no answer to give.
void ShmPresenter::Screen::Hurry() {
    const std::lock_guard lock(mutex);
    if (!seen) return;
    for (const auto& content : paced) content->Hurry();
}

void ShmPresenter::Screen::Pace(Direct3D::IPresentable* content) {
    const std::lock_guard lock(mutex);
    paced.emplace_back(content);
    content->SetPeriod(seen ? displayPeriod : hiddenPeriod);
}

void ShmPresenter::Screen::LeaveAlone(const Direct3D::IPresentable* content) {
    const std::lock_guard lock(mutex);
    std::erase_if(paced, [&](const auto& each) { return each.Get() == content; });
}

}  // namespace Platform::DirectComposition
