#include "Window/FrameChromeLayout.h"

#include "Window/HitTest.h"

#include <algorithm>

namespace Tamborel {

namespace {

constexpr float kPadding = 8.0F;               // around the icon, times the scale
constexpr float kIconPart = 0.6F;              // of the title bar's height
constexpr float kReservedPart = 0.85F;         // of a button's width
constexpr float kButtonCount = 3.0F;           // those that show
constexpr float kTitleImageProportion = 3.0F;  // width for its height, as long as nobody knows better
constexpr float kLargestInset = 4.5F;          // of a button's fill in its slot
constexpr float kLargestRadius = 5.0F;
constexpr float kGlyphHalf = 0.175F;  // of the slot's width

float NotNegative(float value) {
    return std::max(value, 0.0F);
}

// The part of a box that lies to the right of `limit`, which is where the icon ends.
ChromeBox CutAt(float limit, const Rect& rect) {
    ChromeBox box;
    box.rect = rect;
    const float left = std::max(rect.left, limit);
    box.visible = rect.right > rect.left && rect.bottom > rect.top && rect.right > left;
    box.clipped = left != rect.left;
    if (box.clipped) box.clip = {left, rect.top, rect.right, rect.bottom};
    return box;
}

struct Slot {
    float left;
    float width;
};

/// The three sizes that all buttons share.
struct ButtonShape {
    float titleHeight;
    float inset;
    float largestRadius;
};

ButtonShape ShapeOf(float titleHeight, float buttonWidth) {
    const float inset =
        std::min(std::min(NotNegative(titleHeight / 2 - 0.5F), NotNegative(buttonWidth / 2 - 0.5F)), kLargestInset);
    const float smaller = std::min(NotNegative(titleHeight - 2 * inset), NotNegative(buttonWidth - 2 * inset));
    return {titleHeight, inset, std::min(NotNegative(smaller * 0.5F - 0.5F), kLargestRadius)};
}

ChromeButton LayOutButton(const Slot& slot, const ButtonShape& shape, float leftLimit) {
    ChromeButton button;
    const Rect box{slot.left + shape.inset, shape.inset, slot.left + slot.width - shape.inset,
                   shape.titleHeight - shape.inset};
    button.fill = CutAt(leftLimit, box);
    const float smaller = std::min(box.bottom - box.top, box.right - box.left);
    button.radius = std::min(NotNegative(smaller * 0.5F - 0.5F), shape.largestRadius);

    const float half = kGlyphHalf * slot.width;
    const float centerX = (box.left + box.right) / 2;
    const float centerY = shape.titleHeight / 2;
    button.glyph = CutAt(leftLimit, {centerX - half, centerY - half, centerX + half, centerY + half});
    return button;
}

// The text's height and a margin, three times as wide as high; an image that tells its size keeps its proportions.
Rect TitleImageBox(const ChromeLayoutInput& input, float fontSize, float titleHeight, float left, float right) {
    const float available = NotNegative(right - left);
    const float wanted = input.measures.titleImagePadding * input.measures.scale + fontSize;
    float height = std::min(wanted > 0 ? wanted : 0.0F, titleHeight);
    float width = std::min(kTitleImageProportion * height, available);
    if (input.titleImageWidth > 0 && input.titleImageHeight > 0 && available > 0 && height > 0) {
        const float factor = std::min(height / input.titleImageHeight, available / input.titleImageWidth);
        height = factor * input.titleImageHeight;
        width = factor * input.titleImageWidth;
    }
    const float top = (titleHeight - height) / 2;
    return {left, top, left + width, top + height};
}

}  // namespace

ChromeLayout LayOutChrome(const ChromeLayoutInput& input) {
    const ChromeMeasures& measures = input.measures;
    ChromeLayout layout;

    const float frame = input.maximized ? 0.0F : measures.frameWidth * measures.scale;
    const float fullButton = measures.scale * measures.buttonWidth;
    const float fullRow = kButtonCount * fullButton;
    if (fullRow > 0 && fullRow > input.width) layout.compression = input.width / fullRow;
    layout.titleHeight = layout.compression * (measures.scale * measures.titleHeight);
    layout.buttonWidth = layout.compression * fullButton;
    layout.reservedWidth = kReservedPart * layout.buttonWidth;
    layout.clientVisible = input.height - layout.titleHeight - frame > 0;

    const float padding = kPadding * measures.scale;
    const float iconSize = kIconPart * layout.titleHeight;
    const float iconTop = (layout.titleHeight - iconSize) / 2;
    layout.icon.rect = {padding, iconTop, padding + iconSize, iconTop + iconSize};
    layout.icon.visible = input.hasIcon;

    // The reserved slots take nothing from the title's room.
    const float buttonsLeft = input.width - kButtonCount * layout.buttonWidth;
    const float titleLeft = padding + iconSize + padding;
    const float titleRight = buttonsLeft - padding;
    layout.titleFontSize = measures.scale * measures.titleFontSize * layout.compression * measures.titleTextScale;
    layout.titleBounds = {titleLeft, 0, titleRight, layout.titleHeight};
    if (input.hasTitleImage) {
        layout.titleImage = TitleImageBox(input, layout.titleFontSize, layout.titleHeight, titleLeft, titleRight);
    }

    std::array<Slot, ChromeLayout::ButtonCount> slots{};
    slots[CaptionZone::Minimize] = {buttonsLeft, layout.buttonWidth};
    slots[CaptionZone::Maximize] = {input.width - 2 * layout.buttonWidth, layout.buttonWidth};
    slots[CaptionZone::Close] = {input.width - layout.buttonWidth, layout.buttonWidth};
    slots[CaptionZone::ReservedFirst] = {buttonsLeft - layout.reservedWidth, layout.reservedWidth};
    slots[CaptionZone::ReservedSecond] = {buttonsLeft - 2 * layout.reservedWidth, layout.reservedWidth};

    const ButtonShape shape = ShapeOf(layout.titleHeight, layout.buttonWidth);
    const float leftLimit = layout.icon.visible ? layout.icon.rect.right + padding : 0.0F;
    for (std::size_t zone = 0; zone < slots.size(); ++zone) {
        layout.buttons[zone] = LayOutButton(slots[zone], shape, leftLimit);
    }
    return layout;
}

}  // namespace Tamborel
