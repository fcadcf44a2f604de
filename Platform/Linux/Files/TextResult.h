#pragma once

#include <windows.h>

#include <string_view>

namespace Platform {

/// Hands a text out the way several of the system's functions do: copies it with a terminator and returns its length
/// without when it fits into `size` characters; else copies nothing and returns the size needed, terminator included.
DWORD CopyOrTellSize(std::wstring_view text, LPWSTR buffer, DWORD size) noexcept;

}  // namespace Platform
