#include "CopyProgram.h"

#include <cstdint>

namespace BackgroundBench {

namespace {

#include "bench/background/shaders/compiled/Copy.inc"

}  // namespace

Tamborel::ShaderBytecode CopyProgram() {
    return {kCopy, sizeof(kCopy)};
}

}  // namespace BackgroundBench
