#include "Scene/RectangleNode.h"

#include "Scene/DrawContext.h"

namespace Tamborel {

bool RectangleNode::HitTest(Point local) const {
    return Contains(rect, local);
}

void RectangleNode::Draw(DrawContext& context) {
    context.SetTransform(worldTransform);
    const bool clipped = PushNodeClip(context);
    const bool rounded = radiusX > 0 || radiusY > 0;
    if (fillColor.a > 0) {
        if (rounded) {
            context.FillRoundedRect(rect, radiusX, radiusY, fillColor);
        } else {
            context.FillRect(rect, fillColor);
        }
    }
    if (strokeColor.a > 0 && strokeWidth > 0) {
        if (rounded) {
            context.StrokeRoundedRect(rect, radiusX, radiusY, strokeColor, strokeWidth);
        } else {
            context.StrokeRect(rect, strokeColor, strokeWidth);
        }
    }
    DrawChildren(context);
    PopNodeClip(context, clipped);
}

}  // namespace Tamborel
