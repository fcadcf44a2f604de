#include "Platform/Linux/Window/Manager.h"

#include "Platform/Text/Unicode.h"

#include <unistd.h>
#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace Platform {

namespace {

constexpr std::uint32_t kSourceApplication = 1;  // of EWMH's requests

/// Bits of the Motif hints: which of the record's members count, and what the window can be made to do.
namespace Motif {
constexpr std::uint32_t functionsCount = 1;
constexpr std::uint32_t decorationsCount = 2;
constexpr std::uint32_t resize = 2;
constexpr std::uint32_t move = 4;
constexpr std::uint32_t minimize = 8;
constexpr std::uint32_t maximize = 16;
constexpr std::uint32_t close = 32;
}  // namespace Motif

std::vector<std::uint32_t> MotifHints(DWORD style) {
    std::uint32_t functions = Motif::move;
    if (style & WS_THICKFRAME) functions |= Motif::resize;
    if (style & WS_MINIMIZEBOX) functions |= Motif::minimize;
    if (style & WS_MAXIMIZEBOX) functions |= Motif::maximize;
    if (style & WS_SYSMENU) functions |= Motif::close;
    const std::uint32_t noDecorations = 0;
    return {Motif::functionsCount | Motif::decorationsCount, functions, noDecorations, 0, 0};
}

}  // namespace

void PublishTitle(const Window& window, const std::wstring& title) {
    const std::string text = Utf8FromWide(title);
    const XWindow& x = *window.x;
    const auto length = static_cast<std::uint32_t>(text.size());
    const xcb_atom_t utf8 = x.Input()[Atom::Utf8String];
    xcb_change_property(x.Rendering(), XCB_PROP_MODE_REPLACE, x.Id(), x.Input()[Atom::NetWmName], utf8, 8, length,
                        text.data());
    xcb_change_property(x.Rendering(), XCB_PROP_MODE_REPLACE, x.Id(), XCB_ATOM_WM_NAME, utf8, 8, length, text.data());
    xcb_flush(x.Rendering());
}

void PublishConstants(const Window& window) {
    const Connection& x = window.x->Input();
    const xcb_window_t id = window.x->Id();
    x.SetValues(id, x[Atom::WmProtocols], XCB_ATOM_ATOM,
                {x[Atom::WmDeleteWindow], x[Atom::NetWmPing], x[Atom::NetWmSyncRequest]});
    x.SetValues(id, x[Atom::NetWmSyncRequestCounter], XCB_ATOM_CARDINAL, {window.ResizeCounterId()});
    x.SetValues(id, x[Atom::MotifWmHints], x[Atom::MotifWmHints], MotifHints(window.Style()));
    x.SetValues(id, x[Atom::NetWmWindowType], XCB_ATOM_ATOM, {x[Atom::NetWmWindowTypeNormal]});
    x.SetValues(id, x[Atom::NetWmPid], XCB_ATOM_CARDINAL, {static_cast<std::uint32_t>(::getpid())});
    std::array<char, 256> host{};
    if (::gethostname(host.data(), host.size() - 1) == 0) {
        x.SetText(id, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, host.data());
    }
    // Instance and class, each with its end: desktops find the program's entry, and so its icon, by them.
    const std::string program = ::program_invocation_short_name;
    x.SetText(id, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, program + '\0' + program + '\0');
}

SIZE MinimumSize(const Window& window) {
    const xcb_screen_t& screen = window.x->Input().Screen();
    const POINT whole{screen.width_in_pixels, screen.height_in_pixels};
    MINMAXINFO limits{{}, whole, {}, {1, 1}, whole};
    CallProcedure(window.handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    return {std::max<LONG>(1, limits.ptMinTrackSize.x), std::max<LONG>(1, limits.ptMinTrackSize.y)};
}

void PublishSizeLimits(const Window& window) {
    const RECT place = window.View().window;
    const std::int32_t width = place.right - place.left;
    const std::int32_t height = place.bottom - place.top;
    xcb_size_hints_t hints{};
    if (window.placed) xcb_icccm_size_hints_set_position(&hints, 1, place.left, place.top);
    if (window.Resizable()) {
        const SIZE least = MinimumSize(window);
        xcb_icccm_size_hints_set_min_size(&hints, least.cx, least.cy);
    } else {
        xcb_icccm_size_hints_set_min_size(&hints, width, height);
        xcb_icccm_size_hints_set_max_size(&hints, width, height);
    }
    // A window without a frame stays where it is told, whatever its corner.
    xcb_icccm_size_hints_set_win_gravity(&hints, XCB_GRAVITY_STATIC);
    xcb_icccm_set_wm_normal_hints(window.x->Input().Get(), window.x->Id(), &hints);
}

ManagedState ReadManagedState(const Window& window) {
    const Connection& x = window.x->Input();
    const auto states = x.Values(window.x->Id(), x[Atom::NetWmState], XCB_ATOM_ATOM);
    const auto has = [&](Atom state) { return std::ranges::find(states, x[state]) != states.end(); };
    const auto kept = x.Values(window.x->Id(), x[Atom::WmState], x[Atom::WmState]);
    const bool iconic = !kept.empty() && kept.front() == XCB_ICCCM_WM_STATE_ICONIC;
    return {has(Atom::NetWmStateMaximizedHorz) && has(Atom::NetWmStateMaximizedVert),
            iconic || has(Atom::NetWmStateHidden)};
}

void RequestZoom(const Window& window, Zoom zoom) {
    const Connection& x = window.x->Input();
    const std::uint32_t action = zoom == Zoom::Yes ? 1 : 0;
    x.TellManager(window.x->Id(), x[Atom::NetWmState],
                  {action, x[Atom::NetWmStateMaximizedHorz], x[Atom::NetWmStateMaximizedVert], kSourceApplication, 0});
}

void PublishInitialState(const Window& window, Zoom zoom, bool iconic) {
    const Connection& x = window.x->Input();
    std::vector<std::uint32_t> states;
    if (zoom == Zoom::Yes) states = {x[Atom::NetWmStateMaximizedHorz], x[Atom::NetWmStateMaximizedVert]};
    x.SetValues(window.x->Id(), x[Atom::NetWmState], XCB_ATOM_ATOM, states);
    xcb_icccm_wm_hints_t hints{};
    xcb_icccm_wm_hints_set_input(&hints, 1);
    if (iconic) {
        xcb_icccm_wm_hints_set_iconic(&hints);
    } else {
        xcb_icccm_wm_hints_set_normal(&hints);
    }
    xcb_icccm_set_wm_hints(x.Get(), window.x->Id(), &hints);
}

void RequestIconify(const Window& window) {
    const Connection& x = window.x->Input();
    x.TellManager(window.x->Id(), x[Atom::WmChangeState], {XCB_ICCCM_WM_STATE_ICONIC, 0, 0, 0, 0});
}

void RequestActivation(const Window& window, xcb_timestamp_t time) {
    const Connection& x = window.x->Input();
    x.TellManager(window.x->Id(), x[Atom::NetActiveWindow], {kSourceApplication, time, 0, 0, 0});
}

}  // namespace Platform
