// Apartments and object creation. Implemented in Platform/Linux/Com.
#pragma once

#include <unknwn.h>

constexpr DWORD COINIT_MULTITHREADED = 0x0;
constexpr DWORD COINIT_APARTMENTTHREADED = 0x2;
constexpr DWORD COINIT_DISABLE_OLE1DDE = 0x4;
constexpr DWORD CLSCTX_INPROC_SERVER = 0x1;

/// Enters an apartment on the calling thread: S_OK first, S_FALSE when already entered with the same model (each of the
/// two is to be paired with CoUninitialize), RPC_E_CHANGED_MODE when entered with the other.
HRESULT CoInitializeEx(LPVOID reserved, DWORD model) noexcept;
void CoUninitialize() noexcept;

/// Makes an object of one of the known classes. CO_E_NOTINITIALIZED outside an apartment, REGDB_E_CLASSNOTREG for an
/// unknown class.
HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid, LPVOID* object) noexcept;

LPVOID CoTaskMemAlloc(SIZE_T size) noexcept;
void CoTaskMemFree(LPVOID memory) noexcept;
