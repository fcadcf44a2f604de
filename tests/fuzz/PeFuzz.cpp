// Headers of an executable.
#include "Expect.h"
#include "launcher/GameDiscovery/FileFormats.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    GameDiscovery::MemorySource source(bytes);
    if (!GameDiscovery::HasClassicPeHeaders(source)) return 0;

    Expect(size >= 64 + 26, "room for the headers");
    Expect(data[0] == 'M' && data[1] == 'Z', "the DOS magic");
    // What follows the headers changes nothing, and a byte less of them does.
    std::size_t offset = 0;
    for (std::size_t i = 4; i-- > 0;) offset = offset << 8 | data[60 + i];
    GameDiscovery::MemorySource exact(bytes.first(offset + 26));
    Expect(GameDiscovery::HasClassicPeHeaders(exact), "the same answer without the rest of the file");
    GameDiscovery::MemorySource truncated(bytes.first(offset + 25));
    Expect(!GameDiscovery::HasClassicPeHeaders(truncated), "a truncated header to fail");
    return 0;
}
