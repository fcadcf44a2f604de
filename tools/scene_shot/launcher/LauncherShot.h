// The launcher's one screen.
#pragma once

#include "tools/scene_shot/Scenes.h"

namespace SceneShot {

/// The screen where the launcher's window has it: the picture is the whole window, title bar and frame left empty.
Scene LauncherShot();

}  // namespace SceneShot
