#include "Scene/ImagePrimitive.h"

namespace Tamborel {

ImagePrimitive::~ImagePrimitive() = default;

bool ImagePrimitive::HitTest(Point local) const {
    return rect.left <= local.x && local.x < rect.right && rect.top <= local.y && local.y < rect.bottom;
}

void ImagePrimitive::Draw(DrawContext& context) {
    context.SetTransform(worldTransform);
    const bool clipped = PushNodeClip(context);
    if (asset) {
        asset->Draw(context, rect, opacity, static_cast<D2D1_INTERPOLATION_MODE>(interpolationMode));
    }
    DrawChildren(context);
    PopNodeClip(context, clipped);
}

}  // namespace Tamborel
