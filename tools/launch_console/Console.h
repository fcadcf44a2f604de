// The launcher's functions behind a command line, for tests, scripts and servers.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace LaunchConsole {

/// Runs one call. `arguments` are the words after the program's name, as text in the sense of Platform::PathFromText.
/// Writes one JSON object a line to `out`, each flushed at once, and explanations to `err`. Returns the exit status: 0
/// for a positive result, 1 for a negative one, 2 for wrong usage. Blocks until the call is done; a game that was
/// started, until the game's end unless the call detaches. Never throws.
int RunConsole(const std::vector<std::wstring>& arguments, std::ostream& out, std::ostream& err) noexcept;

}  // namespace LaunchConsole
