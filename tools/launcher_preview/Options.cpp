#include "Options.h"

namespace LauncherPreview {

std::string Usage() {
    return R"(Opens the launcher's screen in a window, for work on the screen itself.

launcher_preview [--developer] [--simulated]

  --developer  with the developer panel below the screen: the game's states, the card's opacity, the background's colours
  --simulated  no game action is real: nothing is searched, started, read or saved, and an installation is there at once

Without an option both. With --developer alone all else is the launcher: your own settings and your own games.
Exit code as of the launcher: 0, 1 without the toolkit, 2 without a window or for a wrong command line.
)";
}

std::optional<Options> ReadOptions(const std::vector<std::string>& words) {
    if (words.empty()) return Options{true, true};
    Options options;
    for (const std::string& word : words) {
        if (word == "--help") return std::nullopt;
        if (word == "--developer") {
            options.developerControls = true;
        } else if (word == "--simulated") {
            options.simulated = true;
        } else {
            throw WrongUsage("unknown option: \"" + word + "\"");
        }
    }
    return options;
}

}  // namespace LauncherPreview
