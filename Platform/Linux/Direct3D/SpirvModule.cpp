#include "Platform/Linux/Direct3D/SpirvModule.h"

#include <cstring>

namespace Platform::Direct3D::Spirv {

namespace {

// Functions of GLSL.std.450 that write through a pointer.
constexpr std::uint32_t modf = 35;
constexpr std::uint32_t frexp = 51;
// Those from here on belong to pixel programs, and those beyond to later versions.
constexpr std::uint32_t interpolateAtCentroid = 76;

bool IsWithin(std::uint32_t op, std::uint32_t first, std::uint32_t last) {
    return op >= first && op <= last;
}

}  // namespace

std::optional<std::vector<Instruction>> Read(std::span<const std::uint32_t> program) {
    if (program.size() <= headerWords || program[0] != magicNumber) return std::nullopt;
    std::vector<Instruction> read;
    for (std::size_t at = headerWords; at < program.size();) {
        const std::size_t length = program[at] >> 16;
        if (length == 0 || length > program.size() - at) return std::nullopt;
        read.push_back({program[at] & 0xFFFF, program.subspan(at, length)});
        at += length;
    }
    return read;
}

std::span<const std::uint32_t> Ids(const Instruction& instruction) {
    const auto first = [&](std::size_t count) {
        return instruction.words.subspan(1, std::min(count, instruction.words.size() - 1));
    };
    switch (instruction.op) {
        case OpConstant:
            return first(2);
        case OpCompositeExtract:
            return first(3);
        case OpVectorShuffle:
        case OpCompositeInsert:
            return first(4);
        default:
            return instruction.words.subspan(1);
    }
}

bool IsPure(const Instruction& instruction, std::uint32_t mathematics) {
    const auto& words = instruction.words;
    if (words.size() < 3) return false;
    switch (instruction.op) {
        case OpLoad:
            return words.size() == 4;
        case OpExtInst:
            return words.size() > 4 && mathematics != 0 && words[3] == mathematics && words[4] != modf &&
                   words[4] != frexp && words[4] < interpolateAtCentroid;
        case OpUndef:
        case OpAccessChain:
        case OpInBoundsAccessChain:
        case OpPhi:
            return true;
        default:
            return IsWithin(instruction.op, OpVectorExtractDynamic, OpTranspose) ||
                   IsWithin(instruction.op, OpConvertFToU, OpBitcast) ||
                   IsWithin(instruction.op, OpSNegate, OpSMulExtended) ||
                   IsWithin(instruction.op, OpAny, OpFUnordGreaterThanEqual) ||
                   IsWithin(instruction.op, OpShiftRightLogical, OpBitCount);
    }
}

std::uint32_t MathematicsOf(const std::vector<Instruction>& program) {
    for (const Instruction& each : program) {
        if (each.op != OpExtInstImport || each.words.size() < 3) continue;
        const auto name = std::as_bytes(each.words.subspan(2));
        constexpr char wanted[] = "GLSL.std.450";
        if (name.size() >= sizeof wanted && std::memcmp(name.data(), wanted, sizeof wanted) == 0) return each.words[1];
    }
    return 0;
}

}  // namespace Platform::Direct3D::Spirv
