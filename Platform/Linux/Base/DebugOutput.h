// Where the debug stream goes. For tests.
#pragma once

namespace Platform {

/// What takes the texts of OutputDebugStringA, on any thread.
using DebugOutput = void (*)(const char* text);

/// Sends the debug stream to a function instead of standard error; null sends it back. Any thread.
void SetDebugOutput(DebugOutput output) noexcept;

}  // namespace Platform
