#pragma once

#include "Scene/Records.h"
#include "Scene/SceneNode.h"

namespace Tamborel {

/// An ellipse, filled and outlined in plain colours; children paint above it. Both colours of a new one are clear: it
/// paints nothing.
class EllipsePrimitive : public SceneNode {
public:
    Point center;  ///< In local space, as the radii.
    float radiusX = 20.0F;
    float radiusY = 20.0F;
    Color fillColor;    ///< No fill at alpha 0.
    Color strokeColor;  ///< No outline at alpha 0.
    /// In units of local space; half of it lies outside the radii. No outline at 0.
    float strokeWidth = 1.0F;

    ~EllipsePrimitive() override = default;

    /// The rim is inside. An ellipse without two radii above 0 is never hit.
    bool HitTest(Point local) const override;
    void Draw(DrawContext& context) override;
};

}  // namespace Tamborel
