// Draws a scene into a picture.
#pragma once

#include "tools/picture/Picture.h"
#include "tools/scene_shot/Scenes.h"

#include <memory>

namespace SceneShot {

struct Shot {
    Pictures::Picture picture;
    std::shared_ptr<Tamborel::SceneNode> root;  ///< The tree as it was drawn.
};

/// Starts the devices, draws one frame of the scene and reads it back. Throws std::runtime_error: no device, a call
/// that failed.
Shot Draw(const Scene& scene, const View& view);

}  // namespace SceneShot
