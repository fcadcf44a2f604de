#include "Core/Toolkit.h"

#include "Core/DeviceManager.h"
#include "Core/Log.h"

#include <objbase.h>

namespace Tamborel {

HRESULT Initialize() noexcept {
    Log("[Tamborel] Initialize: setting DPI awareness.\n");
    // The program may have done so already; the second call's failure means nothing.
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);

    Log("[Tamborel] Initialize: calling CoInitializeEx.\n");
    const HRESULT entered = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    // A thread that is in an apartment of the other kind can use everything the toolkit makes.
    if (FAILED(entered) && entered != RPC_E_CHANGED_MODE) return entered;

    Log("[Tamborel] Initialize: creating devices.\n");
    return DeviceManager::Get().Initialize();
}

void Shutdown() noexcept {
    DeviceManager::Get().Shutdown();
    CoUninitialize();
}

}  // namespace Tamborel
