// The command line of launcher_preview.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace LauncherPreview {

/// Thrown for a command line that doesn't follow Usage; what() says what is wrong with it.
class WrongUsage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Options {
    bool developerControls = false;
    bool simulated = false;
};

/// What the program does and takes.
std::string Usage();

/// Reads the words after the program's name. Nothing when they ask for help; without any word both are on. Throws
/// WrongUsage.
std::optional<Options> ReadOptions(const std::vector<std::string>& words);

}  // namespace LauncherPreview
