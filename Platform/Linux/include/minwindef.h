// Basic types, under the names of the Windows headers. `long` is 32 bits wide on Windows, so LONG and DWORD are
// fixed-width here; code that prints them converts to a standard type first.
#pragma once

#include <basetsd.h>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using BOOL = int;
using INT = int;
using UINT = unsigned int;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using FLOAT = float;
using CHAR = char;
using WCHAR = wchar_t;

using LPVOID = void*;
using PVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using PBYTE = BYTE*;
using LPWORD = WORD*;
using LPDWORD = DWORD*;
using PDWORD = DWORD*;
using LPBOOL = BOOL*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = wchar_t*;
using PWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;
using PCWSTR = const wchar_t*;
using PSIZE_T = SIZE_T*;

using ATOM = WORD;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using HRESULT = LONG;
using LSTATUS = LONG;

#ifndef FALSE
#define FALSE 0
#define TRUE 1
#endif

#define MAX_PATH 260

// The calling convention words mean nothing on this platform.
#define WINAPI
#define CALLBACK
#define APIENTRY
#define STDMETHODCALLTYPE
#define __stdcall

using HANDLE = void*;
using PHANDLE = HANDLE*;

// A handle type of its own for each kind of object, so that one can't be passed for another.
// NOLINTBEGIN(bugprone-macro-parentheses): the argument is a name to declare.
#define DECLARE_HANDLE(name) \
    struct name##__;         \
    using name = name##__*
// NOLINTEND(bugprone-macro-parentheses)

DECLARE_HANDLE(HINSTANCE);
DECLARE_HANDLE(HKEY);
DECLARE_HANDLE(HRSRC);
DECLARE_HANDLE(HWND);
using HMODULE = HINSTANCE;
using HGLOBAL = HANDLE;

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    friend bool operator==(const GUID&, const GUID&) = default;
};
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;
