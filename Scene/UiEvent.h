#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <variant>

namespace Tamborel {

/// A property of an application event. The toolkit itself produces wide strings only.
using UiEventValue = std::variant<std::monostate, bool, std::int64_t, double, std::wstring>;

/// A named event that controls send to the application, such as "ui.button.click".
struct UiEvent {
    std::wstring name;
    HWND window = nullptr;                   ///< Filled in with the window that posts it, when null.
    std::int64_t timestampMicroseconds = 0;  ///< The clock of InputEvent. Filled in when zero.
    std::uint64_t idHash = 0;                ///< Hash of the sender's identifier.
    std::unordered_map<std::wstring, UiEventValue> properties;
};

}  // namespace Tamborel
