#pragma once

#include "Scene/Records.h"
#include "Scene/SceneNode.h"

namespace Tamborel {

/// A rectangle, with rounded corners if it has radii, filled and outlined in plain colours. Children paint above it, so
/// it is also the usual container. Both colours of a new one are clear: it paints nothing.
class RectangleNode : public SceneNode {
public:
    Rect rect;          ///< In local space.
    Color fillColor;    ///< No fill at alpha 0.
    Color strokeColor;  ///< No outline at alpha 0.
    /// In units of local space; half of it lies outside `rect`. No outline at 0.
    float strokeWidth = 1.0F;
    float radiusX = 0;  ///< Of the corners. One of the two above 0 makes it rounded.
    float radiusY = 0;

    ~RectangleNode() override = default;

    /// Edges on the left and top are inside, those on the right and bottom are not. Corners are never cut off.
    bool HitTest(Point local) const override;
    void Draw(DrawContext& context) override;
};

}  // namespace Tamborel
