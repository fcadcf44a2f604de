// A tree of nodes as JSON, for tests that judge where everything is.
#pragma once

#include "Scene/SceneNode.h"

#include <memory>
#include <span>
#include <string>

namespace SceneShot {

/// {"nodes":[root]}. Each node is an object with
/// - "type": the name of its class, without namespaces;
/// - "visible";
/// - "worldTransform": [m11, m12, m21, m22, dx, dy], local space to pixels;
/// - what its class adds: "rect" [left, top, right, bottom] in the node's own space (of a text, its bounds), "center"
///   and "radius" [x, y], "cornerRadius" [x, y], "fill", "stroke", "strokeWidth", "text", "color", "fontFamily",
///   "fontSize", "fontWeight", "textAlignment", "paragraphAlignment", "label", "enabled", and of a button each of its
///   colours by its name;
/// - "children", in the order in which they are painted.
/// Colours are four numbers, red, green, blue and alpha. A class derived from one of the toolkit's has the fields of
/// that one. Numbers are as short as they can be without changing; what is no finite number is null.
std::string NodesJson(const Tamborel::SceneNode& root);

/// The same of several nodes, each with what is below it: {"nodes":[first, ...]}.
std::string NodesJson(std::span<const std::shared_ptr<Tamborel::SceneNode>> nodes);

}  // namespace SceneShot
