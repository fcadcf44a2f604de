#include "Completeness.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace {

// The picture is looked at in squares of so many pixels.
constexpr int cell = 12;
constexpr std::size_t mostEdges = 500;
constexpr std::size_t mostOthers = 100;
constexpr std::size_t fewest = 20;

// Differences of a channel, of 255. What lies on a translucent ground over a moving background moves a little with it.
constexpr int clearly = 48;
constexpr int same = 32;
constexpr int edge = 60;

int Difference(std::uint32_t colour, std::uint32_t other) {
    int most = 0;
    for (const int shift : {0, 8, 16}) {
        const int difference =
            std::abs(static_cast<int>(colour >> shift & 0xFF) - static_cast<int>(other >> shift & 0xFF));
        most = std::max(most, difference);
    }
    return most;
}

int Brightness(std::uint32_t colour) {
    return static_cast<int>(colour & 0xFF) + static_cast<int>(colour >> 8 & 0xFF) + static_cast<int>(colour >> 16);
}

/// At most `most` of them, spread evenly.
std::vector<ScreenPoint> Some(const std::vector<ScreenPoint>& all, std::size_t most) {
    if (all.size() <= most) return all;
    std::vector<ScreenPoint> some;
    for (std::size_t i = 0; i < most; ++i) some.push_back(all[i * all.size() / most]);
    return some;
}

}  // namespace

Completeness::Completeness(const ScreenPicture& before, const std::vector<ScreenPicture>& finished) {
    const ScreenPicture& picture = finished.front();
    std::vector<ScreenPoint> edges;
    std::vector<ScreenPoint> others;
    for (int top = 0; top + cell <= picture.height; top += cell) {
        for (int left = 0; left + cell <= picture.width; left += cell) {
            ScreenPoint brightest{left, top};
            ScreenPoint darkest{left, top};
            for (int i = 0; i < cell * cell; ++i) {
                const ScreenPoint point{left + i % cell, top + i / cell};
                if (Brightness(picture.At(point)) > Brightness(picture.At(brightest))) brightest = point;
                if (Brightness(picture.At(point)) < Brightness(picture.At(darkest))) darkest = point;
            }
            const bool isEdge = Difference(picture.At(brightest), picture.At(darkest)) > edge;
            const bool isNew = std::ranges::all_of(finished, [&](const ScreenPicture& each) {
                return Difference(each.At(brightest), before.At(brightest)) > clearly;
            });
            if (isNew) (isEdge ? edges : others).push_back(brightest);
        }
    }
    for (const ScreenPoint point : Some(edges, mostEdges)) Add(point, before, finished);
    for (const ScreenPoint point : Some(others, mostOthers)) Add(point, before, finished);
    if (points_.size() < fewest) throw std::runtime_error("The program shows hardly anything.");
}

void Completeness::Add(ScreenPoint point, const ScreenPicture& before, const std::vector<ScreenPicture>& finished) {
    const std::uint32_t after = finished.front().At(point);
    const bool steady = std::ranges::all_of(
        finished, [&](const ScreenPicture& each) { return Difference(each.At(point), after) <= same / 2; });
    points_.push_back(point);
    expected_.push_back({before.At(point), after, steady});
}

std::size_t Completeness::Finished(const std::vector<std::uint32_t>& colours) const {
    std::size_t count = 0;
    for (std::size_t i = 0; i < expected_.size(); ++i) {
        const Expected& each = expected_[i];
        count += each.steady ? Difference(colours[i], each.after) <= same : Difference(colours[i], each.before) > 8;
    }
    return count;
}

std::size_t Completeness::Steady() const {
    return static_cast<std::size_t>(std::ranges::count_if(expected_, &Expected::steady));
}
