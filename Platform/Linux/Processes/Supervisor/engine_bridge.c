/*
 * engine_bridge.exe: a 64-bit program that runs the 32-bit engine_host.exe beside it, with its own standard handles,
 * and waits for it.
 *
 * A 64-bit Wine loader that is given a 32-bit program goes through Wine's start.exe, which loads the whole shell: about
 * 150 ms. Through a small 64-bit program the same costs a few milliseconds.
 */
#include <windows.h>

void BridgeMain(void) {
    static WCHAR path[32768];
    static const WCHAR host[] = L"engine_host.exe";
    STARTUPINFOW startup;
    PROCESS_INFORMATION process;
    DWORD i, code = 1;
    DWORD length = GetModuleFileNameW(NULL, path, ARRAYSIZE(path) - ARRAYSIZE(host));
    while (length && path[length - 1] != '\\') --length;
    for (i = 0; i < ARRAYSIZE(host); ++i) path[length + i] = host[i];

    ZeroMemory(&startup, sizeof startup);
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    if (!CreateProcessW(path, NULL, NULL, NULL, TRUE, 0, NULL, NULL, &startup, &process)) ExitProcess(1);
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
    ExitProcess(code);
}
