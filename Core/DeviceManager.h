// The graphics objects that belong to the process and to no display device.
#pragma once

#include "Core/EmbeddedResource.h"

#include <d2d1_3.h>
#include <dwrite_3.h>
#include <dxgi1_6.h>
#include <wincodec.h>
#include <wrl/client.h>

#include <cstdint>
#include <string>

namespace Tamborel {

/// The factories of DXGI, Direct2D, DirectWrite and WIC, and the collection of the fonts built into the program. Made
/// and released on the main thread; in between only read, on any thread. Accessors add no reference and give null for
/// what does not exist.
class DeviceManager {
public:
    /// The one object of the process. What it still holds at exit is released then.
    static DeviceManager& Get();

    DeviceManager(const DeviceManager&) = delete;
    DeviceManager& operator=(const DeviceManager&) = delete;

    /// Makes everything. S_OK at once when that is done already. A failure is reported and returned; what was made
    /// before it stays until Shutdown after a later success, or exit. Built-in fonts that can't be loaded are no
    /// failure.
    [[nodiscard]] HRESULT Initialize() noexcept;

    /// Releases everything. Does nothing unless Initialize succeeded.
    void Shutdown() noexcept;

    IDXGIFactory7* GetDXGIFactory() const noexcept { return DXGIFactory.Get(); }
    ID2D1Factory3* GetD2DFactory() const noexcept { return D2DFactory.Get(); }
    IDWriteFactory3* GetDWriteFactory() const noexcept { return DWriteFactory.Get(); }
    /// The same factory as GetDWriteFactory. Null without the built-in fonts.
    IDWriteFactory5* GetDWriteFactory5() const noexcept { return DWriteFactory5.Get(); }
    IDWriteInMemoryFontFileLoader* GetFontLoader() const noexcept { return FontLoader.Get(); }
    /// The built-in fonts.
    IDWriteFontCollection1* GetFontCollection() const noexcept { return FontCollection.Get(); }
    IWICImagingFactory2* GetWICFactory() const noexcept { return WICFactory.Get(); }

    /// Makes a text format of a built-in family, else of the system's family of that name. Weight, style and stretch
    /// are values of DirectWrite's enumerations, `size` is in device-independent pixels. E_INVALIDARG for a null
    /// `format` or an empty family, E_FAIL before Initialize, else DirectWrite's result. `*format` is null on failure.
    [[nodiscard]] HRESULT CreateTextFormat(const std::wstring& family, std::uint32_t weight, std::int32_t style,
                                           std::uint32_t stretch, float size, const std::wstring& locale,
                                           IDWriteTextFormat** format) noexcept;

private:
    DeviceManager() = default;
    ~DeviceManager() = default;

    HRESULT CreateDevices() noexcept;
    void LoadEmbeddedFonts() noexcept;
    HRESULT CreateFontCollection() noexcept;
    void ReleaseFonts() noexcept;

    // Failure reports carry these names.
    bool Initialized = false;
    Microsoft::WRL::ComPtr<ID2D1Factory3> D2DFactory;
    Microsoft::WRL::ComPtr<IDXGIFactory7> DXGIFactory;
    Microsoft::WRL::ComPtr<IDWriteFactory5> DWriteFactory5;
    Microsoft::WRL::ComPtr<IDWriteFactory3> DWriteFactory;
    Microsoft::WRL::ComPtr<IDWriteInMemoryFontFileLoader> FontLoader;  // registered with DWriteFactory while it exists
    Microsoft::WRL::ComPtr<IDWriteFontCollection1> FontCollection;
    Microsoft::WRL::ComPtr<IWICImagingFactory2> WICFactory;
};

/// Adds a font that lies in memory to a font set. DirectWrite reads the resource's own bytes and holds a reference to
/// the resource meanwhile. E_INVALIDARG when one of the first three is null, E_FAIL for a resource without bytes or
/// with more than 32 bits can count.
[[nodiscard]] HRESULT AddEmbeddedFont(IDWriteFactory5* factory, IDWriteInMemoryFontFileLoader* loader,
                                      IDWriteFontSetBuilder1* builder, EmbeddedResource& resource) noexcept;

}  // namespace Tamborel
