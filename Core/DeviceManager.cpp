#include "Core/DeviceManager.h"

#include "Core/Check.h"

#include <objbase.h>

namespace Tamborel {

DeviceManager& DeviceManager::Get() {
    static DeviceManager manager;
    return manager;
}

HRESULT DeviceManager::Initialize() noexcept {
    if (Initialized) return S_OK;
    TAMBOREL_CHECK(CreateDevices());
    Initialized = true;
    return S_OK;
}

void DeviceManager::Shutdown() noexcept {
    if (!Initialized) return;
    WICFactory.Reset();
    ReleaseFonts();
    DWriteFactory.Reset();
    D2DFactory.Reset();
    DXGIFactory.Reset();
    Initialized = false;
}

// The reports show the expressions as they are written here, so the formatter keeps its hands off them.
// clang-format off
HRESULT DeviceManager::CreateDevices() noexcept {
    const UINT dxgiFlags = 0;  // No debug layer, in no build.
    TAMBOREL_CHECK(CreateDXGIFactory2(dxgiFlags, IID_PPV_ARGS(&DXGIFactory)));

    D2D1_FACTORY_OPTIONS d2dOpts{};
    d2dOpts.debugLevel = D2D1_DEBUG_LEVEL_NONE;
    D2DFactory.Reset();
    TAMBOREL_CHECK(D2D1CreateFactory(
        D2D1_FACTORY_TYPE_MULTI_THREADED, d2dOpts, D2DFactory.GetAddressOf()));

    DWriteFactory.Reset();
    TAMBOREL_CHECK(DWriteCreateFactory(
        DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory3),
        reinterpret_cast<IUnknown**>(DWriteFactory.GetAddressOf())));

    LoadEmbeddedFonts();

    TAMBOREL_CHECK(CoCreateInstance(
        CLSID_WICImagingFactory2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&WICFactory)));
    return S_OK;
}
// clang-format on

HRESULT DeviceManager::CreateTextFormat(const std::wstring& family, std::uint32_t weight, std::int32_t style,
                                        std::uint32_t stretch, float size, const std::wstring& locale,
                                        IDWriteTextFormat** format) noexcept {
    if (!format) return E_INVALIDARG;
    *format = nullptr;
    if (!DWriteFactory) return E_FAIL;
    if (family.empty()) return E_INVALIDARG;

    IDWriteFontCollection* collection = nullptr;  // the system's fonts
    if (FontCollection) {
        UINT32 index = 0;
        BOOL exists = FALSE;
        const HRESULT result = FontCollection->FindFamilyName(family.c_str(), &index, &exists);
        if (FAILED(result)) return result;
        if (exists) collection = FontCollection.Get();
    }
    return DWriteFactory->CreateTextFormat(family.c_str(), collection, static_cast<DWRITE_FONT_WEIGHT>(weight),
                                           static_cast<DWRITE_FONT_STYLE>(style),
                                           static_cast<DWRITE_FONT_STRETCH>(stretch), size, locale.c_str(), format);
}

}  // namespace Tamborel
