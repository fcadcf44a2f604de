// The compiled programs of the tests.
#pragma once

#include <cstdint>
#include <span>

namespace Programs {
extern const std::span<const std::uint32_t> corner;
extern const std::span<const std::uint32_t> coordinates;
extern const std::span<const std::uint32_t> constant;
extern const std::span<const std::uint32_t> sampled;
extern const std::span<const std::uint32_t> grid;
extern const std::span<const std::uint32_t> terms;
extern const std::span<const std::uint32_t> waves;
}  // namespace Programs
