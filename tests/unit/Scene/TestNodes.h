// Nodes with a shape, and a list of what their handlers saw.
#pragma once

#include "Scene/SceneNode.h"

#include <memory>
#include <string>
#include <vector>

namespace Tamborel {

/// A node that is hit inside a rectangle of its local space, edges on the left and top included.
class BoxNode : public SceneNode {
public:
    explicit BoxNode(Rect shape) : box(shape) {}

    bool HitTest(Point local) const override {
        return local.x >= box.left && local.x < box.right && local.y >= box.top && local.y < box.bottom;
    }

    Rect box;
};

inline Matrix3x2 Translation(float x, float y) {
    return {1, 0, 0, 1, x, y};
}

inline std::shared_ptr<BoxNode> AddBox(SceneNode& parent, Rect box, Matrix3x2 transform = {}) {
    auto node = std::make_shared<BoxNode>(box);
    node->localTransform = transform;
    parent.AddChild(node);
    return node;
}

/// One call of a handler.
struct Seen {
    std::string node;
    InputEventKind kind;
    float x;
    float y;

    friend bool operator==(const Seen&, const Seen&) = default;
};

inline void PrintTo(const Seen& seen, std::ostream* stream) {
    *stream << seen.node << " got kind " << static_cast<unsigned>(seen.kind) << " at " << seen.x << ", " << seen.y;
}

/// Sets every pointer handler of a node, or every handler for keys and focus, to one that notes the call in `seen`,
/// which outlives the node.
inline void NotePointer(SceneNode& node, std::string name, std::vector<Seen>& seen) {
    const SceneNode::Handler note = [name = std::move(name), &seen](const InputEvent& event) {
        seen.push_back({name, event.kind, event.x, event.y});
    };
    node.onPointerMove = node.onPointerEnter = node.onPointerLeave = note;
    node.onPointerDown = node.onPointerUp = node.onWheel = note;
}

/// Positions are noted as zero: keys have none.
inline void NoteKeys(SceneNode& node, std::string name, std::vector<Seen>& seen) {
    const SceneNode::Handler note = [name = std::move(name), &seen](const InputEvent& event) {
        seen.push_back({name, event.kind, 0, 0});
    };
    node.onKeyDown = node.onKeyUp = node.onCharacter = node.onFocusGained = node.onFocusLost = note;
}

inline InputEvent PointerEvent(InputEventKind kind, float x, float y) {
    InputEvent event;
    event.kind = kind;
    event.x = x;
    event.y = y;
    return event;
}

inline InputEvent KeyEvent(InputEventKind kind, std::uint32_t virtualKey) {
    InputEvent event;
    event.kind = kind;
    event.virtualKey = virtualKey;
    event.scanCode = 0x1E;
    event.modifiers = 1;
    return event;
}

}  // namespace Tamborel
