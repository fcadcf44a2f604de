// Which node of a window an event is for.
#pragma once

#include "Scene/InputEvent.h"
#include "Scene/SceneNode.h"

#include <memory>

namespace Tamborel {

/// Remembers, without keeping them alive, the node under the pointer and the node on which a press began, and delivers
/// a window's events by them. Identity is the node hit and not the handler's owner, so moving between two children of
/// one button gives that button a leave and an enter. There is no keyboard focus: keys go where the pointer is.
///
/// Render thread only.
class InputRouter {
public:
    /// Delivers one event of the window's queue into the tree under `root`, which may be null. Kinds that are never
    /// queued are dropped.
    void Route(const std::shared_ptr<SceneNode>& root, const InputEvent& event);

    std::shared_ptr<SceneNode> HoverTarget() const { return hover_.lock(); }
    std::shared_ptr<SceneNode> PressTarget() const { return press_.lock(); }

private:
    void MoveHover(const std::shared_ptr<SceneNode>& hit, const InputEvent& event);
    void Release(const std::shared_ptr<SceneNode>& hit, const InputEvent& event);
    std::shared_ptr<SceneNode> KeyTarget(const std::shared_ptr<SceneNode>& root) const;

    std::weak_ptr<SceneNode> hover_;
    std::weak_ptr<SceneNode> press_;
};

}  // namespace Tamborel
