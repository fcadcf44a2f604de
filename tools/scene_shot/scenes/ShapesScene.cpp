#include "tools/scene_shot/scenes/Parts.h"
#include "tools/scene_shot/scenes/ToolkitScenes.h"

#include <cmath>

namespace SceneShot {

namespace {

using namespace Tamborel;

const Color blue = Colour(0x3A8DDE);
const Color gold = Colour(0xF2B84B);
const Color rose = Colour(0xE05A6F);
const Color none{};

void Outline(RectangleNode& node, const Color& color, float width) {
    node.strokeColor = color;
    node.strokeWidth = width;
}

/// Plain, rounded, rounded by one radius alone, outlined, and outlines of several widths.
void AddRectangles(SceneNode& root) {
    AddRectangle(root, {20, 20, 100, 70}, blue);
    AddRectangle(root, {120, 20, 200, 70}, blue, 12);
    AddRectangle(root, {220, 20, 300, 70}, blue)->radiusX = 16;  // the other radius stays 0: corners are square
    AddRectangle(root, {320, 20, 400, 70}, blue, 60);            // each radius is cut to half its side: an ellipse
    const float widths[] = {0, 1, 2, 5};
    for (int i = 0; i < 4; ++i) {
        const float left = 20 + 100 * static_cast<float>(i);
        Outline(*AddRectangle(root, {left, 90, left + 80, 140}, i % 2 ? none : blue), gold, widths[i]);
        Outline(*AddRectangle(root, {left, 160, left + 80, 210}, i % 2 ? none : blue, 12), gold, widths[i]);
    }
}

/// Circles, ellipses, outlines alone, half see-through ones over each other, and one of radius 0.
void AddEllipses(SceneNode& root) {
    AddEllipse(root, {50, 255}, 28, rose);
    AddEllipse(root, {130, 255}, 28, rose)->radiusX = 40;
    const auto ring = AddEllipse(root, {215, 255}, 26, none);
    ring->strokeColor = gold;
    ring->strokeWidth = 4;
    AddEllipse(root, {280, 245}, 24, Colour(0xE05A6F, 0.5F));
    AddEllipse(root, {304, 245}, 24, Colour(0x3A8DDE, 0.5F));
    AddEllipse(root, {292, 265}, 24, Colour(0xF2B84B, 0.5F));
    const auto line = AddEllipse(root, {370, 255}, 28, rose);
    line->radiusX = 0;
    line->strokeColor = gold;
    line->strokeWidth = 2;
}

/// A turned square with a child of its own, a clip that cuts a child, an empty clip that cuts nothing, and a hidden
/// node.
void AddTransforms(SceneNode& root) {
    const float turn = std::sqrt(0.5F);
    const auto turned = AddRectangle(root, {-24, -24, 24, 24}, blue, 6);
    turned->localTransform = {turn, turn, -turn, turn, 60, 335};
    AddRectangle(*turned, {-10, -10, 10, 10}, gold);

    const auto clipped = AddRectangle(root, {120, 305, 200, 365}, Colour(0x232A36));
    clipped->clipEnabled = true;
    clipped->clipRect = clipped->rect;
    AddEllipse(*clipped, {200, 335}, 26, rose);

    const auto open = AddRectangle(root, {240, 305, 300, 365}, Colour(0x232A36));
    open->clipEnabled = true;
    open->clipRect = {240, 305, 240, 365};
    AddEllipse(*open, {300, 335}, 20, rose);

    AddRectangle(root, {340, 305, 400, 365}, rose)->visible = false;
    Outline(*AddRectangle(root, {340, 305, 400, 365}, none), Colour(0x8A93A3), 1);
}

}  // namespace

Scene ShapesScene() {
    return {"shapes", "rectangles and ellipses: corners, outlines, transparency, transforms, clips",
            [](const View& view) {
                auto root = RootInUnits(view);
                AddRectangles(*root);
                AddEllipses(*root);
                AddTransforms(*root);
                return root;
            }};
}

}  // namespace SceneShot
