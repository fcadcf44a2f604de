// Header of a pak.
#include "Expect.h"
#include "launcher/GameDiscovery/FileFormats.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    GameDiscovery::MemorySource source(bytes);
    if (!GameDiscovery::HasPakHeader(source)) return 0;

    Expect(size >= 12 + 64, "room for the header and an entry");
    const auto number = [data](std::size_t at) {
        std::size_t value = 0;
        for (std::size_t i = 4; i-- > 0;) value = value << 8 | data[at + i];
        return value;
    };
    const std::size_t end = number(4) + number(8);
    Expect(number(8) % 64 == 0 && end <= size, "a directory of whole entries inside the file");
    GameDiscovery::MemorySource truncated(bytes.first(end - 1));
    Expect(!GameDiscovery::HasPakHeader(truncated), "a truncated directory to fail");
    return 0;
}
