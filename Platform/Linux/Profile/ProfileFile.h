#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// Larger files are no profile files: they read as missing and are never written.
constexpr std::size_t largestProfileFile = std::size_t{16} << 20;

/// The content of a profile file; nothing when there is none, it can't be read, is too large or no regular file.
std::optional<std::string> ReadProfileFile(const std::string& path);

/// One edit of a profile file by the name the caller gave: reads it, sets the key and puts the new file in its place in
/// one step, while no other writer of a file in that folder is at work. A link to the file stays and the file it leads
/// to is replaced. Returns ERROR_SUCCESS or the system error code; on an error the file is as before.
DWORD EditProfileFile(const std::string& path, std::wstring_view section, std::wstring_view key,
                      std::wstring_view value);

}  // namespace Platform
