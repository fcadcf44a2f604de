#pragma once

#include "Platform/Linux/Direct2D/LayerTarget.h"
#include "Platform/Linux/Direct2D/LayPipeline.h"

#include <wrl/client.h>

#include <memory>

namespace Platform::Direct2D {

/// Lays the layer over a Direct3D surface: the picture is kept in a texture of its own, into which only what changed
/// is copied, and is blended over the surface's image of the moment.
class VulkanLayerTarget final : public LayerTarget {
public:
    /// Throws Direct3D::VulkanError.
    VulkanLayerTarget(IDXGISurface* surface, std::shared_ptr<Direct3D::GraphicsDevice> device);

    D2D1_SIZE_U Size() const noexcept override { return size_; }
    HRESULT Compose(const LayerFrame& frame) noexcept override;

private:
    void Upload(const LayerFrame& frame);
    void Lay(const LayerFrame& frame, const std::shared_ptr<Direct3D::Texture>& image);

    Microsoft::WRL::ComPtr<IDXGISurface> surface_;
    std::shared_ptr<Direct3D::GraphicsDevice> device_;
    std::shared_ptr<LayPipeline> pipeline_;
    std::shared_ptr<Direct3D::Texture> layer_;  // null until something is drawn
    D2D1_SIZE_U size_{};
};

}  // namespace Platform::Direct2D
