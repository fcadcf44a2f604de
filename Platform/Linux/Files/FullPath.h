#pragma once

#include <string>
#include <string_view>

namespace Platform {

/// An absolute path with "." and ".." resolved by their text alone, and runs of separators made one. A separator at the
/// end stays one; "." or ".." at the end leaves none. What leads above the root stays at the root.
std::string ResolveDots(std::string_view absolute);

}  // namespace Platform
