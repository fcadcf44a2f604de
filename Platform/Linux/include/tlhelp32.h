// The list of running processes, read from /proc. Implemented in Platform/Linux/Processes.
#pragma once

#include <minwindef.h>

constexpr DWORD TH32CS_SNAPPROCESS = 0x2;

struct PROCESSENTRY32W {
    DWORD dwSize;
    DWORD cntUsage;
    DWORD th32ProcessID;
    ULONG_PTR th32DefaultHeapID;
    DWORD th32ModuleID;
    DWORD cntThreads;
    DWORD th32ParentProcessID;
    LONG pcPriClassBase;
    DWORD dwFlags;
    WCHAR szExeFile[MAX_PATH];  // File name without folder: of the Windows program for a process under Wine.
};
using LPPROCESSENTRY32W = PROCESSENTRY32W*;

HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD processId) noexcept;
BOOL Process32FirstW(HANDLE snapshot, LPPROCESSENTRY32W entry) noexcept;
BOOL Process32NextW(HANDLE snapshot, LPPROCESSENTRY32W entry) noexcept;
