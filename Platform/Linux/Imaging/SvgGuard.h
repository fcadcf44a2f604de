// What is kept from the SVG renderer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace Platform::Imaging {

/// Longer documents are not looked at.
inline constexpr std::size_t maxSvgBytes = std::size_t{16} << 20U;

/// Whether a document may be parsed. The renderer loads nothing from outside the document by itself. What is refused
/// here is what could make a small document large: compression, entities (which nest), and documents and pictures
/// within the document ("data:" addresses), whose decoders know no limits; also encodings in which these could hide.
/// Whether the rest is an SVG is for the parser to say. Throws std::bad_alloc.
bool MayParse(std::span<const std::uint8_t> document);

}  // namespace Platform::Imaging
