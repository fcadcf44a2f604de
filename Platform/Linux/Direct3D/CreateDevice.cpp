// D3D11CreateDevice.
#include "Platform/Linux/Direct3D/DeviceAhead.h"
#include "Platform/Linux/Direct3D/Direct3DDevice.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <span>

namespace Platform::Direct3D {

namespace {

constexpr D3D_FEATURE_LEVEL offered[] = {D3D_FEATURE_LEVEL_11_1, D3D_FEATURE_LEVEL_11_0};

/// The first wanted level that is offered; with a null list, Direct3D's own one, which begins with 11.0.
std::optional<D3D_FEATURE_LEVEL> ChooseLevel(const D3D_FEATURE_LEVEL* wanted, UINT count) {
    if (!wanted) return D3D_FEATURE_LEVEL_11_0;
    for (const D3D_FEATURE_LEVEL level : std::span(wanted, count)) {
        if (std::ranges::find(offered, level) != std::end(offered)) return level;
    }
    return std::nullopt;
}

}  // namespace

}  // namespace Platform::Direct3D

HRESULT D3D11CreateDevice(IDXGIAdapter* adapter, D3D_DRIVER_TYPE driverType, HMODULE software, UINT,
                          const D3D_FEATURE_LEVEL* levels, UINT levelCount, UINT sdkVersion, ID3D11Device** device,
                          D3D_FEATURE_LEVEL* chosenLevel, ID3D11DeviceContext** context) noexcept try {
    using namespace Platform::Direct3D;
    if (device) *device = nullptr;
    if (context) *context = nullptr;
    if (adapter || software || driverType != D3D_DRIVER_TYPE_HARDWARE || sdkVersion != D3D11_SDK_VERSION)
        return E_INVALIDARG;
    const auto level = ChooseLevel(levels, levelCount);
    if (!level) return E_INVALIDARG;

    ComPtr<Platform::Direct3D::Direct3DDevice> made;
    try {
        std::shared_ptr<GraphicsDevice> graphics = DeviceAhead::Take();
        if (!graphics) graphics = GraphicsDevice::Create();
        made = MakeObject<Platform::Direct3D::Direct3DDevice>(std::move(graphics), *level);
    } catch (...) {
        const HRESULT hr = CurrentFailure();
        if (hr == DXGI_ERROR_UNSUPPORTED)
            std::fputs("No usable Vulkan driver was found. Install the package mesa-vulkan-drivers.\n", stderr);
        return hr;
    }
    if (chosenLevel) *chosenLevel = *level;
    if (context) made->GetImmediateContext(context);
    if (device) *device = made.Detach();
    return device || context ? S_OK : S_FALSE;
} catch (...) {
    return Platform::Direct3D::CurrentFailure();
}
