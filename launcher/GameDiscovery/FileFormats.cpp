#include "launcher/GameDiscovery/FileFormats.h"

#include <array>

namespace GameDiscovery {

namespace {

/// The little-endian number of `size` bytes at `bytes`.
std::uint32_t LittleEndian(const std::byte* bytes, std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = size; i-- > 0;) value = value << 8 | std::to_integer<std::uint32_t>(bytes[i]);
    return value;
}

}  // namespace

bool HasClassicPeHeaders(ByteSource& source) {
    constexpr std::uint32_t dosMagic = 0x5A4D;       // "MZ"
    constexpr std::uint32_t signature = 0x00004550;  // "PE", two zero bytes
    constexpr std::uint32_t machineI386 = 0x014C;
    constexpr std::uint32_t optionalMagicPe32 = 0x010B;
    // The format sets no upper bound; a real program's headers lie within its first kilobyte.
    constexpr std::uint32_t largestHeaderOffset = 0x1000000;

    std::array<std::byte, 64> dosHeader{};
    if (!source.ReadExactly(dosHeader) || LittleEndian(dosHeader.data(), 2) != dosMagic) return false;
    const std::uint32_t headerOffset = LittleEndian(dosHeader.data() + 60, 4);
    if (headerOffset < dosHeader.size() || headerOffset > largestHeaderOffset) return false;

    // Signature (4 bytes), COFF file header (20, Machine first), then the first field of the optional header (2).
    std::array<std::byte, 4 + 20 + 2> headers{};
    if (!source.Seek(headerOffset) || !source.ReadExactly(headers)) return false;
    return LittleEndian(headers.data(), 4) == signature && LittleEndian(headers.data() + 4, 2) == machineI386 &&
           LittleEndian(headers.data() + 24, 2) == optionalMagicPe32;
}

bool HasPakHeader(ByteSource& source) {
    constexpr std::int64_t headerSize = 12;
    constexpr std::int64_t entrySize = 64;

    const std::optional<std::uint64_t> size = source.Size();
    std::array<std::byte, headerSize> header{};
    if (!size || !source.Seek(0) || !source.ReadExactly(header)) return false;
    if (std::memcmp(header.data(), "PACK", 4) != 0) return false;
    // Both are signed in the format; their sum may need more than 32 bits.
    const std::int64_t offset = static_cast<std::int32_t>(LittleEndian(header.data() + 4, 4));
    const std::int64_t length = static_cast<std::int32_t>(LittleEndian(header.data() + 8, 4));
    if (offset < headerSize || length < entrySize || length % entrySize != 0) return false;
    return static_cast<std::uint64_t>(offset + length) <= *size;
}

}  // namespace GameDiscovery
