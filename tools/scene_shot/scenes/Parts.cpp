#include "tools/scene_shot/scenes/Parts.h"

#include <utility>

namespace SceneShot {

using namespace Tamborel;

Color Colour(std::uint32_t rgb, float alpha) {
    const auto component = [rgb](int shift) { return static_cast<float>(rgb >> shift & 0xFF) / 255.0F; };
    return {component(16), component(8), component(0), alpha};
}

std::shared_ptr<RectangleNode> AddRectangle(SceneNode& parent, const Rect& rect, const Color& fill, float radius) {
    auto node = std::make_shared<RectangleNode>();
    node->rect = rect;
    node->fillColor = fill;
    node->radiusX = radius;
    node->radiusY = radius;
    parent.AddChild(node);
    return node;
}

std::shared_ptr<EllipsePrimitive> AddEllipse(SceneNode& parent, Point center, float radius, const Color& fill) {
    auto node = std::make_shared<EllipsePrimitive>();
    node->center = center;
    node->radiusX = radius;
    node->radiusY = radius;
    node->fillColor = fill;
    parent.AddChild(node);
    return node;
}

std::shared_ptr<TextPrimitive> AddText(SceneNode& parent, const Rect& box, std::wstring text, float size,
                                       const Color& color) {
    auto node = std::make_shared<TextPrimitive>();
    node->text = std::move(text);
    node->bounds = box;
    node->color = color;
    node->fontSize = size;
    node->fontFamily = L"Segoe UI";
    node->paragraphAlignment = DWRITE_PARAGRAPH_ALIGNMENT_NEAR;
    node->wordWrapping = DWRITE_WORD_WRAPPING_NO_WRAP;
    parent.AddChild(node);
    return node;
}

void AddCaption(SceneNode& parent, float left, float top, std::wstring text) {
    AddText(parent, {left, top, left + 400, top + 16}, std::move(text), 11, Colour(0x8A93A3));
}

}  // namespace SceneShot
