// What any thread may ask about a window, and the values kept with it.
#include "Platform/Linux/Window/Manager.h"
#include "Platform/Linux/Window/NativeWindow.h"
#include "Platform/Linux/Window/Window.h"

#include <utility>

namespace Platform {

namespace {

std::optional<WindowView> ViewOf(HWND handle) {
    const std::shared_ptr<Window> window = FindWindowObject(handle);
    if (!window) return std::nullopt;
    return window->View();
}

}  // namespace

std::optional<NativeWindowView> ViewNativeWindow(HWND handle) {
    const std::shared_ptr<Window> window = FindWindowObject(handle);
    if (!window) return std::nullopt;
    const std::shared_ptr<XWindow>& x = window->x;
    const xcb_screen_t& screen = x->Input().Screen();
    // The view's connection keeps the X11 window.
    return NativeWindowView{{x, x->Rendering()}, x->Id(), screen.root, screen.root_visual, screen.root_depth};
}

SIZE NativeWindowSize(HWND handle) {
    const auto view = ViewOf(handle);
    return view ? view->PictureSize() : SIZE{};
}

bool IsWindowSeen(HWND handle) {
    const auto view = ViewOf(handle);
    return view && view->Seen();
}

std::uint64_t AddSeenListener(HWND handle, std::function<void(bool)> listener) {
    const std::shared_ptr<Window> window = FindWindowObject(handle);
    return window ? window->seenListeners.Add(std::move(listener)) : 0;
}

void RemoveSeenListener(HWND handle, std::uint64_t identifier) {
    if (const std::shared_ptr<Window> window = FindWindowObject(handle)) window->seenListeners.Remove(identifier);
}

std::uint64_t AddExposedListener(HWND handle, std::function<void()> listener) {
    const std::shared_ptr<Window> window = FindWindowObject(handle);
    return window ? window->exposedListeners.Add(std::move(listener)) : 0;
}

void RemoveExposedListener(HWND handle, std::uint64_t identifier) {
    if (const std::shared_ptr<Window> window = FindWindowObject(handle)) window->exposedListeners.Remove(identifier);
}

std::uint64_t AddInputListener(HWND handle, std::function<void()> listener) {
    const std::shared_ptr<Window> window = FindWindowObject(handle);
    return window ? window->inputListeners.Add(std::move(listener)) : 0;
}

void RemoveInputListener(HWND handle, std::uint64_t identifier) {
    if (const std::shared_ptr<Window> window = FindWindowObject(handle)) window->inputListeners.Remove(identifier);
}

void FrameShown(HWND handle, SIZE size) {
    if (const std::shared_ptr<Window> window = FindWindowObject(handle)) window->FrameShown(size);
}

}  // namespace Platform

BOOL IsZoomed(HWND handle) noexcept {
    const auto view = Platform::ViewOf(handle);
    return view && view->zoomed ? TRUE : FALSE;
}

BOOL IsIconic(HWND handle) noexcept {
    const auto view = Platform::ViewOf(handle);
    return view && view->iconic ? TRUE : FALSE;
}

BOOL IsWindowVisible(HWND handle) noexcept {
    const auto view = Platform::ViewOf(handle);
    return view && view->visible ? TRUE : FALSE;
}

BOOL GetWindowRect(HWND handle, LPRECT rectangle) noexcept {
    const auto view = Platform::ViewOf(handle);
    if (!view || !rectangle) return FALSE;
    *rectangle = view->window;
    return TRUE;
}

BOOL GetClientRect(HWND handle, LPRECT rectangle) noexcept {
    const auto view = Platform::ViewOf(handle);
    if (!view || !rectangle) return FALSE;
    *rectangle = {0, 0, view->client.right - view->client.left, view->client.bottom - view->client.top};
    return TRUE;
}

BOOL ClientToScreen(HWND handle, LPPOINT point) noexcept {
    const auto view = Platform::ViewOf(handle);
    if (!view || !point) return FALSE;
    *point = {point->x + view->client.left, point->y + view->client.top};
    return TRUE;
}

BOOL ScreenToClient(HWND handle, LPPOINT point) noexcept {
    const auto view = Platform::ViewOf(handle);
    if (!view || !point) return FALSE;
    *point = {point->x - view->client.left, point->y - view->client.top};
    return TRUE;
}

UINT GetDpiForWindow(HWND handle) noexcept {
    const auto view = Platform::ViewOf(handle);
    return view ? view->dpi : 0;
}

LONG_PTR GetWindowLongPtrW(HWND handle, int index) noexcept {
    const auto window = Platform::FindWindowObject(handle);
    return window ? window->Long(index) : 0;
}

LONG_PTR SetWindowLongPtrW(HWND handle, int index, LONG_PTR value) noexcept {
    const auto window = Platform::FindWindowObject(handle);
    return window ? window->SetLong(index, value) : 0;
}

BOOL SetWindowTextW(HWND handle, LPCWSTR text) noexcept {
    const auto window = Platform::FindWindowObject(handle);
    if (!window) return FALSE;
    Platform::PublishTitle(*window, text ? text : L"");
    return TRUE;
}
