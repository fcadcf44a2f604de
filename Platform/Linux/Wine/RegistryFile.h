// Wine's registry files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// FindRegistryString (RegistryText.h) over a file. Nothing for what is no regular file or larger than 64 MiB; never
/// blocks on a FIFO or device.
std::optional<std::wstring> ReadRegistryString(const std::filesystem::path& file, std::wstring_view key,
                                               std::wstring_view name);

}  // namespace Platform
