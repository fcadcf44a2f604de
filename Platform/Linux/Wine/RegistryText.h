// The text of Wine's registry files: "WINE REGISTRY Version 2" in the first line, then keys in square brackets, each
// followed by its values.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// A string value (REG_SZ; no other type is found) in a registry file's text: the first of that name in a key of that
/// name. `key` is below the file's root, parts separated by single backslashes; `name` is empty for the key's default
/// value. Both match without regard to case. Linear in the text, constant stack; malformed lines are passed over.
std::optional<std::wstring> FindRegistryString(std::string_view text, std::wstring_view key, std::wstring_view name);

}  // namespace Platform
