// The programs as the build made them from shaders/. Each included file is one array of a program's words, named after
// its source.
//
// These arrays are SPIR-V, which is what Platform/Linux takes. For Windows this file isn't compiled: there the
// functions of ShaderPrograms.h are declared and not yet defined, until the build makes Shader Model containers too, so
// that the toolkit compiles for Windows and a program with a background doesn't link there yet.
#include "Background/ShaderPrograms.h"

#include <cstdint>

namespace Tamborel {

namespace {

#include "Background/shaders/compiled/Blit.inc"
#include "Background/shaders/compiled/Flat.inc"
#include "Background/shaders/compiled/Vertex.inc"

template <std::size_t Words>
constexpr ShaderBytecode Bytecode(const std::uint32_t (&words)[Words]) {
    return {words, sizeof(words)};
}

}  // namespace

ShaderBytecode BackgroundVertexProgram() {
    return Bytecode(kVertex);
}

ShaderBytecode BlitPixelProgram() {
    return Bytecode(kBlit);
}

// No kind has a program of its own yet: each is the flat one, a still, dark, even background.
const std::array<ShaderBytecode, kPixelProgramCount>& BackgroundPixelPrograms() {
    static constexpr std::array<ShaderBytecode, kPixelProgramCount> programs = {
        Bytecode(kFlat),  // LiquidMetal
        Bytecode(kFlat),  // MagicCurtain
        Bytecode(kFlat),  // CloudDiving
        Bytecode(kFlat),  // CloudHorizon
        Bytecode(kFlat),  // SilkRibbons
        Bytecode(kFlat),  // DawnGrid
        Bytecode(kFlat),  // Cyberspace
        Bytecode(kFlat),  // QuietGoldSunrise
    };
    return programs;
}

bool HasOwnProgram(BackgroundKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < kPixelProgramCount && BackgroundPixelPrograms()[index].data != Bytecode(kFlat).data;
}

}  // namespace Tamborel
