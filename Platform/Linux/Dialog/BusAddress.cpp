#include "Platform/Linux/Dialog/BusAddress.h"

#include <gio/gio.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

namespace Platform {

namespace {

// A bus that we started would have no portal and would outlive us.
std::string WithoutAutolaunch(std::string_view addresses) {
    std::string kept;
    while (!addresses.empty()) {
        const std::string_view entry = addresses.substr(0, addresses.find(';'));
        addresses.remove_prefix(entry.size() < addresses.size() ? entry.size() + 1 : entry.size());
        if (entry.empty() || entry.starts_with("autolaunch:") || entry.starts_with("unixexec:")) continue;
        if (!kept.empty()) kept += ';';
        kept += entry;
    }
    return kept;
}

}  // namespace

std::optional<std::string> SessionBusAddress() {
    if (const char* const set = std::getenv("DBUS_SESSION_BUS_ADDRESS"); set && *set) {
        std::string address = WithoutAutolaunch(set);
        if (address.empty()) return std::nullopt;
        return address;
    }
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    if (!folder || *folder != '/') return std::nullopt;
    const std::filesystem::path socket = std::filesystem::path(folder) / "bus";
    std::error_code ignored;
    if (!std::filesystem::is_socket(socket, ignored)) return std::nullopt;
    const std::unique_ptr<char, decltype(&g_free)> escaped(g_dbus_address_escape_value(socket.c_str()), g_free);
    return std::string("unix:path=") + escaped.get();
}

}  // namespace Platform
