// The launcher's folders, the identity of an installation, and its lock.
#pragma once

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace GameLaunch {

/// Folder of the running executable. Throws std::runtime_error "Cannot locate launcher".
std::filesystem::path LauncherFolder();

/// The per-user folder of the launcher, made anew on every call if it is missing. Throws std::runtime_error
/// "LocalAppData unavailable", or std::filesystem::filesystem_error named "create_directories".
std::filesystem::path StateFolder();

/// The name that stands for an installation: `Quake2-<hash>` in the state folder. No folder of this name is ever made.
/// All spellings of one folder (case, "..", a link) give one name. Throws what StateFolder throws, or
/// std::filesystem::filesystem_error named "weakly_canonical".
std::filesystem::path RuntimePathFor(const std::filesystem::path& folder);

/// 64-bit FNV-1a over the 16-bit code units of the text, one step a unit (not one a byte).
std::uint64_t HashInstallation(std::u16string_view text);

/// The lock file of an installation: its runtime path with ".lock" appended.
std::filesystem::path LockFileFor(const std::filesystem::path& folder);

/// Takes an installation's lock: the open handle is the lock, inheritable, so that the game can hold it after the
/// launcher. INVALID_HANDLE_VALUE at once when somebody holds it or the file can't be opened. The file itself stays for
/// ever and means nothing. Throws what RuntimePathFor throws.
HANDLE TakeInstallationLock(const std::filesystem::path& folder);

}  // namespace GameLaunch
