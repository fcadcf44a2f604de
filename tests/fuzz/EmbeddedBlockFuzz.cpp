// A block of any bytes: it is refused without harm, or its body is all of it but nonce and tag.
#include "Core/EmbeddedResource.h"
#include "Core/Log.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Memory of exactly this size, so that a byte too far is seen.
    const std::unique_ptr<std::uint8_t[]> block(new std::uint8_t[size]);
    for (std::size_t at = 0; at < size; ++at) block[at] = data[at];
    Tamborel::EmbeddedResource resource(block.get(), size);
    const auto [body, bodySize] = resource.Data();
    const bool refused = body == nullptr && bodySize == 0;
    const bool whole = size >= 28 && body == block.get() + 12 && bodySize == size - 28;
    if (!refused && !whole) std::abort();
    return 0;
}

// Nobody reads what each refusal logs.
void Tamborel::Log(const char*) noexcept {}
