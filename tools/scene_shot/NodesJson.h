// A tree of nodes as JSON, for tests that judge where everything is.
#pragma once

#include "Scene/SceneNode.h"

#include <string>

namespace SceneShot {

/// {"nodes":[root]}. Each node is an object with
/// - "type": the name of its class, without namespaces;
/// - "visible";
/// - "worldTransform": [m11, m12, m21, m22, dx, dy], local space to pixels;
/// - what its class adds: "rect" [left, top, right, bottom] in the node's own space (of a text, its bounds), "center"
///   and "radius" [x, y], "cornerRadius" [x, y], "fill", "stroke", "strokeWidth", "text", "color", "fontFamily",
///   "fontSize", "fontWeight", "label", "enabled", "normalColor", "textColor";
/// - "children", in the order in which they are painted.
/// Colours are four numbers, red, green, blue and alpha. A class derived from one of the toolkit's has the fields of
/// that one. Numbers are as short as they can be without changing; what is no finite number is null.
std::string NodesJson(const Tamborel::SceneNode& root);

}  // namespace SceneShot
