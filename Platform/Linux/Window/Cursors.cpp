#include "Platform/Linux/Window/Cursors.h"

#include "Platform/Linux/Base/Errors.h"

#include <xcb/xcb_cursor.h>

#include <algorithm>
#include <string_view>

namespace Platform {

namespace {

struct NamedCursor {
    ULONG_PTR number;
    const char* name;
};

ULONG_PTR Number(LPCWSTR name) {
    return reinterpret_cast<ULONG_PTR>(name);
}

/// Names that the X server's own cursor font has too, so that there is a shape without any theme.
const std::array<NamedCursor, 10>& Names() {
    static const std::array<NamedCursor, 10> names{{{Number(IDC_ARROW), "left_ptr"},
                                                    {Number(IDC_IBEAM), "xterm"},
                                                    {Number(IDC_WAIT), "watch"},
                                                    {Number(IDC_CROSS), "crosshair"},
                                                    {Number(IDC_SIZENWSE), "bottom_right_corner"},
                                                    {Number(IDC_SIZENESW), "bottom_left_corner"},
                                                    {Number(IDC_SIZEWE), "sb_h_double_arrow"},
                                                    {Number(IDC_SIZENS), "sb_v_double_arrow"},
                                                    {Number(IDC_SIZEALL), "fleur"},
                                                    {Number(IDC_HAND), "hand2"}}};
    return names;
}

const NamedCursor* Find(ULONG_PTR number) {
    const auto found = std::ranges::find(Names(), number, &NamedCursor::number);
    return found == Names().end() ? nullptr : &*found;
}

}  // namespace

Cursors::Cursors(const Connection& connection) : connection_(connection) {
    auto* screen = const_cast<xcb_screen_t*>(&connection.Screen());  // the library only reads it
    if (xcb_cursor_context_new(connection.Get(), screen, &context_) < 0) context_ = nullptr;
}

Cursors::~Cursors() {
    if (context_) xcb_cursor_context_free(context_);
}

xcb_cursor_t Cursors::Load(const char* name) {
    const auto [found, added] = loaded_.try_emplace(name, static_cast<xcb_cursor_t>(XCB_NONE));
    if (added && context_) found->second = xcb_cursor_load_cursor(context_, name);
    return found->second;
}

const char* CursorName(HCURSOR cursor) {
    const NamedCursor* named = Find(reinterpret_cast<ULONG_PTR>(cursor));
    return named ? named->name : Names().front().name;
}

}  // namespace Platform

HCURSOR LoadCursorW(HINSTANCE instance, LPCWSTR name) noexcept {
    if (!instance && Platform::Find(Platform::Number(name))) {
        return reinterpret_cast<HCURSOR>(Platform::Number(name));
    }
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
}
