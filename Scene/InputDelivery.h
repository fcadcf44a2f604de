// From a point to the node under it, and from that node to the handler that receives the event. Render thread only.
#pragma once

#include "Scene/SceneNode.h"

#include <memory>

namespace Tamborel {

/// The foremost visible node of the subtree that says it is hit at a point of window pixels, or null. Children come
/// before their parent, later ones first, and clips play no part. `node` may be null.
std::shared_ptr<SceneNode> FindNodeAt(const std::shared_ptr<SceneNode>& node, Point point);

/// Hands a copy of `event`, made into `kind` (PointerMove to PointerWheel) and with its position in the receiver's
/// local space, to the nearest handler for `kind` from `target` upwards. With no such handler the event is dropped.
/// Raises std::bad_weak_ptr if it climbs to a node that no std::shared_ptr holds.
void DispatchPointerEvent(const std::shared_ptr<SceneNode>& target, InputEventKind kind, const InputEvent& event);

/// As DispatchPointerEvent for the kinds KeyDown to FocusLost, with the payload as it is.
void DispatchKeyEvent(const std::shared_ptr<SceneNode>& target, InputEventKind kind, const InputEvent& event);

}  // namespace Tamborel
