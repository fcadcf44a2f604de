/*
 * A 32-bit Windows program that the tests start as the engine. In its working directory it writes "command" (its
 * command line) and "folder" (its working directory), both UTF-16, and then does what the file "action" there says:
 *   exit N     ends at once with the exit code N (decimal)
 *   start P    starts the Windows program P with the command line "quake2.exe" in this working directory, and lives
 * Without that file it lives until it is ended.
 */
#include <windows.h>

static void Write(const WCHAR* name, const WCHAR* text) {
    DWORD size = lstrlenW(text) * sizeof(WCHAR), written;
    HANDLE file = CreateFileW(name, GENERIC_WRITE, FILE_SHARE_READ, NULL, CREATE_ALWAYS, 0, NULL);
    WriteFile(file, text, size, &written, NULL);
    CloseHandle(file);
}

static BOOL StartsWith(const WCHAR* text, const WCHAR* start) {
    while (*start) {
        if (*text++ != *start++) return FALSE;
    }
    return TRUE;
}

void ProbeMain(void) {
    static WCHAR folder[4096], action[4096], child[] = L"quake2.exe";
    HANDLE file;
    Write(L"command", GetCommandLineW());
    GetCurrentDirectoryW(ARRAYSIZE(folder), folder);
    Write(L"folder", folder);

    file = CreateFileW(L"action", GENERIC_READ, FILE_SHARE_READ, NULL, OPEN_EXISTING, 0, NULL);
    if (file != INVALID_HANDLE_VALUE) {
        DWORD read = 0, code = 0;
        const WCHAR* digit;
        ReadFile(file, action, sizeof action - sizeof(WCHAR), &read, NULL);
        CloseHandle(file);
        /* What is started below must live, not do the same again. */
        DeleteFileW(L"action");
        if (StartsWith(action, L"exit ")) {
            for (digit = action + 5; *digit >= '0' && *digit <= '9'; ++digit) code = code * 10 + (*digit - '0');
            ExitProcess(code);
        }
        if (StartsWith(action, L"start ")) {
            STARTUPINFOW startup;
            PROCESS_INFORMATION process;
            ZeroMemory(&startup, sizeof startup);
            startup.cb = sizeof startup;
            CreateProcessW(action + 6, child, NULL, NULL, FALSE, 0, NULL, NULL, &startup, &process);
        }
    }
    Sleep(INFINITE);
}
