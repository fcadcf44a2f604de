// The toolkit's log. It needs no set-up: it works from the program's first instruction to its last, on any thread.
// Every write is flushed, so it is for rare events and for failures, not for a line per frame.
#pragma once

namespace Tamborel {

/// Sends NUL-terminated text to the debug stream and, if the log file is open, to that, flushed. The text carries its
/// own line end. Any thread.
void Log(const char* text) noexcept;

/// Formats as printf and logs the result, cut to 1,023 characters. Any thread.
[[gnu::format(printf, 1, 2)]] void Logf(const char* format, ...) noexcept;

/// Stores the flag. True also opens "tamborel_debug.log" beside the running program, emptying an older one; where that
/// fails, the debug stream alone carries the log. False closes nothing. Call it before other threads start.
void EnableClaudeMode(bool enable) noexcept;

/// The flag that EnableClaudeMode stored last; false at start.
bool IsClaudeMode() noexcept;

/// Closes the log file with a last line. Does nothing, and writes nothing, when no file is open.
void CloseLog() noexcept;

}  // namespace Tamborel
