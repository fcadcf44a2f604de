#include "Scene/Button.h"

#include "Core/Timestamp.h"
#include "Platform/Text/Unicode.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"

#include <dwrite_3.h>

#include <cmath>
#include <tuple>
#include <utility>

namespace Tamborel {

namespace {

constexpr std::uint32_t leftButton = 1;

/// Sizes that differ by no more than rounding are the same size.
bool SizesDiffer(float left, float right) {
    return std::abs(left - right) > 0.001F;
}

/// All that is compared exactly, of a button or of what it has applied.
template <class Style>
auto ExactFields(const Style& style) {
    return std::tie(style.enabled, style.rect, style.label, style.fontFamily, style.fontWeight, style.normalColor,
                    style.hoverColor, style.pressedColor, style.disabledColor, style.textColor,
                    style.disabledTextColor);
}

/// 64-bit FNV-1a over the text's bytes in UTF-16, low byte first.
std::uint64_t IdHash(const std::wstring& id) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char16_t unit : Platform::Utf16FromWide(id)) {
        for (const int shift : {0, 8}) {
            hash ^= static_cast<std::uint64_t>(unit >> shift) & 0xFF;
            hash *= 0x100000001B3;
        }
    }
    return hash;
}

}  // namespace

Button::Button() : background_(std::make_shared<RectangleNode>()), labelNode_(std::make_shared<TextPrimitive>()) {
    labelNode_->textAlignment = DWRITE_TEXT_ALIGNMENT_CENTER;
    labelNode_->paragraphAlignment = DWRITE_PARAGRAPH_ALIGNMENT_CENTER;
    labelNode_->wordWrapping = DWRITE_WORD_WRAPPING_NO_WRAP;
    labelNode_->clipToBounds = true;
    AddChild(background_);
    AddChild(labelNode_);
    onPointerEnter = [this](const InputEvent&) { Enter(); };
    onPointerLeave = [this](const InputEvent&) { Leave(); };
    onPointerDown = [this](const InputEvent& event) { Press(event); };
    onPointerUp = [this](const InputEvent& event) { Release(event); };
    ApplyStyle();
}

// A handler may remove the button while routing holds the child that was hit, and climbs from it once more afterwards:
// that child must not point to a button that is gone.
Button::~Button() {
    RemoveChild(background_.get());
    RemoveChild(labelNode_.get());
}

bool Button::HitTest(Point local) const {
    return Contains(rect, local);
}

void Button::Enter() {
    if (!enabled) return;
    styleDirty_ |= !hovered_;
    hovered_ = true;
}

// The press is kept, so that coming back and releasing still clicks.
void Button::Leave() {
    styleDirty_ |= hovered_;
    hovered_ = false;
}

// The event comes for every mouse button, and its bits tell all that are held: another one going down while the left is
// held counts too.
void Button::Press(const InputEvent& event) {
    if (!enabled || !(event.buttons & leftButton) || !HitTest({event.x, event.y})) return;
    styleDirty_ |= !pressed_;
    pressed_ = true;
}

void Button::Release(const InputEvent& event) {
    if (!enabled) {
        pressed_ = false;
        return;
    }
    const bool inside = HitTest({event.x, event.y});
    const bool wasPressed = std::exchange(pressed_, false);
    styleDirty_ |= wasPressed || hovered_ != inside;
    hovered_ = inside;
    if (wasPressed && inside) Click();
}

void Button::Click() {
    if (onClick) onClick();
    ReportClick();
}

void Button::ReportClick() {
    if (!onClickEvent) return;
    UiEvent event;
    event.name = eventName;
    event.timestampMicroseconds = TimestampMicroseconds();
    event.idHash = IdHash(controlId);
    event.properties[L"control_id"] = controlId;
    event.properties[L"button"] = std::wstring(L"left");
    onClickEvent(std::move(event));
}

void Button::Update(float seconds) {
    if (styleDirty_ || DiffersFromApplied()) ApplyStyle();
    SceneNode::Update(seconds);
}

bool Button::DiffersFromApplied() const {
    return hovered_ != applied_.hovered || pressed_ != applied_.pressed ||
           ExactFields(*this) != ExactFields(applied_) || SizesDiffer(fontSize, applied_.fontSize) ||
           SizesDiffer(cornerRadius, applied_.cornerRadius);
}

Color Button::BackgroundColor() const {
    if (!enabled) return disabledColor;
    if (pressed_) return pressedColor;
    return hovered_ ? hoverColor : normalColor;
}

void Button::ApplyStyle() {
    background_->rect = rect;
    background_->radiusX = cornerRadius;
    background_->radiusY = cornerRadius;
    background_->strokeColor = {};
    background_->strokeWidth = 0;
    background_->fillColor = BackgroundColor();
    ApplyLabel();
    applied_ = {enabled,    hovered_,     pressed_,      rect,         label,
                fontFamily, fontSize,     fontWeight,    cornerRadius, normalColor,
                hoverColor, pressedColor, disabledColor, textColor,    disabledTextColor};
    styleDirty_ = false;
}

void Button::ApplyLabel() {
    TextPrimitive& node = *labelNode_;
    const auto set = [&node](auto& field, const auto& value) {
        if (field == value) return;
        field = value;
        node.layoutDirty = true;
    };
    set(node.text, label);
    set(node.bounds, rect);
    set(node.fontFamily, fontFamily);
    if (SizesDiffer(node.fontSize, fontSize)) set(node.fontSize, fontSize);
    set(node.fontWeight, fontWeight);
    node.color = enabled ? textColor : disabledTextColor;
}

}  // namespace Tamborel
