#include "tools/picture/Compare.h"

#include <algorithm>
#include <cstdlib>

namespace Pictures {

namespace {

std::string SizeOf(const Picture& picture) {
    return std::to_string(picture.width) + " by " + std::to_string(picture.height);
}

int Difference(const Picture::Texel& left, const Picture::Texel& right) {
    int largest = 0;
    for (std::size_t i = 0; i < left.size(); ++i) largest = std::max(largest, std::abs(left[i] - right[i]));
    return largest;
}

/// Light enough that red stands out on it.
Picture::Texel Pale(const Picture::Texel& texel) {
    const int grey = (texel[0] + texel[1] + texel[2]) / 3;
    const auto pale = static_cast<std::uint8_t>(160 + grey * 80 / 255);
    return {pale, pale, pale, 255};
}

Picture::Texel Red(int difference) {
    // Half strength for the smallest difference there is, so that none is overlooked.
    const auto rest = static_cast<std::uint8_t>(std::max(0, 127 - difference));
    return {255, rest, rest, 255};
}

}  // namespace

Comparison Compare(const Picture& actual, const Picture& expected, const Tolerance& tolerance) {
    Comparison result;
    if (actual.width != expected.width || actual.height != expected.height) {
        result.reason = "the picture is " + SizeOf(actual) + " pixels, expected are " + SizeOf(expected);
        return result;
    }
    result.difference = {actual.width, actual.height, {}};
    result.difference.texels.reserve(actual.texels.size());
    for (std::size_t i = 0; i < actual.texels.size(); ++i) {
        const int difference = Difference(actual.texels[i], expected.texels[i]);
        const bool differs = difference > tolerance.component;
        result.pixels += differs ? 1 : 0;
        result.largest = std::max(result.largest, difference);
        result.difference.texels.push_back(differs ? Red(difference) : Pale(expected.texels[i]));
    }
    const auto allowed = static_cast<std::size_t>(tolerance.share * static_cast<double>(actual.texels.size()));
    result.same = result.pixels <= allowed;
    if (!result.same) {
        result.reason = std::to_string(result.pixels) + " of " + std::to_string(actual.texels.size()) +
                        " pixels differ by more than " + std::to_string(tolerance.component) + " (the most by " +
                        std::to_string(result.largest) + "); allowed are " + std::to_string(allowed);
    }
    return result;
}

}  // namespace Pictures
