// The toolkit's own window messages. Both parameters are always zero.
#pragma once

#include <windows.h>

namespace Tamborel {

/// Posted to the UI thread's queue, without a window: end the thread.
inline constexpr UINT WM_APP_THREAD_QUIT = WM_APP + 0x2A1;

/// Posted to a window: hand the waiting application events to their listeners.
inline constexpr UINT WM_APP_DISPATCH_EVENTS = WM_APP + 0x417;

}  // namespace Tamborel
