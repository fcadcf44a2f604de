// A picture in the tree.
#pragma once

#include "Scene/ImageAsset.h"
#include "Scene/SceneNode.h"

#include <cstdint>
#include <memory>

namespace Tamborel {

/// Stretches an asset over a rectangle. An asset that is missing or still loading leaves the rectangle empty; children
/// are drawn all the same.
class ImagePrimitive : public SceneNode {
public:
    std::shared_ptr<ImageAsset> asset;    ///< May be shared between nodes; may be empty.
    Rect rect;                            ///< Destination, in local space. Also what is hit.
    float opacity = 1.0F;                 ///< From 0 to 1. Raster pictures only.
    std::uint32_t interpolationMode = 1;  ///< A D2D1_INTERPOLATION_MODE; 1 is linear. Raster pictures only.

    ~ImagePrimitive() override;

    bool HitTest(Point local) const override;
    void Draw(DrawContext& context) override;
};

}  // namespace Tamborel
