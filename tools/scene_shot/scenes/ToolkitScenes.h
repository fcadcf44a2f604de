// The scenes that show the toolkit's own nodes.
#pragma once

#include "tools/scene_shot/Scenes.h"

namespace SceneShot {

/// All of those below.
void AddToolkitScenes(Scenes& scenes);

Scene ShapesScene();
Scene TextScene();
Scene ButtonsScene();
Scene ImagesScene();
Scene ChromeScene();

}  // namespace SceneShot
