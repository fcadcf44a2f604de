// The windows of this process, by the handles that callers know them under.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace Platform {

/// Makes a handle for an X11 window of this process. A handle is never given out twice, though X reuses its numbers.
/// Any thread, as for all functions here.
HWND RegisterNativeWindow(std::uint32_t xid);

/// Ends a handle: it names no window any more, and dialogs that the window owns end. Unknown handles are ignored.
void UnregisterNativeWindow(HWND window);

/// The X11 window of a handle; none for the desktop and for handles that name no window.
std::optional<std::uint32_t> NativeWindow(HWND window);

/// A descriptor that becomes readable when the handle ends, at once when it names no window.
std::shared_ptr<const FileDescriptor> WatchUnregistration(HWND window);

}  // namespace Platform
