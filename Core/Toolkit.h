// Start and end of the toolkit, and the count of open windows that keeps the program alive between the two.
#pragma once

#include <windows.h>

namespace Tamborel {

/// Makes the process aware of each monitor's scale, enters COM's multi-threaded apartment and makes the devices that
/// all windows share. Once, on the program's main thread, before all else of the toolkit. A failure is negative;
/// Shutdown is not to be called then.
[[nodiscard]] HRESULT Initialize() noexcept;

/// Releases what Initialize made. Main thread, after the last window has ended.
void Shutdown() noexcept;

/// Counts a window in, when it starts. Any thread.
void AddWindowRef();

/// Counts a window out, when it has ended; once for each window. Any thread.
void ReleaseWindowRef();

/// Returns when no window is counted. At once when there is none; windows that come later are not waited for.
void WaitForWindows();

}  // namespace Tamborel
