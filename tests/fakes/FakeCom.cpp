// Apartments, and the one class that the toolkit has made for it: the imaging factory.

#include "tests/fakes/FakeImaging.h"

#include <objbase.h>
#include <wincodec.h>

#include <cstdlib>

FAKE_FUNCTION HRESULT CoInitializeEx(LPVOID, DWORD model) noexcept {
    return Fakes::FreeCall("CoInitializeEx", model);
}

FAKE_FUNCTION void CoUninitialize() noexcept {
    Fakes::FreeCall("CoUninitialize");
}

FAKE_FUNCTION HRESULT CoCreateInstance(REFCLSID classId, IUnknown*, DWORD context, REFIID iid,
                                       LPVOID* object) noexcept {
    const bool known = classId == CLSID_WICImagingFactory2;
    const HRESULT result =
        Fakes::FreeCall("CoCreateInstance", std::string(known ? "WICImagingFactory2" : "?"), context);
    if (!known && SUCCEEDED(result)) {
        *object = nullptr;
        return REGDB_E_CLASSNOTREG;
    }
    return Fakes::MakeAs<Fakes::FakeImagingFactory>(result, iid, object);
}

// The rest of what the platform has beside these functions, so that its own never come along.

FAKE_FUNCTION LPVOID CoTaskMemAlloc(SIZE_T size) noexcept {
    return std::malloc(size == 0 ? 1 : size);
}

FAKE_FUNCTION void CoTaskMemFree(LPVOID memory) noexcept {
    std::free(memory);
}
