#pragma once

#include <cstdint>
#include <string>

namespace GameLaunch {

/// The file name of the driver: KVR2.dll when `modern`, else KVR.dll.
std::wstring DriverFileName(bool modern);

/// The game's whole command line, byte for byte; its first word is the plain program name. `smoke` appends an
/// unattended check run of one map.
std::wstring BuildCommandLine(bool modern, std::uint32_t displayMode, bool fullscreen, bool smoke);

/// What the screen says when a game that was up has ended.
std::wstring EndMessage(std::uint32_t exitCode);

}  // namespace GameLaunch
