// When a program's picture is all there.
#pragma once

#include "ScreenWatch.h"

#include <cstdint>
#include <vector>

/// Points of the screen by which a program's finished picture is known: where it has edges, as of text and images, and
/// some elsewhere. At most of them the finished picture always has the same colour; where something moves, as an
/// animated background does, a point counts as soon as it no longer shows what was there before the program.
class Completeness {
public:
    /// `before` is the screen without the program; `finished` are a few pictures of it with the program, taken some
    /// time apart. Throws std::runtime_error when they differ in too few points to tell anything.
    Completeness(const ScreenPicture& before, const std::vector<ScreenPicture>& finished);

    const std::vector<ScreenPoint>& Points() const { return points_; }

    /// How many of the points are finished, by the colours that they have now.
    std::size_t Finished(const std::vector<std::uint32_t>& colours) const;

    /// So many make a complete picture: all but the few that an animation may have passed for steady ones.
    std::size_t Enough() const { return points_.size() - points_.size() / 100; }

    /// Of the points, how many have a colour of their own.
    std::size_t Steady() const;

private:
    struct Expected {
        std::uint32_t before;
        std::uint32_t after;
        bool steady;
    };
    void Add(ScreenPoint point, const ScreenPicture& before, const std::vector<ScreenPicture>& finished);

    std::vector<ScreenPoint> points_;
    std::vector<Expected> expected_;
};
