// What the launcher's screen is to look like, from the command line to the screen's fields.
#pragma once

#include "launcher/LauncherScene/LauncherScene.h"
#include "tools/scene_shot/Scenes.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace SceneShot {

/// A state of the screen with what the player chose.
struct LauncherState {
    enum class Kind { None, Invalid, Checking, Ready, Launching, Running, Menu };

    Kind kind = Kind::None;
    std::optional<std::wstring> folder;   ///< Without it, one that fits the state.
    std::optional<std::wstring> message;  ///< In place of the workflow's message in the installation panel.
    std::optional<std::wstring> status;   ///< In place of the workflow's line below the installation's buttons.
    bool modern = true;
    bool fullscreen = true;
    std::int32_t mode = 4;
    bool developer = false;  ///< The panel, and a simulated game.
};

/// The options that fill a state.
std::vector<SceneOption> LauncherOptions(const std::shared_ptr<LauncherState>& state);

/// Sets the fields as the workflow has them in that state. Without a panel the texts are the workflow's; in a
/// simulation nothing sets any.
void Assume(LauncherScene& screen, const LauncherState& state);

}  // namespace SceneShot
