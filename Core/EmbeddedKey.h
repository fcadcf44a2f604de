// The key of the built-in assets. The build makes its definition from assets/key.hex, the same file that the assets are
// enciphered with.
#pragma once

#include <array>
#include <cstdint>

namespace Tamborel {

/// An AES-256 key, read only.
extern const std::array<std::uint8_t, 32> EmbeddedKey;

}  // namespace Tamborel
