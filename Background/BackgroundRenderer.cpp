// BackgroundRenderer on a window's device. Apart from the rest, so that programs without a window need no RenderDevice.
#include "Background/BackgroundRenderer.h"

#include "Core/RenderDevice.h"

namespace Tamborel {

HRESULT BackgroundRenderer::Initialize(RenderDevice* renderDevice) {
    return InitializeOn(renderDevice ? renderDevice->GetD3DDevice() : nullptr);
}

}  // namespace Tamborel
