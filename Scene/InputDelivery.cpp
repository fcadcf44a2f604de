#include "Scene/InputDelivery.h"

#include <d2d1.h>

#include <array>
#include <bit>
#include <cstddef>

namespace Tamborel {
namespace {

Point ToLocal(const SceneNode& node, Point point) {
    auto inverse = std::bit_cast<D2D1_MATRIX_3X2_F>(node.worldTransform);
    D2D1InvertMatrix(&inverse);  // A transform without an inverse has no right answer: any will do.
    return Transform(std::bit_cast<Matrix3x2>(inverse), point);
}

/// In the order of InputEventKind.
constexpr std::array<SceneNode::Handler SceneNode::*, 11> handlers{
    &SceneNode::onPointerMove, &SceneNode::onPointerEnter, &SceneNode::onPointerLeave, &SceneNode::onPointerDown,
    &SceneNode::onPointerUp,   &SceneNode::onWheel,        &SceneNode::onKeyDown,      &SceneNode::onKeyUp,
    &SceneNode::onCharacter,   &SceneNode::onFocusGained,  &SceneNode::onFocusLost,
};

/// The nearest node from `target` upwards that has the handler, or null. The reference keeps it alive while its handler
/// runs, which may remove it.
std::shared_ptr<SceneNode> Receiver(const std::shared_ptr<SceneNode>& target, SceneNode::Handler SceneNode::*handler) {
    std::shared_ptr<SceneNode> node = target;
    while (node && !((*node).*handler)) {
        node = node->parent ? node->parent->shared_from_this() : nullptr;
    }
    return node;
}

enum class Position { Keep, ToLocal };

void Dispatch(const std::shared_ptr<SceneNode>& target, InputEventKind kind, InputEvent event, Position position) {
    const auto index = static_cast<std::size_t>(kind);
    if (index >= handlers.size()) return;
    const auto node = Receiver(target, handlers[index]);
    if (!node) return;
    event.kind = kind;
    if (position == Position::ToLocal) {
        const Point local = ToLocal(*node, {event.x, event.y});
        event.x = local.x;
        event.y = local.y;
    }
    ((*node).*handlers[index])(event);
}

}  // namespace

std::shared_ptr<SceneNode> FindNodeAt(const std::shared_ptr<SceneNode>& node, Point point) {
    if (!node || !node->visible) return nullptr;
    const Point local = ToLocal(*node, point);
    if (node->HitTestChildren(local)) {
        for (auto child = node->children.rbegin(); child != node->children.rend(); ++child) {
            if (auto hit = FindNodeAt(*child, point)) return hit;
        }
    }
    return node->HitTest(local) ? node : nullptr;
}

void DispatchPointerEvent(const std::shared_ptr<SceneNode>& target, InputEventKind kind, const InputEvent& event) {
    Dispatch(target, kind, event, Position::ToLocal);
}

void DispatchKeyEvent(const std::shared_ptr<SceneNode>& target, InputEventKind kind, const InputEvent& event) {
    Dispatch(target, kind, event, Position::Keep);
}

}  // namespace Tamborel
