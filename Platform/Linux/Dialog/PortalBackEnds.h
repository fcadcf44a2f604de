// The programs that show a portal's dialogs. For this folder's sources only.
#pragma once

#include "Platform/Linux/Dialog/GLibOwners.h"

#include <string>
#include <vector>

namespace Platform {

/// What the bus names of all back ends begin with.
inline constexpr const char* kBackEndNamespace = "org.freedesktop.impl.portal.desktop";

/// The bus names of the back ends that run, as the bus tells within a second.
std::vector<std::string> RunningBackEnds(GDBusConnection* connection);

/// Whether one of the running back ends holds the request `handle`. Asks each of them and waits up to a second for its
/// answer; none counts as no.
bool AnyBackEndHolds(GDBusConnection* connection, const char* handle);

}  // namespace Platform
