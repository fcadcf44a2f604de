#include "Background/OffscreenSize.h"

#include <algorithm>

namespace Tamborel {

namespace {

constexpr std::uint64_t kReduction = 3;
constexpr std::uint64_t kLeastWidth = 640;
constexpr std::uint64_t kLeastHeight = 360;

std::uint32_t RoundedUpQuotient(std::uint64_t dividend, std::uint64_t divisor) {
    return static_cast<std::uint32_t>((dividend + divisor - 1) / divisor);
}

}  // namespace

// With a = max(width / 3, 1) and b = max(height / 3, 1) the size is a and b times max(640 / a, 360 / b, 1), rounded up.
// Rounding up turns the last bit of a float into a whole pixel: at 900 by 900, 300 * (640 / 300) is a little above 640
// in 32-bit floats and would give 641. So the thirds stay whole numbers (3a and 3b) and every quotient is taken once,
// of whole numbers; then the result is the rule's own, at every size. Nothing overflows: 2^32 * 1920 < 2^43.
OffscreenSize OffscreenSizeFor(BackgroundKind kind, std::uint32_t width, std::uint32_t height) {
    if (IsFullSizeKind(kind)) return {width, height};

    const std::uint64_t threeA = std::max<std::uint64_t>(width, kReduction);
    const std::uint64_t threeB = std::max<std::uint64_t>(height, kReduction);
    const bool narrow = threeA < kReduction * kLeastWidth;
    const bool low = threeB < kReduction * kLeastHeight;
    if (!narrow && !low) return {RoundedUpQuotient(threeA, kReduction), RoundedUpQuotient(threeB, kReduction)};

    // 640 / a >= 360 / b: the width decides, and comes out as exactly 640.
    if (kLeastWidth * threeB >= kLeastHeight * threeA) {
        return {static_cast<std::uint32_t>(kLeastWidth), RoundedUpQuotient(kLeastWidth * threeB, threeA)};
    }
    return {RoundedUpQuotient(kLeastHeight * threeA, threeB), static_cast<std::uint32_t>(kLeastHeight)};
}

}  // namespace Tamborel
