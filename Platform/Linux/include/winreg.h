// The few registry values that exist on this system. Implemented in Platform/Linux/Search.
#pragma once

#include <minwindef.h>

#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000001)))
#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000002)))

constexpr DWORD RRF_RT_REG_SZ = 0x2;

/// Reads a string value: the first of what RegistryStrings (Platform/Interface/SearchPlaces.h) finds for the key.
/// `*size` is in bytes, terminator included. ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_MORE_DATA for a buffer that is
/// too small.
LSTATUS RegGetValueW(HKEY root, LPCWSTR subkey, LPCWSTR value, DWORD flags, LPDWORD type, PVOID data,
                     LPDWORD size) noexcept;
