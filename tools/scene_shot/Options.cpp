#include "tools/scene_shot/Options.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>

namespace SceneShot {

namespace {

/// What one side of a Direct3D texture may have.
constexpr std::uint32_t kLargestSide = 16384;

std::uint32_t Side(const std::string& text) {
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < 1 || value > kLargestSide) {
        throw WrongUsage("not a whole number from 1 to " + std::to_string(kLargestSide) + ": \"" + text + "\"");
    }
    return value;
}

float Dpi(const std::string& text) {
    float value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || !(value >= 1 && value <= 9600)) {
        throw WrongUsage("not a number from 1 to 9600: \"" + text + "\"");
    }
    return value;
}

using Reader = std::function<void(Options&, const std::string&)>;

const std::map<std::string, Reader>& Readers() {
    static const std::map<std::string, Reader> readers = {
        {"--scene", [](Options& o, const std::string& v) { o.scene = v; }},
        {"--width", [](Options& o, const std::string& v) { o.view.width = Side(v); }},
        {"--height", [](Options& o, const std::string& v) { o.view.height = Side(v); }},
        {"--dpi", [](Options& o, const std::string& v) { o.view.dpi = Dpi(v); }},
        {"--out", [](Options& o, const std::string& v) { o.out = v; }},
        {"--nodes", [](Options& o, const std::string& v) { o.nodes = v; }},
    };
    return readers;
}

/// The scene that the words name, wherever they do.
const Scene* NamedScene(const std::vector<std::string>& words, const Scenes& scenes) {
    const auto found = std::ranges::find(words, "--scene");
    return found != words.end() && found + 1 != words.end() ? scenes.Find(*(found + 1)) : nullptr;
}

const SceneOption* OwnOption(const Scene* scene, const std::string& name) {
    if (!scene) return nullptr;
    const auto found = std::ranges::find(scene->options, name, &SceneOption::name);
    return found != scene->options.end() ? &*found : nullptr;
}

std::string Line(std::size_t indent, const std::string& what, const std::string& meaning) {
    constexpr std::size_t column = 24;
    const std::string begin = std::string(indent, ' ') + what;
    return begin + std::string(begin.size() < column ? column - begin.size() : 1, ' ') + meaning + "\n";
}

}  // namespace

std::string Usage(const Scenes& scenes) {
    std::string text = R"(Draws one picture of a scene through the toolkit's own nodes and devices, without a window.

scene_shot --scene NAME --width W --height H --dpi D --out FILE.png [--nodes FILE.json]

  --width W --height H  size of the picture in pixels
  --dpi D               pixels per inch: 96 is a scale of 100 percent, 144 of 150 percent
  --nodes FILE.json     the tree of nodes that was drawn

Exit code 0, 1 for a failure, 2 for a wrong command line. Scenes:

)";
    for (const Scene& scene : scenes.All()) {
        text += Line(2, scene.name, scene.shows);
        for (const SceneOption& option : scene.options) {
            text += Line(4, option.name + (option.value.empty() ? "" : " " + option.value), option.meaning);
        }
    }
    return text;
}

Options ReadOptions(const std::vector<std::string>& words, const Scenes& scenes) {
    Options options;
    const Scene* const scene = NamedScene(words, scenes);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const SceneOption* const own = OwnOption(scene, words[i]);
        if (own && own->value.empty()) {
            own->take({});
            continue;
        }
        const auto reader = Readers().find(words[i]);
        if (!own && reader == Readers().end()) throw WrongUsage("unknown option: \"" + words[i] + "\"");
        if (i + 1 == words.size()) throw WrongUsage(words[i] + " needs a value");
        ++i;
        if (own) {
            own->take(words[i]);
        } else {
            reader->second(options, words[i]);
        }
    }
    if (options.scene.empty()) throw WrongUsage("--scene is needed");
    if (options.view.width == 0 || options.view.height == 0) throw WrongUsage("--width and --height are needed");
    if (options.out.empty()) throw WrongUsage("--out is needed");
    return options;
}

}  // namespace SceneShot
