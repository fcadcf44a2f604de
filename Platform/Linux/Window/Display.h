// The display's scale.
#pragma once

#include "Platform/Linux/Window/Connection.h"

#include <windows.h>

#include <optional>
#include <string_view>

namespace Platform {

/// The value of Xft.dpi in the text of the server's resource database; nothing when it is absent or makes no sense.
std::optional<UINT> DpiFromResources(std::string_view resources);

/// The display's scale in dots per inch; 96 where nobody has set one.
UINT ReadDpi(const Connection& connection);

}  // namespace Platform
