// A library that can be loaded and that says who it is. STAND_IN_NAME comes from the build.

#include <windows.h>

__declspec(dllexport) const char* StandInName(void);

const char* StandInName(void) {
    return STAND_IN_NAME;
}

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    (void)reason;
    (void)reserved;
    DisableThreadLibraryCalls(instance);
    return TRUE;
}
