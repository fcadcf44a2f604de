#pragma once

#include <optional>
#include <string>

namespace Platform {

/// The address of the user's running session bus: DBUS_SESSION_BUS_ADDRESS without the entries that would start a bus,
/// else the socket that the login keeps in XDG_RUNTIME_DIR. None when there is neither.
std::optional<std::string> SessionBusAddress();

}  // namespace Platform
