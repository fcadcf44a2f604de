#include "Scene/EllipsePrimitive.h"

#include "Scene/DrawContext.h"

namespace Tamborel {

bool EllipsePrimitive::HitTest(Point local) const {
    if (!(radiusX > 0) || !(radiusY > 0)) return false;
    const float dx = (local.x - center.x) / radiusX;
    const float dy = (local.y - center.y) / radiusY;
    return dx * dx + dy * dy <= 1.0F;
}

void EllipsePrimitive::Draw(DrawContext& context) {
    context.SetTransform(worldTransform);
    const bool clipped = PushNodeClip(context);
    if (fillColor.a > 0) context.FillEllipse(center, radiusX, radiusY, fillColor);
    if (strokeColor.a > 0 && strokeWidth > 0) {
        context.StrokeEllipse(center, radiusX, radiusY, strokeColor, strokeWidth);
    }
    DrawChildren(context);
    PopNodeClip(context, clipped);
}

}  // namespace Tamborel
