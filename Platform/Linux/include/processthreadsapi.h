// Starting and watching a Windows program, through Wine. Implemented in Platform/Linux/Processes.
#pragma once

#include <minwinbase.h>

constexpr DWORD SYNCHRONIZE = 0x00100000;
constexpr DWORD PROCESS_QUERY_LIMITED_INFORMATION = 0x1000;
constexpr DWORD STILL_ACTIVE = 259;

constexpr DWORD STARTF_USESHOWWINDOW = 0x1;
constexpr DWORD CREATE_UNICODE_ENVIRONMENT = 0x00000400;
constexpr DWORD EXTENDED_STARTUPINFO_PRESENT = 0x00080000;
constexpr DWORD_PTR PROC_THREAD_ATTRIBUTE_HANDLE_LIST = 0x20002;

struct STARTUPINFOW {
    DWORD cb;
    LPWSTR lpReserved;
    LPWSTR lpDesktop;
    LPWSTR lpTitle;
    DWORD dwX;
    DWORD dwY;
    DWORD dwXSize;
    DWORD dwYSize;
    DWORD dwXCountChars;
    DWORD dwYCountChars;
    DWORD dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    LPBYTE lpReserved2;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
};
using LPSTARTUPINFOW = STARTUPINFOW*;

struct PROC_THREAD_ATTRIBUTE_LIST;
using LPPROC_THREAD_ATTRIBUTE_LIST = PROC_THREAD_ATTRIBUTE_LIST*;

struct STARTUPINFOEXW {
    STARTUPINFOW StartupInfo;
    LPPROC_THREAD_ATTRIBUTE_LIST lpAttributeList;
};

struct PROCESS_INFORMATION {
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};
using LPPROCESS_INFORMATION = PROCESS_INFORMATION*;

/// With a null list: stores the bytes that a list of `count` attributes needs and fails with ERROR_INSUFFICIENT_BUFFER.
/// Else makes an empty list in the caller's memory.
BOOL InitializeProcThreadAttributeList(LPPROC_THREAD_ATTRIBUTE_LIST list, DWORD count, DWORD flags,
                                       PSIZE_T size) noexcept;
/// Stores an attribute. Only PROC_THREAD_ATTRIBUTE_HANDLE_LIST is known; `value` must live until the list is deleted.
BOOL UpdateProcThreadAttribute(LPPROC_THREAD_ATTRIBUTE_LIST list, DWORD flags, DWORD_PTR attribute, PVOID value,
                               SIZE_T size, PVOID previousValue, PSIZE_T returnSize) noexcept;
void DeleteProcThreadAttributeList(LPPROC_THREAD_ATTRIBUTE_LIST list) noexcept;

/// Starts the Windows program `applicationName` through Wine with exactly `commandLine` as its command line and
/// `currentDirectory` (a folder of this system) as its working directory.
///
/// The handles of the list pass to a supervisor process that lives exactly as long as the program, and to nothing that
/// Wine leaves behind; `hProcess` is signalled when the program has ended, and its exit code has the full 32 bits.
/// Neither depends on the caller staying alive. Returns once the program runs. Blocks for several seconds when the Wine
/// prefix has to be made first.
///
/// FALSE with ERROR_FILE_NOT_FOUND when there is no Wine or no such program, ERROR_BAD_EXE_FORMAT when this Wine can't
/// run 32-bit programs, else the code that the start inside Wine gave; what the player can do about it goes to standard
/// error.
BOOL CreateProcessW(LPCWSTR applicationName, LPWSTR commandLine, LPSECURITY_ATTRIBUTES processAttributes,
                    LPSECURITY_ATTRIBUTES threadAttributes, BOOL inheritHandles, DWORD creationFlags,
                    LPVOID environment, LPCWSTR currentDirectory, LPSTARTUPINFOW startupInfo,
                    LPPROCESS_INFORMATION processInformation) noexcept;

/// The exit code of an ended process, STILL_ACTIVE while it runs. A process that was found by its identifier rather
/// than started here gives no code: FALSE, ERROR_ACCESS_DENIED.
BOOL GetExitCodeProcess(HANDLE process, LPDWORD exitCode) noexcept;

/// Opens a running process by the identifier that a process snapshot lists.
HANDLE OpenProcess(DWORD access, BOOL inheritHandle, DWORD processId) noexcept;
DWORD GetCurrentProcessId() noexcept;
DWORD GetCurrentThreadId() noexcept;
