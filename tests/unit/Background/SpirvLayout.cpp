#include "SpirvLayout.h"

#include <span>

namespace {

// SPIR-V 1.0: section 2.3 (the words of a module) and section 3.32 (the instructions).
constexpr std::size_t kHeaderWords = 5;
constexpr std::uint32_t kOpName = 5;
constexpr std::uint32_t kOpMemberName = 6;
constexpr std::uint32_t kOpMemberDecorate = 72;
constexpr std::uint32_t kDecorationOffset = 35;

std::string Text(std::span<const std::uint32_t> words) {
    return reinterpret_cast<const char*>(words.data());
}

}  // namespace

std::map<std::string, std::uint32_t> MemberOffsets(const Tamborel::ShaderBytecode& program, const std::string& block) {
    const std::span<const std::uint32_t> words(static_cast<const std::uint32_t*>(program.data),
                                               program.size / sizeof(std::uint32_t));
    std::uint32_t blockId = 0;
    std::map<std::uint32_t, std::string> names;
    std::map<std::string, std::uint32_t> offsets;
    for (std::size_t at = kHeaderWords; at < words.size();) {
        const std::uint32_t code = words[at] & 0xFFFFU;
        const std::size_t length = words[at] >> 16U;
        if (length == 0 || at + length > words.size()) break;
        const auto operands = words.subspan(at + 1, length - 1);
        if (code == kOpName && Text(operands.subspan(1)) == block) blockId = operands[0];
        if (code == kOpMemberName && operands[0] == blockId) names[operands[1]] = Text(operands.subspan(2));
        if (code == kOpMemberDecorate && operands[0] == blockId && operands[2] == kDecorationOffset) {
            offsets[names[operands[1]]] = operands[3];
        }
        at += length;
    }
    return offsets;
}
