#pragma once

#include "Background/ShaderPrograms.h"

namespace BackgroundBench {

/// The pixel program of the plain textured copy.
Tamborel::ShaderBytecode CopyProgram();

}  // namespace BackgroundBench
