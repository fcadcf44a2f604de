// Profile files ("[section]" and "key=value" lines), process images, and the texts of system codes.
#pragma once

#include <minwindef.h>

#include <cstdarg>

/// Reads a key of a profile file into `buffer` (`size` characters, terminator included), or `defaultValue` where file,
/// section or key is missing. The first section of that name counts, and the first key in it; names match without
/// regard to case. Blanks around the value, and one pair of quotes around it, are dropped. Returns the characters
/// copied. The file is UTF-8, with or without a byte order mark, or UTF-16 with one. Implemented in
/// Platform/Linux/Profile.
DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer, DWORD size,
                               LPCWSTR fileName) noexcept;

/// Reads a key as a decimal number: leading blanks, a sign, then digits; anything else ends it, so text without a
/// number is 0. Modulo 2^32. A missing or empty value is `defaultValue`.
UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT defaultValue, LPCWSTR fileName) noexcept;

/// Writes one key, creating file and section when missing and keeping all else in the file. The new file replaces the
/// old one in one step, so a crash leaves either the old or the new content. Writers of one file take turns. Nothing is
/// written when the key has that value already. FALSE for a value with a line break or NUL, which the format can't
/// hold.
BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR fileName) noexcept;

/// Full path of a process's program file: of the Windows program for a process under Wine, taken back to a path of this
/// system. `*size` is in characters, on return without the terminator. Implemented in Platform/Linux/Processes.
BOOL QueryFullProcessImageNameW(HANDLE process, DWORD flags, LPWSTR buffer, LPDWORD size) noexcept;

/// The start of a program with windows; the application defines it. Platform/Linux/Main calls it with null for both
/// instances and no arguments.
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE previousInstance, LPWSTR commandLine, int showCommand);

constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x200;
constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x1000;
constexpr WORD LANG_NEUTRAL = 0x00;
constexpr WORD SUBLANG_DEFAULT = 0x01;

constexpr DWORD MAKELANGID(WORD primary, WORD sub) {
    return (static_cast<DWORD>(sub) << 10U) | primary;
}

/// The English text of a system code or HRESULT, with the line break that it ends in, for the flags
/// FORMAT_MESSAGE_FROM_SYSTEM and FORMAT_MESSAGE_IGNORE_INSERTS only; `source` and `arguments` are not looked at.
/// Returns the length; 0, with the last error set, for a code without a text or a buffer that can't hold it. Any
/// thread. Implemented in Platform/Linux/Base.
DWORD FormatMessageA(DWORD flags, LPCVOID source, DWORD code, DWORD language, LPSTR buffer, DWORD size,
                     std::va_list* arguments) noexcept;
