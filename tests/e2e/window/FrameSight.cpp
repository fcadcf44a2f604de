#include "FrameSight.h"

#include <algorithm>
#include <array>
#include <climits>
#include <sstream>

namespace {

using Colour = std::uint32_t;

// Colours of the subject's frame and the widths of its parts, in pixels.
constexpr Colour kRimColour = 0x000000;
constexpr Colour kBorder = 0x00FF00;
constexpr Colour kFill = 0xCC1A1A;
constexpr Colour kTitle = 0x1A1ACC;
constexpr int kRimWidth = 1;
constexpr int kFrameWidth = 8;
constexpr int kBorderWidth = 2;
constexpr int kTitleHeight = 42;
constexpr int kIconEnd = 36;  // the program's icon has colours of its own
constexpr int kTextEnd = 120;
constexpr int kButtons = 165;  // their distances from the right
constexpr int kClose = 30;

std::array<int, 3> Parts(Colour colour) {
    return {static_cast<int>(colour >> 16 & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
            static_cast<int>(colour & 0xFF)};
}

/// The same but for the dither.
bool IsLike(Colour one, Colour other) {
    const auto a = Parts(one);
    const auto b = Parts(other);
    return std::abs(a[0] - b[0]) <= 1 && std::abs(a[1] - b[1]) <= 1 && std::abs(a[2] - b[2]) <= 1;
}

/// White on the title bar, more or less of it: text and symbols.
bool IsOnTitle(Colour colour) {
    const auto [red, green, blue] = Parts(colour);
    return std::abs(red - green) <= 2 && red >= Parts(kTitle)[0] - 1 && blue >= Parts(kTitle)[2] - 1;
}

bool IsTitle(int width, int x, int y, Colour colour) {
    if (x < kIconEnd) return true;
    if (x == width - kClose && y == kTitleHeight / 2) return Parts(colour)[0] > 0xC0;  // where the cross crosses
    return x < kTextEnd || x >= width - kButtons ? IsOnTitle(colour) : IsLike(colour, kTitle);
}

/// The empty screen's colour, in a shadow at most.
bool IsAround(Colour colour, Colour empty) {
    const auto seen = Parts(colour);
    const auto bare = Parts(empty);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        if (seen[i] > bare[i] + 1 || seen[i] < bare[i] / 2 - 1) return false;
    }
    return true;
}

Colour At(const Picture& picture, int x, int y) {
    return picture
        .pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) + static_cast<std::size_t>(x)];
}

/// Darker than the empty screen by more than a tenth, as the inner part of a shadow is.
bool IsShade(Colour colour, Colour empty) {
    return Parts(colour)[2] * 10 < Parts(empty)[2] * 9;
}

/// The smallest rectangle around all pixels that are chosen; nothing when none is.
template <class Choice>
Place Around(const Picture& screen, Choice isChosen) {
    int left = INT_MAX;
    int top = INT_MAX;
    int right = -1;
    int bottom = -1;
    for (int y = 0; y < screen.height; ++y) {
        for (int x = 0; x < screen.width; ++x) {
            if (!isChosen(x, y)) continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
        }
    }
    return right < 0 ? Place{} : Place{left, top, right - left + 1, bottom - top + 1};
}

/// Whether a place within a frame is farther from its edges than that.
bool IsWithin(const Place& frame, int x, int y, int inset, int topInset) {
    return x >= inset && y >= topInset && x < frame.width - inset && y < frame.height - inset;
}

bool IsPart(const Place& frame, int x, int y, Colour colour, Client client) {
    if (!IsWithin(frame, x, y, kRimWidth, kRimWidth)) return colour == kRimColour;
    // A frame that is not high enough for all of its parts keeps the lower ones.
    if (y >= frame.height - kFrameWidth) return IsLike(colour, kFill);
    if (y < kTitleHeight) return IsTitle(frame.width, x, y, colour);
    if (!IsWithin(frame, x, y, kFrameWidth, kTitleHeight)) return IsLike(colour, kFill);
    if (!IsWithin(frame, x, y, kFrameWidth + kBorderWidth, kTitleHeight + kBorderWidth)) return IsLike(colour, kBorder);
    return client == Client::Drawn || IsLike(colour, kFill);
}

}  // namespace

FrameSight SeeFrame(const Picture& screen, const Picture& empty, Client client) {
    const Place frame = Around(screen, [&](int x, int y) { return At(screen, x, y) == kRimColour; });
    if (frame.width == 0) return {{}, {}, "no frame"};
    const auto isInside = [&](int x, int y) { return IsWithin(frame, x - frame.x, y - frame.y, 0, 0); };
    int faults = 0;
    std::ostringstream first;
    for (int y = 0; y < screen.height; ++y) {
        for (int x = 0; x < screen.width; ++x) {
            const Colour colour = At(screen, x, y);
            if (isInside(x, y) ? IsPart(frame, x - frame.x, y - frame.y, colour, client)
                               : IsAround(colour, At(empty, x, y))) {
                continue;
            }
            if (faults++ == 0) first << std::hex << colour << std::dec << " at " << x << ", " << y;
        }
    }
    const Place shaded =
        Around(screen, [&](int x, int y) { return isInside(x, y) || IsShade(At(screen, x, y), At(empty, x, y)); });
    return {frame, shaded, faults == 0 ? "" : std::to_string(faults) + " pixels, the first " + first.str()};
}
