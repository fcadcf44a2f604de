#include "Platform/Linux/Window/Display.h"

#include <charconv>
#include <cmath>

namespace Platform {

namespace {

constexpr double kSmallestDpi = 24;
constexpr double kLargestDpi = 960;

/// What the system's metrics are at 96 dots per inch.
int BaseMetric(int index) {
    switch (index) {
        case SM_CYCAPTION:
            return 23;
        case SM_CXICON:
        case SM_CYICON:
            return 32;
        case SM_CXSMICON:
        case SM_CYSMICON:
            return 16;
        case SM_CXDOUBLECLK:
        case SM_CYDOUBLECLK:
        case SM_CXSIZEFRAME:
        case SM_CYSIZEFRAME:
        case SM_CXPADDEDBORDER:
            return 4;
        default:
            return 0;
    }
}

}  // namespace

std::optional<UINT> DpiFromResources(std::string_view resources) {
    static constexpr std::string_view key = "Xft.dpi:";
    while (!resources.empty()) {
        const std::string_view line = resources.substr(0, resources.find('\n'));
        resources.remove_prefix(std::min(resources.size(), line.size() + 1));
        if (!line.starts_with(key)) continue;
        std::string_view text = line.substr(key.size());
        text.remove_prefix(std::min(text.size(), text.find_first_not_of(" \t")));
        double dpi = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), dpi);
        if (error != std::errc() || !(dpi >= kSmallestDpi && dpi <= kLargestDpi)) return std::nullopt;
        return static_cast<UINT>(std::lround(dpi));
    }
    return std::nullopt;
}

UINT ReadDpi(const Connection& connection) {
    const std::string resources = connection.Text(connection.Screen().root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING);
    return DpiFromResources(resources).value_or(USER_DEFAULT_SCREEN_DPI);
}

}  // namespace Platform

BOOL SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT context) noexcept {
    // X11's coordinates are physical pixels for every program.
    return context == DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2 ? TRUE : FALSE;
}

UINT GetDpiForSystem() noexcept {
    const auto connection = Platform::Connection::Open();
    return connection ? Platform::ReadDpi(*connection) : USER_DEFAULT_SCREEN_DPI;
}

int GetSystemMetricsForDpi(int index, UINT dpi) noexcept {
    if (index == SM_CXSCREEN || index == SM_CYSCREEN) {
        MONITORINFO info{sizeof(MONITORINFO), {}, {}, 0};
        if (!GetMonitorInfoW(MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY), &info)) return 0;
        const RECT& whole = info.rcMonitor;
        return index == SM_CXSCREEN ? whole.right - whole.left : whole.bottom - whole.top;
    }
    return static_cast<int>(
        std::lround(Platform::BaseMetric(index) * static_cast<double>(dpi) / USER_DEFAULT_SCREEN_DPI));
}
