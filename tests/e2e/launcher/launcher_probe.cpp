// The launcher, for the tests that use it as a player does: it also writes what is on its screen to the file that the
// environment variable VELORINTH_NODES names, whenever that has changed. The file is always whole.

#include "launcher/Entry/Entry.h"
#include "launcher/Entry/ToolkitSystem.h"
#include "launcher/LauncherScene/LauncherScene.h"
#include "tools/scene_shot/NodesJson.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

class ToldScene : public LauncherScene {
public:
    using LauncherScene::LauncherScene;

    void Update(float deltaSeconds) override {
        LauncherScene::Update(deltaSeconds);
        std::string nodes = SceneShot::NodesJson(children);
        if (file_.empty() || nodes == told_) return;
        told_ = std::move(nodes);
        const std::string unfinished = file_ + ".new";
        std::ofstream(unfinished, std::ios::binary) << told_;
        if (std::rename(unfinished.c_str(), file_.c_str()) != 0) std::perror(file_.c_str());
    }

private:
    static std::string FileName() {
        const char* const name = std::getenv("VELORINTH_NODES");
        return name ? name : "";
    }

    std::string file_ = FileName();
    std::string told_;
};

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    return static_cast<int>(RunLauncher<ToolkitSystem<ToldScene>>(instance, showCommand));
}
