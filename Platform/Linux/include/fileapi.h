// Files. Names match without regard to case, component by component, where the spelling as given doesn't exist.
// Paths are text as Platform/Text/Unicode.h makes it. Implemented in Platform/Linux/Files.
#pragma once

#include <minwinbase.h>

constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD GENERIC_WRITE = 0x40000000;
constexpr DWORD FILE_SHARE_READ = 0x1;
constexpr DWORD FILE_SHARE_WRITE = 0x2;
constexpr DWORD FILE_SHARE_DELETE = 0x4;
constexpr DWORD CREATE_NEW = 1;
constexpr DWORD CREATE_ALWAYS = 2;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD OPEN_ALWAYS = 4;
constexpr DWORD TRUNCATE_EXISTING = 5;
constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
constexpr DWORD FILE_FLAG_SEQUENTIAL_SCAN = 0x08000000;  // A hint, without effect here.
constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
constexpr DWORD FILE_BEGIN = 0;
constexpr DWORD FILE_CURRENT = 1;
constexpr DWORD FILE_END = 2;

/// Opens or creates a regular file; never blocks on a FIFO or a device, which fail like a directory does
/// (ERROR_ACCESS_DENIED).
///
/// Share modes are honoured where this project depends on them: a `shareMode` of 0 takes an exclusive lock on the open
/// file and fails with ERROR_SHARING_VIOLATION, at once, while anybody holds one. The lock lives until the last copy of
/// the handle is closed, copies that other processes inherited included. Other share modes take and test no lock.
/// INVALID_HANDLE_VALUE on failure. Any thread.
HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD shareMode, LPSECURITY_ATTRIBUTES attributes, DWORD disposition,
                   DWORD flagsAndAttributes, HANDLE templateFile) noexcept;

/// Reads up to `size` bytes at the file pointer. TRUE with `*read` 0 at the end of the file.
BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED overlapped) noexcept;
BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written, LPOVERLAPPED overlapped) noexcept;
BOOL FlushFileBuffers(HANDLE file) noexcept;
BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size) noexcept;
BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER newPointer, DWORD method) noexcept;

/// Attributes of what the name leads to, links followed; INVALID_FILE_ATTRIBUTES with the last error set where there is
/// nothing or it can't be told.
DWORD GetFileAttributesW(LPCWSTR name) noexcept;

/// Makes `name` absolute against the working directory and resolves "." and ".." lexically; a trailing separator stays.
/// Returns the length without the terminator when it fits into `size` characters, else the size needed with it; 0 on
/// failure. `filePart` must be null.
DWORD GetFullPathNameW(LPCWSTR name, DWORD size, LPWSTR buffer, LPWSTR* filePart) noexcept;

constexpr UINT DRIVE_UNKNOWN = 0;
constexpr UINT DRIVE_NO_ROOT_DIR = 1;
constexpr UINT DRIVE_REMOVABLE = 2;
constexpr UINT DRIVE_FIXED = 3;
constexpr UINT DRIVE_REMOTE = 4;
constexpr UINT DRIVE_CDROM = 5;
constexpr UINT DRIVE_RAMDISK = 6;

/// Kind of the file system that holds the folder `root`, judged by the mount table and without touching the file
/// system itself, so that a dead network mount can't hang the caller. Implemented in Platform/Linux/Search.
UINT GetDriveTypeW(LPCWSTR root) noexcept;
