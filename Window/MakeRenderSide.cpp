// On its own, so that a test with another render side doesn't link the loop and its devices.
#include "Window/RenderLoop.h"

namespace Tamborel {

std::unique_ptr<RenderSide> MakeRenderSide(const RenderSideSetup& setup) {
    return std::make_unique<RenderLoop>(setup);
}

}  // namespace Tamborel
