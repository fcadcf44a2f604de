#pragma once

#include "Platform/Linux/Direct2D/LayerTarget.h"

#include "Platform/Linux/Direct3D/Device.h"
#include "Platform/Linux/Pixels/Blend.h"

#include <wrl/client.h>

#include <memory>
#include <vector>

namespace Platform::Direct2D {

/// Lays the layer over a surface whose pixels lie in memory, as those of a software device's swap chains do. There a
/// program of the device that reads the layer and blends it costs a multiple of the same loop here, and the layer is
/// spared a texture and a pipeline.
class InPlaceLayerTarget final : public LayerTarget {
public:
    InPlaceLayerTarget(IDXGISurface* surface, std::shared_ptr<Direct3D::GraphicsDevice> device);

    D2D1_SIZE_U Size() const noexcept override { return size_; }
    /// Waits until the device has drawn what lies below; where that was put off, the layer is too.
    HRESULT Compose(const LayerFrame& frame) noexcept override;
    void LetGo() noexcept override;

private:
    Microsoft::WRL::ComPtr<IDXGISurface> surface_;
    std::shared_ptr<Direct3D::GraphicsDevice> device_;
    std::vector<Span> spans_;              ///< Where the layer shows anything.
    std::weak_ptr<const void> isPending_;  ///< Held by what was put off and reads the layer.
    D2D1_SIZE_U size_{};
};

}  // namespace Platform::Direct2D
