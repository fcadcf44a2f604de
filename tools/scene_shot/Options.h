// The command line of scene_shot.
#pragma once

#include "tools/scene_shot/Scenes.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace SceneShot {

/// Thrown for a command line that doesn't follow Usage; what() says what is wrong with it.
class WrongUsage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Options {
    std::string scene;
    View view;
    std::string out;    ///< A PNG file.
    std::string nodes;  ///< A JSON file; empty for none.
};

/// What the program does, with the scenes that there are.
std::string Usage(const Scenes& scenes);

/// Reads the words after the program's name, and hands the named scene its own options. Throws WrongUsage, but not for
/// a scene that isn't among the given ones.
Options ReadOptions(const std::vector<std::string>& words, const Scenes& scenes = {});

}  // namespace SceneShot
