// A vertex program without what a pixel program doesn't read. One vertex program serves many pixel programs, and a
// driver translates and optimises all of it for each before it finds out: in a software device that is most of the time
// that a pipeline takes to make.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace Platform::Direct3D {

/// The locations from which a program reads, in no order. Nothing where they can't be told: the words are no SPIR-V, or
/// an input is none of a vector's size.
std::optional<std::vector<std::uint32_t>> InputLocations(std::span<const std::uint32_t> program);

/// The program without outputs at locations other than `read`, and without what was worked out for these alone. What
/// isn't understood stays as it is, at worst the whole program.
std::vector<std::uint32_t> WithoutUnreadOutputs(std::span<const std::uint32_t> program,
                                                std::span<const std::uint32_t> read);

}  // namespace Platform::Direct3D
