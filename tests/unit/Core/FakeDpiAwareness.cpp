#include "tests/fakes/FakeObject.h"

#include <windows.h>

BOOL SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT context) noexcept {
    return SUCCEEDED(
        Fakes::FreeCall("SetProcessDpiAwarenessContext", static_cast<int>(reinterpret_cast<LONG_PTR>(context))));
}
