// The compiled programs that the background draws with.
#pragma once

#include "Background/BackgroundKind.h"

#include <array>
#include <cstddef>

namespace Tamborel {

/// A compiled program, in the form the platform's Direct3D takes. The bytes live as long as the process.
struct ShaderBytecode {
    const void* data = nullptr;
    std::size_t size = 0;  ///< Bytes.
};

/// The vertex program of the full-screen strip.
ShaderBytecode BackgroundVertexProgram();

/// The pixel program that brings background and frame to the window.
ShaderBytecode BlitPixelProgram();

/// The pixel programs of the kinds 0 to 7, by kind.
const std::array<ShaderBytecode, kPixelProgramCount>& BackgroundPixelPrograms();

/// The metal surface's two stages: the compute program that stores its colours in a coarse grid, and the pixel program
/// that makes the picture of it.
ShaderBytecode SurfaceComputeProgram();
ShaderBytecode SurfacePixelProgram();

}  // namespace Tamborel
