// The base of the retained scene graph.
#pragma once

#include "Scene/InputEvent.h"
#include "Scene/Records.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace Tamborel {

class DrawContext;

/// A node of a window's tree: handlers, a transform relative to its parent, an optional clip and owned children. It has
/// no size and paints nothing itself; what it stores is in its own local space, and child order is paint order.
///
/// Every node is made with std::make_shared. The owner of a node writes its fields directly; nothing is notified of
/// it. Once its window is shown a tree belongs to the render thread. A handler may change the tree as it likes (but not
/// replace itself while it runs); `Update`, `Animate`, `Prepare` and `Draw` must not change the children they run over.
class SceneNode : public std::enable_shared_from_this<SceneNode> {
public:
    using Handler = std::function<void(const InputEvent&)>;

    // One per InputEventKind. They see pointer positions in the local space of the node that holds them.
    Handler onPointerMove;
    Handler onPointerEnter;
    Handler onPointerLeave;
    Handler onPointerDown;
    Handler onPointerUp;
    Handler onWheel;
    Handler onKeyDown;
    Handler onKeyUp;
    Handler onCharacter;
    Handler onFocusGained;
    Handler onFocusLost;

    Matrix3x2 localTransform;             ///< This node relative to its parent.
    bool visible = true;                  ///< False hides the subtree from `Prepare`, `Draw` and hit search.
    bool clipEnabled = false;             ///< Whether `clipRect` applies.
    Rect clipRect;                        ///< In local space. Hit search takes no notice of it.
    std::uint32_t clipAntialiasMode = 1;  ///< A D2D1_ANTIALIAS_MODE; 1 is aliased.
    Matrix3x2 worldTransform;             ///< Local space to window pixels, as of the last `Update`.

    /// Not owned. A child that outlives its parent keeps a stale link until it is attached anew, so whoever keeps a
    /// child detaches it before letting the parent go.
    SceneNode* parent = nullptr;
    std::vector<std::shared_ptr<SceneNode>> children;  ///< First child at the back.

    SceneNode() = default;
    SceneNode(const SceneNode&) = delete;
    SceneNode& operator=(const SceneNode&) = delete;
    virtual ~SceneNode() = default;

    /// Whether a point of local space lies on this node itself.
    virtual bool HitTest(Point local) const;

    /// Whether hit search looks at the children for a point of local space.
    virtual bool HitTestChildren(Point local) const;

    /// Brings the world transforms of the subtree up to date, hidden nodes included. `seconds` is the time since the
    /// previous frame. An override ends by calling this one.
    virtual void Update(float seconds);

    /// Runs after the frame's input, hidden nodes included.
    virtual void Animate(float seconds);

    /// Runs over the visible nodes before a surface is drawn, to make what drawing needs.
    virtual void Prepare(DrawContext& context);

    /// Draws the visible subtree. An override sets its transform, pushes its clip, paints, draws its children and pops
    /// its clip; the transform is absolute and is left as it is for the next sibling.
    virtual void Draw(DrawContext& context);

    /// Attaches `child` in front of the other children and detaches it from the parent it had; a child of this node
    /// moves to the front. Null and the node itself change nothing. The child must not be an ancestor of this node.
    void AddChild(std::shared_ptr<SceneNode> child);

    /// Detaches `child`. Nothing changes if it is no child of this node.
    void RemoveChild(SceneNode* child);

    /// Draws the visible children without setting a transform or a clip.
    void DrawChildren(DrawContext& context);

    /// Pushes the clip if it is enabled and not empty, in the transform that is current. An enabled empty clip clips
    /// nothing. The answer is for PopNodeClip.
    bool PushNodeClip(DrawContext& context);

    /// Pops what PushNodeClip pushed.
    void PopNodeClip(DrawContext& context, bool pushed);
};

}  // namespace Tamborel
