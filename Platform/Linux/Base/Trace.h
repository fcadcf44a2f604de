// Traces of what this folder's objects don't do, so that the subset grows by evidence.
#pragma once

#include <windows.h>

#include <string_view>

namespace Platform {

/// Writes "`name` is not implemented." to standard error, once per name and process, and returns E_NOTIMPL. Any thread.
HRESULT NotImplemented(std::string_view name) noexcept;

/// The same for an interface that an object doesn't have; once per class and identifier. Returns E_NOINTERFACE.
HRESULT NoInterface(std::string_view className, REFIID iid) noexcept;

/// Writes one line about a folder dialog that failed: the user sees a sentence without the cause.
void TraceFailure(std::string_view step, std::string_view cause) noexcept;

}  // namespace Platform
