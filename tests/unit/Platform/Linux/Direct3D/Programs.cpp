#include "Programs.h"

namespace Programs {

namespace {
#include "compiled/Grid.inc"
#include "tests/unit/Platform/Linux/Direct3D/shaders/compiled/Constant.inc"
#include "tests/unit/Platform/Linux/Direct3D/shaders/compiled/Coordinates.inc"
#include "tests/unit/Platform/Linux/Direct3D/shaders/compiled/Corner.inc"
#include "tests/unit/Platform/Linux/Direct3D/shaders/compiled/Sampled.inc"
#include "tests/unit/Platform/Linux/Direct3D/shaders/compiled/Terms.inc"
#include "tests/unit/Platform/Linux/Direct3D/shaders/compiled/Waves.inc"
}  // namespace

const std::span<const std::uint32_t> corner = kCorner;
const std::span<const std::uint32_t> coordinates = kCoordinates;
const std::span<const std::uint32_t> constant = kConstant;
const std::span<const std::uint32_t> sampled = kSampled;
const std::span<const std::uint32_t> grid = kGrid;
const std::span<const std::uint32_t> terms = kTerms;
const std::span<const std::uint32_t> waves = kWaves;

}  // namespace Programs
