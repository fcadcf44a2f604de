#include "tools/scene_shot/scenes/ToolkitScenes.h"

namespace SceneShot {

void AddToolkitScenes(Scenes& scenes) {
    scenes.Add(ShapesScene());
    scenes.Add(TextScene());
    scenes.Add(ButtonsScene());
    scenes.Add(ImagesScene());
    scenes.Add(ChromeScene());
}

}  // namespace SceneShot
