// What the scenes are put together from. All places are in the parent's units.
#pragma once

#include "Scene/EllipsePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/SceneNode.h"
#include "Scene/TextPrimitive.h"

#include <memory>
#include <string>

namespace SceneShot {

/// 0xRRGGBB.
Tamborel::Color Colour(std::uint32_t rgb, float alpha = 1.0F);

std::shared_ptr<Tamborel::RectangleNode> AddRectangle(Tamborel::SceneNode& parent, const Tamborel::Rect& rect,
                                                      const Tamborel::Color& fill, float radius = 0);
std::shared_ptr<Tamborel::EllipsePrimitive> AddEllipse(Tamborel::SceneNode& parent, Tamborel::Point center,
                                                       float radius, const Tamborel::Color& fill);
/// At the upper left of its box, in one line.
std::shared_ptr<Tamborel::TextPrimitive> AddText(Tamborel::SceneNode& parent, const Tamborel::Rect& box,
                                                 std::wstring text, float size = 14,
                                                 const Tamborel::Color& color = {0.92F, 0.94F, 0.97F, 1});
/// What a sample shows, small and grey.
void AddCaption(Tamborel::SceneNode& parent, float left, float top, std::wstring text);

}  // namespace SceneShot
