#pragma once

#include <minwindef.h>

/// Full path of the running program (`module` must be null), cut to `size` characters. Its length; 0 on failure.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size) noexcept;

// Files that the program carries within itself (cmake/Resources.cmake puts them there). `module` must be null. Names
// and types match without regard to the case of A to Z. What is found lives as long as the program and needs no
// release. Implemented in Platform/Linux/Resources. Any thread.

/// Null with the last error set if there is no such resource.
HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type) noexcept;
HGLOBAL LoadResource(HMODULE module, HRSRC resource) noexcept;
DWORD SizeofResource(HMODULE module, HRSRC resource) noexcept;
LPVOID LockResource(HGLOBAL data) noexcept;
