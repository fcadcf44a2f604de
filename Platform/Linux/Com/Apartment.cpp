// Apartments and object creation. An apartment is a count per thread: objects here are used by the thread that made
// them.

#include "Platform/Linux/Base/Trace.h"
#include "Platform/Linux/Com/ClassRegistry.h"

#include <combaseapi.h>

#include <cstdlib>

namespace {

struct Apartment {
    DWORD model = COINIT_MULTITHREADED;
    ULONG entries = 0;
};
thread_local Apartment apartment;

}  // namespace

HRESULT CoInitializeEx(LPVOID reserved, DWORD model) noexcept {
    if (reserved || (model & ~(COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) != 0) return E_INVALIDARG;
    const DWORD threading = model & COINIT_APARTMENTTHREADED;
    if (apartment.entries > 0 && apartment.model != threading) return RPC_E_CHANGED_MODE;
    apartment.model = threading;
    return apartment.entries++ == 0 ? S_OK : S_FALSE;
}

void CoUninitialize() noexcept {
    if (apartment.entries > 0) --apartment.entries;
}

HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid, LPVOID* object) noexcept {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (apartment.entries == 0) return CO_E_NOTINITIALIZED;
    if (outer) return Platform::NotImplemented("CoCreateInstance with an outer object");
    if ((context & CLSCTX_INPROC_SERVER) == 0) return REGDB_E_CLASSNOTREG;
    const Platform::MakeObject make = Platform::ClassRegistration::Find(classId);
    return make ? make(iid, object) : REGDB_E_CLASSNOTREG;
}

LPVOID CoTaskMemAlloc(SIZE_T size) noexcept {
    return std::malloc(size == 0 ? 1 : size);
}

void CoTaskMemFree(LPVOID memory) noexcept {
    std::free(memory);
}
