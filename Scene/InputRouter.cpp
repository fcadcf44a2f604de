#include "Scene/InputRouter.h"

#include "Scene/InputDelivery.h"

namespace Tamborel {

void InputRouter::Route(const std::shared_ptr<SceneNode>& root, const InputEvent& event) {
    using enum InputEventKind;
    switch (event.kind) {
        case PointerMove: {
            const auto hit = FindNodeAt(root, {event.x, event.y});
            MoveHover(hit, event);
            DispatchPointerEvent(hit, PointerMove, event);
            break;
        }
        case PointerDown: {
            const auto hit = FindNodeAt(root, {event.x, event.y});
            press_ = hit;
            DispatchPointerEvent(hit, PointerDown, event);
            break;
        }
        case PointerUp:
            Release(FindNodeAt(root, {event.x, event.y}), event);
            break;
        case PointerWheel:
            DispatchPointerEvent(FindNodeAt(root, {event.x, event.y}), PointerWheel, event);
            break;
        case KeyDown:
        case KeyUp:
        case Character:
        case FocusGained:
        case FocusLost:
            DispatchKeyEvent(KeyTarget(root), event.kind, event);
            break;
        case WindowClosing:
            hover_.reset();
            press_.reset();
            break;
        case PointerEnter:
        case PointerLeave:
        default:
            break;
    }
}

void InputRouter::MoveHover(const std::shared_ptr<SceneNode>& hit, const InputEvent& event) {
    const auto old = hover_.lock();
    if (old == hit) return;
    DispatchPointerEvent(old, InputEventKind::PointerLeave, event);
    DispatchPointerEvent(hit, InputEventKind::PointerEnter, event);
    hover_ = hit;
}

void InputRouter::Release(const std::shared_ptr<SceneNode>& hit, const InputEvent& event) {
    const auto pressed = press_.lock();
    DispatchPointerEvent(pressed ? pressed : hit, InputEventKind::PointerUp, event);
    press_.reset();
    MoveHover(hit, event);
}

std::shared_ptr<SceneNode> InputRouter::KeyTarget(const std::shared_ptr<SceneNode>& root) const {
    if (auto hover = hover_.lock()) return hover;
    if (auto press = press_.lock()) return press;
    return root;
}

}  // namespace Tamborel
