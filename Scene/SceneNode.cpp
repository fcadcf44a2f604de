#include "Scene/SceneNode.h"

#include "Scene/DrawContext.h"

#include <algorithm>
#include <utility>

namespace Tamborel {

bool SceneNode::HitTest(Point) const {
    return false;
}

bool SceneNode::HitTestChildren(Point) const {
    return true;
}

void SceneNode::Update(float seconds) {
    worldTransform = parent ? Multiply(localTransform, parent->worldTransform) : localTransform;
    for (const auto& child : children) child->Update(seconds);
}

void SceneNode::Animate(float seconds) {
    for (const auto& child : children) child->Animate(seconds);
}

void SceneNode::Prepare(DrawContext& context) {
    for (const auto& child : children) {
        if (child->visible) child->Prepare(context);
    }
}

void SceneNode::Draw(DrawContext& context) {
    context.SetTransform(worldTransform);
    const bool clipped = PushNodeClip(context);
    DrawChildren(context);
    PopNodeClip(context, clipped);
}

void SceneNode::AddChild(std::shared_ptr<SceneNode> child) {
    if (!child || child.get() == this) return;
    if (child->parent) child->parent->RemoveChild(child.get());
    child->parent = this;
    children.push_back(std::move(child));
}

void SceneNode::RemoveChild(SceneNode* child) {
    const auto found = std::find_if(children.begin(), children.end(),
                                    [child](const std::shared_ptr<SceneNode>& each) { return each.get() == child; });
    if (found == children.end()) return;
    // The last reference goes only once the list is whole again: the child's handlers may own anything.
    const std::shared_ptr<SceneNode> removed = std::move(*found);
    removed->parent = nullptr;
    children.erase(found);
}

void SceneNode::DrawChildren(DrawContext& context) {
    for (const auto& child : children) {
        if (child->visible) child->Draw(context);
    }
}

bool SceneNode::PushNodeClip(DrawContext& context) {
    if (!clipEnabled || IsEmpty(clipRect)) return false;
    context.PushClip(clipRect, static_cast<D2D1_ANTIALIAS_MODE>(clipAntialiasMode));
    return true;
}

void SceneNode::PopNodeClip(DrawContext& context, bool pushed) {
    if (pushed) context.PopClip();
}

}  // namespace Tamborel
