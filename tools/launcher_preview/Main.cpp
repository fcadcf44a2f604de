// The launcher's screen with the developer panel and simulated game actions, which the launcher has no way to reach.
// All but these two choices is the launcher's own start: window, look, order.

#include "Options.h"

#include "launcher/Entry/Entry.h"
#include "launcher/Entry/ToolkitSystem.h"
#include "launcher/LauncherScene/LauncherScene.h"

#include <cstdio>

namespace {

using LauncherPreview::Options;

// Of the command line, for the screen that the start makes.
Options chosen;

/// The launcher's screen, made with what the command line chose in place of what the launcher gives.
class ChosenScene : public LauncherScene {
public:
    ChosenScene(Tamborel::FrameWindow* window, Tamborel::BackgroundRenderer* background, bool, bool)
        : LauncherScene(window, background, chosen.developerControls, chosen.simulated) {}
};

}  // namespace

int main(int count, char** words) {
    try {
        const std::optional<Options> options = LauncherPreview::ReadOptions({words + 1, words + count});
        if (!options) {
            std::fputs(LauncherPreview::Usage().c_str(), stdout);
            return 0;
        }
        chosen = *options;
    } catch (const LauncherPreview::WrongUsage& error) {
        std::fprintf(stderr, "launcher_preview: %s\n\n%s", error.what(), LauncherPreview::Usage().c_str());
        return 2;
    }
    return static_cast<int>(RunLauncher<ToolkitSystem<ChosenScene>>(nullptr, SW_SHOWNORMAL));
}
