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
#include "Background/shaders/compiled/CloudDiving.inc"
#include "Background/shaders/compiled/CloudHorizon.inc"
#include "Background/shaders/compiled/Cyberspace.inc"
#include "Background/shaders/compiled/DawnGrid.inc"
#include "Background/shaders/compiled/LiquidMetal.inc"
#include "Background/shaders/compiled/LiquidMetalSurface.inc"
#include "Background/shaders/compiled/LiquidMetalSurfaceGrid.inc"
#include "Background/shaders/compiled/MagicCurtain.inc"
#include "Background/shaders/compiled/QuietGoldSunrise.inc"
#include "Background/shaders/compiled/SilkRibbons.inc"
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

const std::array<ShaderBytecode, kPixelProgramCount>& BackgroundPixelPrograms() {
    static constexpr std::array<ShaderBytecode, kPixelProgramCount> programs = {
        Bytecode(kLiquidMetal), Bytecode(kMagicCurtain), Bytecode(kCloudDiving), Bytecode(kCloudHorizon),
        Bytecode(kSilkRibbons), Bytecode(kDawnGrid),     Bytecode(kCyberspace),  Bytecode(kQuietGoldSunrise),
    };
    return programs;
}

ShaderBytecode SurfaceComputeProgram() {
    return Bytecode(kLiquidMetalSurfaceGrid);
}

ShaderBytecode SurfacePixelProgram() {
    return Bytecode(kLiquidMetalSurface);
}

}  // namespace Tamborel
