#pragma once

#include "Scene/Records.h"
#include "Scene/SceneNode.h"
#include "Scene/UiEvent.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Tamborel {

class RectangleNode;
class TextPrimitive;

/// A rectangle with a label that is pressed with the left mouse button. Its looks follow its state without animation,
/// in the frame after the state has changed. It has no keyboard behaviour.
///
/// The owner writes the public fields; the next `Update` sees it and changes the two nodes that show them.
class Button : public SceneNode {
public:
    std::wstring controlId;  ///< The owner's name of the button, for the click event.
    std::wstring label = L"Button";
    Rect rect{0, 0, 140, 42};  ///< In local space.
    bool enabled = true;
    std::wstring eventName = L"ui.button.click";
    std::function<void(UiEvent)> onClickEvent;  ///< Told of each click after `onClick`. Render thread.
    std::function<void()> onClick;              ///< Render thread. May change the button, but not replace itself.

    // The background in each state. Pressed goes before hovered.

    Color normalColor{0.07F, 0.46F, 0.73F, 0.92F};
    Color hoverColor{0.11F, 0.53F, 0.81F, 0.95F};
    Color pressedColor{0.05F, 0.37F, 0.62F, 0.98F};
    Color disabledColor{0.2F, 0.2F, 0.22F, 0.75F};

    Color textColor{0.97F, 0.98F, 1.0F, 1.0F};
    Color disabledTextColor{0.7F, 0.7F, 0.72F, 1.0F};
    std::wstring fontFamily = L"Segoe UI";
    float fontSize = 14.0F;
    std::uint32_t fontWeight = 600;  ///< A DWRITE_FONT_WEIGHT.
    float cornerRadius = 8.0F;

    Button();
    ~Button() override;

    /// Edges on the left and top of `rect` are inside, those on the right and bottom are not.
    bool HitTest(Point local) const override;
    void Update(float seconds) override;

private:
    /// What the nodes below show.
    struct Applied {
        bool enabled = true;
        bool hovered = false;
        bool pressed = false;
        Rect rect;
        std::wstring label;
        std::wstring fontFamily;
        float fontSize = 0;
        std::uint32_t fontWeight = 0;
        float cornerRadius = 0;
        Color normalColor;
        Color hoverColor;
        Color pressedColor;
        Color disabledColor;
        Color textColor;
        Color disabledTextColor;
    };

    void Enter();
    void Leave();
    void Press(const InputEvent& event);
    void Release(const InputEvent& event);
    void Click();
    void ReportClick();
    bool DiffersFromApplied() const;
    void ApplyStyle();
    void ApplyLabel();
    Color BackgroundColor() const;

    std::shared_ptr<RectangleNode> background_;
    std::shared_ptr<TextPrimitive> labelNode_;
    bool hovered_ = false;
    bool pressed_ = false;
    bool styleDirty_ = false;
    Applied applied_;
};

}  // namespace Tamborel
