#include "tools/scene_shot/Scenes.h"

#include <algorithm>
#include <utility>

namespace SceneShot {

void Scenes::Add(Scene scene) {
    const auto found = std::ranges::find(scenes_, scene.name, &Scene::name);
    if (found != scenes_.end()) {
        *found = std::move(scene);
    } else {
        scenes_.push_back(std::move(scene));
    }
}

const Scene* Scenes::Find(const std::string& name) const {
    const auto found = std::ranges::find(scenes_, name, &Scene::name);
    return found != scenes_.end() ? &*found : nullptr;
}

std::shared_ptr<Tamborel::SceneNode> RootInUnits(const View& view) {
    auto root = std::make_shared<Tamborel::SceneNode>();
    root->localTransform = {view.Scale(), 0, 0, view.Scale(), 0, 0};
    return root;
}

}  // namespace SceneShot
