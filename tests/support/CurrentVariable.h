#pragma once

#include <optional>
#include <string>

/// A variable of this process as it is set, without what the platform layer puts in the place of an unset one.
std::optional<std::wstring> CurrentVariable(const std::wstring& name);
