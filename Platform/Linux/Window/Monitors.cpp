// The screens, asked of the server anew each time: they come and go.
#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Window/Connection.h"

#include <windows.h>
#include <xcb/randr.h>

#include <algorithm>
#include <vector>

namespace Platform {

namespace {

struct Monitor {
    RECT whole{};
    bool primary = false;
};

/// The primary one first; a server without RandR has one that is all of its screen.
std::vector<Monitor> ReadMonitors(const Connection& x) {
    std::vector<Monitor> monitors;
    const auto cookie = xcb_randr_get_monitors(x.Get(), x.Screen().root, 1);
    const XOwned<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(x.Get(), cookie, nullptr));
    if (reply) {
        for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem > 0;
             xcb_randr_monitor_info_next(&each)) {
            const xcb_randr_monitor_info_t& info = *each.data;
            monitors.push_back({{info.x, info.y, info.x + info.width, info.y + info.height}, info.primary != 0});
        }
    }
    if (monitors.empty()) {
        monitors.push_back({{0, 0, x.Screen().width_in_pixels, x.Screen().height_in_pixels}, true});
    }
    std::stable_partition(monitors.begin(), monitors.end(), [](const Monitor& each) { return each.primary; });
    return monitors;
}

/// The part of a monitor that panels leave free. The property covers all monitors together, so it is exact only for
/// panels at the edges of the whole.
RECT FreePart(const Connection& x, const RECT& whole) {
    const xcb_window_t root = x.Screen().root;
    const auto areas = x.Values(root, x[Atom::NetWorkArea], XCB_ATOM_CARDINAL);
    const auto desktop = x.Values(root, x[Atom::NetCurrentDesktop], XCB_ATOM_CARDINAL);
    std::size_t first = desktop.empty() ? 0 : std::size_t{desktop.front()} * 4;
    if (first + 4 > areas.size()) first = 0;
    if (areas.size() < 4) return whole;
    const auto left = static_cast<LONG>(areas[first]);
    const auto top = static_cast<LONG>(areas[first + 1]);
    const RECT free{std::max(whole.left, left), std::max(whole.top, top),
                    std::min(whole.right, left + static_cast<LONG>(areas[first + 2])),
                    std::min(whole.bottom, top + static_cast<LONG>(areas[first + 3]))};
    return free.left < free.right && free.top < free.bottom ? free : whole;
}

LONG Distance(LONG value, LONG low, LONG high) {
    return std::max({low - value, value - (high - 1), LONG{0}});
}

HMONITOR HandleOf(std::size_t index) {
    return reinterpret_cast<HMONITOR>(index + 1);
}

}  // namespace

}  // namespace Platform

HMONITOR MonitorFromPoint(POINT point, DWORD flags) noexcept {
    using namespace Platform;
    const auto x = Connection::Open();
    if (!x) return nullptr;
    const std::vector<Monitor> monitors = ReadMonitors(*x);
    const auto away = [&](const Monitor& monitor) {
        const RECT& whole = monitor.whole;
        return Distance(point.x, whole.left, whole.right) + Distance(point.y, whole.top, whole.bottom);
    };
    const auto nearest = std::ranges::min_element(monitors, {}, away);
    if (away(*nearest) == 0 || flags == MONITOR_DEFAULTTONEAREST) {
        return HandleOf(static_cast<std::size_t>(nearest - monitors.begin()));
    }
    return flags == MONITOR_DEFAULTTOPRIMARY ? HandleOf(0) : nullptr;
}

HMONITOR MonitorFromWindow(HWND window, DWORD flags) noexcept {
    RECT place{};
    if (!GetWindowRect(window, &place)) return nullptr;
    return MonitorFromPoint({(place.left + place.right) / 2, (place.top + place.bottom) / 2}, flags);
}

BOOL GetMonitorInfoW(HMONITOR monitor, LPMONITORINFO info) noexcept {
    using namespace Platform;
    if (!info || info->cbSize != sizeof(MONITORINFO)) return Fail(ERROR_INVALID_PARAMETER);
    const auto x = Connection::Open();
    const std::size_t number = reinterpret_cast<std::size_t>(monitor);
    if (!x || number == 0) return Fail(ERROR_INVALID_HANDLE);
    const std::vector<Monitor> monitors = ReadMonitors(*x);
    if (number > monitors.size()) return Fail(ERROR_INVALID_HANDLE);
    const Monitor& found = monitors[number - 1];
    info->rcMonitor = found.whole;
    info->rcWork = FreePart(*x, found.whole);
    info->dwFlags = found.primary ? MONITORINFOF_PRIMARY : 0;
    return TRUE;
}
