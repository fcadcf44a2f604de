// Copying and comparing whole files, chunk by chunk, so that no file ever has to fit into memory.
#pragma once

#include <filesystem>

namespace GameLaunch {

enum class IfExists { Fail, Overwrite };

/// Copies the bytes of `source` to `target` and returns once they are on the disk. An existing target is written in
/// place: it keeps its links and permissions, and one that may not be written fails. A target that this call made
/// doesn't stay behind when the call fails. Throws std::filesystem::filesystem_error named "copy_file".
void CopyContent(const std::filesystem::path& source, const std::filesystem::path& target, IfExists ifExists);

/// Whether two files have the same bytes. Both are read to their ends in any case, so that a file that can't be read is
/// found out before anything is written. Throws std::runtime_error "Cannot open driver" or "Cannot read driver".
bool SameContent(const std::filesystem::path& source, const std::filesystem::path& target);

}  // namespace GameLaunch
