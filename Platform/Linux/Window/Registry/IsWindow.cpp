// Apart from the registry, so that a test may put another window system beside it.
#include "Platform/Linux/Window/Registry/WindowRegistry.h"

namespace {

HWND Desktop() {
    return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(0x10000));
}

}  // namespace

BOOL IsWindow(HWND window) noexcept {
    return window == Desktop() || Platform::NativeWindow(window) ? TRUE : FALSE;
}

HWND GetDesktopWindow() noexcept {
    return Desktop();
}
