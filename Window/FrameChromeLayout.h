// Where the parts of a window's title bar stand. Pure arithmetic in device-independent units, without a node.
#pragma once

#include "Scene/Records.h"

#include <array>
#include <cstddef>

namespace Tamborel {

/// The numbers of a theme that the layout is made of, defaults and limits applied. Not yet scaled.
struct ChromeMeasures {
    float scale = 1.0F;
    float frameWidth = 8.0F;
    float titleHeight = 42.0F;
    float buttonWidth = 60.0F;
    float titleFontSize = 14.28F;
    float titleTextScale = 1.25F;
    float titleImagePadding = 6.0F;
};

/// What the title bar is laid out for.
struct ChromeLayoutInput {
    float width = 0;   ///< Of the window.
    float height = 0;  ///< Of the window.
    ChromeMeasures measures;
    bool maximized = false;
    bool hasIcon = false;
    bool hasTitleImage = false;
    float titleImageWidth = 0;  ///< Natural size, if the image tells one: otherwise 0 by 0.
    float titleImageHeight = 0;
};

/// A rectangle, and the part of it that shows.
struct ChromeBox {
    Rect rect;  ///< The whole of it, also where a part is cut off.
    bool visible = false;
    bool clipped = false;  ///< Only `clip` of it shows.
    Rect clip;
};

/// One caption button.
struct ChromeButton {
    ChromeBox fill;
    float radius = 0;  ///< Of the fill's corners.
    ChromeBox glyph;   ///< A square.
};

/// The whole title bar.
struct ChromeLayout {
    static constexpr std::size_t ButtonCount = 5;

    float compression = 1.0F;  ///< Below 1 where the window is narrower than three buttons.
    float titleHeight = 42.0F;
    float buttonWidth = 60.0F;
    float reservedWidth = 60.0F;  ///< Of a reserved slot.
    bool clientVisible = false;   ///< The window is higher than its title bar and frame.
    ChromeBox icon;               ///< Never clipped.
    Rect titleBounds;             ///< The box of the title text.
    float titleFontSize = 0;
    Rect titleImage;                                  ///< Meaningful if there is one.
    std::array<ChromeButton, ButtonCount> buttons{};  ///< Indexed by CaptionZone.
};

/// Lays the title bar out. In a window narrower than three buttons everything shrinks together; where buttons meet the
/// icon they are cut at its edge.
[[nodiscard]] ChromeLayout LayOutChrome(const ChromeLayoutInput& input);

}  // namespace Tamborel
