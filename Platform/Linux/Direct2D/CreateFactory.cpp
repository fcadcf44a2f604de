// The factory that programs get: its targets are Direct3D surfaces.

#include "Platform/Linux/Direct2D/Factory.h"
#include "Platform/Linux/Direct2D/InPlaceLayerTarget.h"
#include "Platform/Linux/Direct2D/VulkanLayerTarget.h"

#include "Platform/Linux/Direct3D/SurfaceAccess.h"

#include <wrl/client.h>

#include <new>

namespace Platform::Direct2D {

namespace {

class SurfaceTargetMaker final : public LayerTargetMaker {
public:
    std::unique_ptr<LayerTarget> Make(IDXGISurface* surface) const override try {
        std::shared_ptr<Direct3D::GraphicsDevice> device = Direct3D::GraphicsDevice::From(surface);
        const std::shared_ptr<Direct3D::Texture> image = device ? Direct3D::TextureOf(surface) : nullptr;
        if (!image) return nullptr;
        if (image->Pixels()) return std::make_unique<InPlaceLayerTarget>(surface, std::move(device));
        return std::make_unique<VulkanLayerTarget>(surface, std::move(device));
    } catch (const Direct3D::VulkanError&) {
        return nullptr;
    }

    // A failure shows itself again, with a result to tell, when a target is made.
    std::shared_ptr<const void> KeepDeviceObjects(IDXGIDevice* dxgiDevice) const override try {
        const std::shared_ptr<Direct3D::GraphicsDevice> device = Direct3D::GraphicsDevice::From(dxgiDevice);
        // The surfaces of a software device's windows need none.
        return device && !device->IsSoftware() ? LayPipeline::Of(device) : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
};

const SurfaceTargetMaker surfaceTargets;

}  // namespace

}  // namespace Platform::Direct2D

HRESULT WINAPI D2D1CreateFactory(D2D1_FACTORY_TYPE, REFIID iid, const D2D1_FACTORY_OPTIONS*, void** factory) noexcept {
    if (!factory) return E_POINTER;
    *factory = nullptr;
    Microsoft::WRL::ComPtr<ID2D1Factory3> made;
    made.Attach(new (std::nothrow) Platform::Direct2D::Factory(Platform::Direct2D::surfaceTargets));
    return made ? made->QueryInterface(iid, factory) : E_OUTOFMEMORY;
}
