// What the two platforms do differently with paths, behind one set of names. Implemented in Platform/Linux/Files and in
// Platform/Windows.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace Platform {

/// The path as text. Lossless: on Linux, bytes of a name that are not UTF-8 become U+DC80 to U+DCFF
/// (Platform/Text/Unicode.h) and come back as they were through PathFromText. Use it in place of path::wstring(), which
/// throws on such names.
std::wstring TextFromPath(const std::filesystem::path& path);

/// The path that a text names; the reverse of TextFromPath.
std::filesystem::path PathFromText(std::wstring_view text);

/// The path with each existing component spelled as the file system has it, found without regard to case where the
/// spelling as given doesn't exist (an exact match wins, then the first in byte order). The part that doesn't exist
/// stays as it is. On Windows, where the file system itself folds case, the path as it is.
std::filesystem::path ExistingSpelling(const std::filesystem::path& path);

/// The existing part resolved against the file system, links included, the rest normalised; case as in
/// ExistingSpelling. An empty path stays empty.
std::filesystem::path WeaklyCanonical(const std::filesystem::path& path, std::error_code& error);

/// Prepares a profile file for text of any language: on Windows a new file gets the mark that makes the profile
/// functions write UTF-16; on Linux, where they write UTF-8, there is nothing to do. Failures are left to the writes
/// that follow.
void PrepareProfileFile(const std::filesystem::path& path) noexcept;

/// Opens a file of text for writing, emptied or new, its line ends as written. Null on failure. The caller closes it.
std::FILE* OpenForWriting(const std::filesystem::path& path) noexcept;

}  // namespace Platform
