// A document's way to pixels. Nothing may be painted outside its viewport.
#include "Expect.h"
#include "Platform/Linux/Imaging/SvgDrawing.h"

#include <cstddef>
#include <cstdint>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto drawing = Platform::Imaging::SvgDrawing::Parse({data, size});
    if (!drawing) return 0;
    drawing->SetWidth({100.0F, true});
    drawing->SetHeight({100.0F, true});

    static constexpr int side = 48;
    static constexpr int margin = 8;
    std::vector<std::uint32_t> pixels(std::size_t{side} * side);
    const auto extent = static_cast<float>(side - 2 * margin) / 2;  // in units of two pixels
    if (!drawing->Paint(extent, extent, {2, 0, 0, 2, margin, margin}, pixels.data(), side, side)) return 0;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const bool inside = x >= margin && x < side - margin && y >= margin && y < side - margin;
            const std::uint32_t pixel = pixels[static_cast<std::size_t>(y * side + x)];
            Expect(inside || pixel == 0, "nothing outside the viewport");
        }
    }
    return 0;
}
