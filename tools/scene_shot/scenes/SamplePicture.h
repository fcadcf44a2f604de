// Encoded pictures of any size: a sky with a sun over a hill, see-through at its rounded corners where the format can.
#pragma once

#include <cstdint>
#include <vector>

namespace SceneShot {

std::vector<std::uint8_t> SamplePng(std::uint32_t width, std::uint32_t height);
std::vector<std::uint8_t> SampleJpeg(std::uint32_t width, std::uint32_t height);

}  // namespace SceneShot
