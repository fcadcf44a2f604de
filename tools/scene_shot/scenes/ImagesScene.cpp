#include "Scene/ImagePrimitive.h"
#include "tools/scene_shot/scenes/Parts.h"
#include "tools/scene_shot/scenes/SamplePicture.h"
#include "tools/scene_shot/scenes/ToolkitScenes.h"

#include <string_view>
#include <utility>

namespace SceneShot {

namespace {

using namespace Tamborel;
using Bytes = std::vector<std::uint8_t>;

constexpr std::string_view kCompass = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 100 75">
  <rect x="2" y="2" width="96" height="71" rx="12" fill="#1d2736" stroke="#4fa3e3" stroke-width="3"/>
  <path d="M50 10 L59 37 L41 37 Z" fill="#f2b84b"/>
  <path d="M50 65 L59 38 L41 38 Z" fill="#8a93a3" fill-opacity="0.6"/>
</svg>)";

std::shared_ptr<ImageAsset> Svg() {
    return ImageAsset::FromBytes(Bytes(kCompass.begin(), kCompass.end()), true);
}
std::shared_ptr<ImageAsset> Raster(Bytes bytes) {
    return ImageAsset::FromBytes(std::move(bytes), false);
}

/// On a darker ground, so that what stays empty can be seen.
std::shared_ptr<ImagePrimitive> AddImage(SceneNode& root, const Rect& rect, std::shared_ptr<ImageAsset> asset) {
    AddRectangle(root, rect, Colour(0x0D1016));
    auto node = std::make_shared<ImagePrimitive>();
    node->rect = rect;
    node->asset = std::move(asset);
    root.AddChild(node);
    return node;
}

Rect Slot(int column, float top) {
    const float left = 20 + 116 * static_cast<float>(column);
    return {left, top, left + 100, top + 75};
}

void AddKinds(SceneNode& root) {
    AddCaption(root, 20, 10, L"PNG, JPEG, SVG; half the pixels, linear and nearest");
    AddImage(root, Slot(0, 28), Raster(SamplePng(100, 75)));
    AddImage(root, Slot(1, 28), Raster(SampleJpeg(100, 75)));
    AddImage(root, Slot(2, 28), Svg());
    AddImage(root, Slot(3, 28), Raster(SamplePng(20, 15)));
    AddImage(root, Slot(4, 28), Raster(SamplePng(20, 15)))->interpolationMode =
        D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR;
}

void AddStretched(SceneNode& root) {
    AddCaption(root, 20, 116, L"stretched: wide, narrow, an SVG, an SVG drawn small first and large after");
    AddImage(root, {20, 134, 160, 184}, Raster(SamplePng(100, 75)));
    AddImage(root, {176, 134, 206, 209}, Raster(SamplePng(100, 75)));
    AddImage(root, {222, 134, 362, 184}, Svg());
    const auto shared = Svg();
    AddImage(root, {378, 134, 428, 172}, shared);
    AddImage(root, {444, 134, 544, 209}, shared);
}

void AddStates(SceneNode& root) {
    AddCaption(root, 20, 222, L"opacity 75, 50, 25 percent; still loading; broken; cut short");
    for (int i = 0; i < 3; ++i) {
        AddImage(root, Slot(i, 240), Raster(SamplePng(100, 75)))->opacity = 0.75F - 0.25F * static_cast<float>(i);
    }
    const auto loading = Raster(SamplePng(100, 75));
    loading->State()->complete = false;
    AddImage(root, Slot(3, 240), loading);
    AddImage(root, Slot(4, 240), Raster({'n', 'o', ' ', 'p', 'i', 'c', 't', 'u', 'r', 'e'}));
    Bytes half = SamplePng(100, 75);
    half.resize(half.size() / 2);
    AddImage(root, Slot(5, 240), Raster(std::move(half)));
}

}  // namespace

Scene ImagesScene() {
    return {"images", "PNG, JPEG and SVG: stretch, opacity, still loading, broken", [](const View& view) {
                auto root = RootInUnits(view);
                AddKinds(*root);
                AddStretched(*root);
                AddStates(*root);
                return root;
            }};
}

}  // namespace SceneShot
