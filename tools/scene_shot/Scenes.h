// The scenes that can be drawn, by name. Whoever has scenes adds them to the list that Main.cpp makes.
#pragma once

#include "Scene/Records.h"
#include "Scene/SceneNode.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace SceneShot {

/// What is looked at, in pixels, and at how many pixels per inch: 96 is a scale of 100 percent.
struct View {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    float dpi = 96.0F;

    float Scale() const { return dpi / 96.0F; }
    // In device-independent units.
    float UnitsWide() const { return static_cast<float>(width) / Scale(); }
    float UnitsHigh() const { return static_cast<float>(height) / Scale(); }
};

/// An option of the command line that one scene takes, beside those that all take.
struct SceneOption {
    std::string name;     ///< With its dashes.
    std::string value;    ///< What stands for the value in the usage; empty for an option without one.
    std::string meaning;  ///< A few words for the usage.
    /// Told of the value; of an empty one for an option without. Throws WrongUsage.
    std::function<void(const std::string& value)> take;
};

/// A picture to draw.
struct Scene {
    std::string name;
    std::string shows;  ///< A few words for the list of scenes.
    /// Makes the tree: its root's parent space is the picture's pixels, the origin at the upper left. It is updated
    /// once and drawn once.
    std::function<std::shared_ptr<Tamborel::SceneNode>(const View&)> make;
    Tamborel::Color backdrop{0.09F, 0.10F, 0.13F, 1};  ///< Opaque.
    std::vector<SceneOption> options{};
    /// The node whose children are the listed ones, given the tree's root. Without it, the root itself is listed.
    std::function<const Tamborel::SceneNode&(const Tamborel::SceneNode& root)> listed{};
};

/// In the order of adding.
class Scenes {
public:
    /// A scene of a name that is there already replaces it.
    void Add(Scene scene);
    /// Null if there is none of that name. Valid until the next Add.
    const Scene* Find(const std::string& name) const;
    const std::vector<Scene>& All() const { return scenes_; }

private:
    std::vector<Scene> scenes_;
};

/// A root whose children are placed in device-independent units, as those of a window's client root.
std::shared_ptr<Tamborel::SceneNode> RootInUnits(const View& view);

}  // namespace SceneShot
