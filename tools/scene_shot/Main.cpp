#include "tools/scene_shot/launcher/LauncherShot.h"
#include "tools/scene_shot/NodesJson.h"
#include "tools/scene_shot/Options.h"
#include "tools/scene_shot/Scenes.h"
#include "tools/scene_shot/scenes/ToolkitScenes.h"
#include "tools/scene_shot/Studio.h"

#include <cstdio>
#include <exception>
#include <fstream>

namespace {

void Write(const std::string& text, const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) throw std::runtime_error("can't write " + path);
}

std::string Listing(const SceneShot::Scene& scene, const Tamborel::SceneNode& root) {
    return scene.listed ? SceneShot::NodesJson(scene.listed(root).children) : SceneShot::NodesJson(root);
}

}  // namespace

int main(int count, char** words) {
    using namespace SceneShot;
    Scenes scenes;
    // Other folders' scenes are added here, each by a function of its own.
    AddToolkitScenes(scenes);
    scenes.Add(LauncherShot());
    try {
        const Options options = ReadOptions({words + 1, words + count}, scenes);
        const Scene* const scene = scenes.Find(options.scene);
        if (!scene) throw WrongUsage("no such scene: \"" + options.scene + "\"");
        const Shot shot = Draw(*scene, options.view);
        Pictures::WritePng(shot.picture, options.out);
        if (!options.nodes.empty()) Write(Listing(*scene, *shot.root), options.nodes);
        return 0;
    } catch (const WrongUsage& error) {
        std::fprintf(stderr, "scene_shot: %s\n\n%s", error.what(), Usage(scenes).c_str());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "scene_shot: %s\n", error.what());
        return 1;
    }
}
