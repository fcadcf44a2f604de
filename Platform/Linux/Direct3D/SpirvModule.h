// The words of a SPIR-V program as instructions.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace Platform::Direct3D::Spirv {

// SPIR-V, version 1.6: 2.3 (physical layout), 3.49 (instructions).
inline constexpr std::uint32_t magicNumber = 0x07230203;
inline constexpr std::size_t headerWords = 5;

enum Op : std::uint32_t {
    OpUndef = 1,
    OpName = 5,
    OpMemberName = 6,
    OpExtInstImport = 11,
    OpExtInst = 12,
    OpEntryPoint = 15,
    OpTypeInt = 21,
    OpTypeFloat = 22,
    OpTypeVector = 23,
    OpTypePointer = 32,
    OpConstant = 43,
    OpVariable = 59,
    OpLoad = 61,
    OpStore = 62,
    OpAccessChain = 65,
    OpInBoundsAccessChain = 66,
    OpDecorate = 71,
    OpMemberDecorate = 72,
    OpDecorationGroup = 73,
    OpVectorExtractDynamic = 77,
    OpVectorInsertDynamic = 78,
    OpVectorShuffle = 79,
    OpCompositeExtract = 81,
    OpCompositeInsert = 82,
    OpTranspose = 84,
    OpConvertFToU = 109,
    OpBitcast = 124,
    OpSNegate = 126,
    OpSMulExtended = 152,
    OpAny = 154,
    OpFUnordGreaterThanEqual = 191,
    OpShiftRightLogical = 194,
    OpBitCount = 205,
    OpPhi = 245,
};

struct Instruction {
    std::uint32_t op;
    std::span<const std::uint32_t> words;  ///< With the first, which has length and operation.
};

/// A program's instructions, which point into its words; nothing for words that are no program.
std::optional<std::vector<Instruction>> Read(std::span<const std::uint32_t> program);

/// An instruction's operands that may be ids: all but the literals of the commonest instructions. The instruction's own
/// id is among them.
std::span<const std::uint32_t> Ids(const Instruction& instruction);

/// Whether the instruction does nothing but give its result, which is word 2. Not so loads that say how memory is to be
/// read, nor functions of sets other than `mathematics` (0 for none).
bool IsPure(const Instruction& instruction, std::uint32_t mathematics);

/// The id under which the program has the mathematical functions of GLSL.std.450; 0 where it doesn't.
std::uint32_t MathematicsOf(const std::vector<Instruction>& program);

}  // namespace Platform::Direct3D::Spirv
