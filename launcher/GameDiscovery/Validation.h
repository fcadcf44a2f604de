// Whether a folder holds a classic 32-bit Quake II. Pure functions of the file system: any thread.
#pragma once

#include "launcher/GameDiscovery/Result.h"

#include <filesystem>

namespace GameDiscovery {

/// Judges one folder by its quake2.exe, ref_gl.dll and baseq2/pak0.pak, in that order, reading headers only. The
/// result's `Message` is the first check's sentence that failed. Throws std::filesystem::filesystem_error where the
/// file system can't say whether quake2.exe exists.
Result ValidateFolder(const std::filesystem::path& folder);

/// Whether the file is a 32-bit (i386, PE32) Windows program or library, by its headers. False for whatever can't be
/// read. The format is the Portable Executable's: DOS header, signature, COFF file header, optional header.
bool IsClassicPe(const std::filesystem::path& path);

/// Whether the file is a pak archive whose directory lies inside it and holds at least one entry. False for whatever
/// can't be read.
bool IsValidPak(const std::filesystem::path& path);

/// Whether there is a directory entry of any kind. Throws std::filesystem::filesystem_error named "exists" where the
/// file system answers with an error other than "not found".
bool EntryExists(const std::filesystem::path& path);

}  // namespace GameDiscovery
