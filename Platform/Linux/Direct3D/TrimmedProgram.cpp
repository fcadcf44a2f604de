#include "Platform/Linux/Direct3D/TrimmedProgram.h"

#include "Platform/Linux/Direct3D/SpirvModule.h"

#include <algorithm>
#include <map>
#include <set>

namespace Platform::Direct3D {

namespace {

using Spirv::Instruction;

// Storage classes and decorations of SPIR-V.
constexpr std::uint32_t input = 1;
constexpr std::uint32_t output = 3;
constexpr std::uint32_t function = 7;
constexpr std::uint32_t location = 30;

/// A variable at one location.
struct Place {
    std::uint32_t variable;
    std::uint32_t location;
};

/// What is known of a program as a whole.
class Program {
public:
    explicit Program(const std::vector<Instruction>& instructions) : instructions_(instructions) {
        for (const Instruction& each : instructions) {
            const auto& words = each.words;
            if (each.op == Spirv::OpDecorate && words.size() == 4 && words[2] == location)
                located_[words[1]] = words[3];
            if (each.op == Spirv::OpDecorationGroup) hasGroups_ = true;
            if (each.op == Spirv::OpTypePointer && words.size() == 4) pointees_[words[1]] = words[3];
            // What takes one location: numbers of 32 bits and vectors of such.
            const bool isNumber = (each.op == Spirv::OpTypeFloat || each.op == Spirv::OpTypeInt) && words.size() > 2;
            if (isNumber && words[2] == 32) small_.insert(words[1]);
            if (each.op == Spirv::OpTypeVector && words.size() == 4 && small_.contains(words[2]))
                small_.insert(words[1]);
        }
    }

    /// The variables of a storage class that have a location. Nothing where one may take several.
    std::optional<std::vector<Place>> Places(std::uint32_t storage) const {
        if (hasGroups_) return std::nullopt;
        std::vector<Place> places;
        for (const Instruction& each : instructions_) {
            if (each.op != Spirv::OpVariable || each.words.size() < 4 || each.words[3] != storage) continue;
            const auto found = located_.find(each.words[2]);
            if (found == located_.end()) continue;
            const auto pointee = pointees_.find(each.words[1]);
            if (pointee == pointees_.end() || !small_.contains(pointee->second)) return std::nullopt;
            places.push_back({found->first, found->second});
        }
        return places;
    }

private:
    const std::vector<Instruction>& instructions_;
    std::map<std::uint32_t, std::uint32_t> located_;
    std::map<std::uint32_t, std::uint32_t> pointees_;
    std::set<std::uint32_t> small_;
    bool hasGroups_ = false;
};

/// Tells about something, rather than using it.
bool IsRemark(const Instruction& instruction) {
    return (instruction.op == Spirv::OpName || instruction.op == Spirv::OpDecorate) && instruction.words.size() > 1;
}

/// Finds out what of a program is needed, from what it does outwards back to what that takes.
class Needs {
public:
    Needs(const std::vector<Instruction>& instructions, const std::set<std::uint32_t>& unread)
        : instructions_(instructions), needed_(instructions.size(), false) {
        const std::uint32_t mathematics = Spirv::MathematicsOf(instructions);
        std::set<std::uint32_t> own;  // Variables that nobody else reads.
        for (std::size_t i = 0; i < instructions.size(); ++i) {
            const Instruction& each = instructions[i];
            const auto& words = each.words;
            const bool isLong = words.size() > 3;
            if (each.op == Spirv::OpVariable && isLong && (words[3] == function || unread.contains(words[2]))) {
                own.insert(words[2]);
                made_[words[2]].push_back(i);
            } else if (each.op == Spirv::OpStore && words.size() > 2 && own.contains(words[1])) {
                made_[words[1]].push_back(i);  // A store is needed where its variable is.
            } else if (Spirv::IsPure(each, mathematics)) {
                made_[words[2]].push_back(i);
            } else if (!IsRemark(each)) {
                Need(i);
            }
        }
        while (!open_.empty()) {
            const Instruction& each = instructions[open_.back()];
            open_.pop_back();
            if (each.op == Spirv::OpEntryPoint) continue;  // Its list of variables isn't a use.
            for (const std::uint32_t id : Spirv::Ids(each)) NeedId(id);
        }
        for (std::size_t i = 0; i < instructions.size(); ++i) {
            if (IsRemark(instructions[i])) needed_[i] = !IsGone(instructions[i].words[1]);
        }
    }

    bool Has(std::size_t instruction) const { return needed_[instruction]; }

    /// Whether what has this id is not needed.
    bool IsGone(std::uint32_t id) const {
        const auto found = made_.find(id);
        return found != made_.end() && !needed_[found->second.front()];
    }

private:
    void Need(std::size_t instruction) {
        if (needed_[instruction]) return;
        needed_[instruction] = true;
        open_.push_back(instruction);
    }

    void NeedId(std::uint32_t id) {
        const auto found = made_.find(id);
        if (found == made_.end()) return;
        for (const std::size_t each : found->second) Need(each);
    }

    const std::vector<Instruction>& instructions_;
    std::vector<bool> needed_;
    std::vector<std::size_t> open_;                           ///< Needed, and not looked into yet.
    std::map<std::uint32_t, std::vector<std::size_t>> made_;  ///< What makes a result that may not be needed.
};

/// The first word of an entry point's list of variables: after the operation, the model, the function and the name.
std::size_t FirstVariable(const Instruction& entryPoint) {
    for (std::size_t i = 3; i < entryPoint.words.size(); ++i) {
        if (entryPoint.words[i] >> 24 == 0) return i + 1;
    }
    return entryPoint.words.size();
}

}  // namespace

std::optional<std::vector<std::uint32_t>> InputLocations(std::span<const std::uint32_t> program) {
    const auto instructions = Spirv::Read(program);
    if (!instructions) return std::nullopt;
    const auto places = Program(*instructions).Places(input);
    if (!places) return std::nullopt;
    std::vector<std::uint32_t> locations;
    for (const Place& each : *places) locations.push_back(each.location);
    return locations;
}

std::vector<std::uint32_t> WithoutUnreadOutputs(std::span<const std::uint32_t> program,
                                                std::span<const std::uint32_t> read) {
    std::vector<std::uint32_t> whole(program.begin(), program.end());
    const auto instructions = Spirv::Read(program);
    if (!instructions) return whole;
    const auto places = Program(*instructions).Places(output);
    if (!places) return whole;
    std::set<std::uint32_t> unread;
    for (const Place& each : *places) {
        if (std::ranges::find(read, each.location) == read.end()) unread.insert(each.variable);
    }
    if (unread.empty()) return whole;

    const Needs needs(*instructions, unread);
    std::vector<std::uint32_t> trimmed(program.begin(), program.begin() + Spirv::headerWords);
    for (std::size_t i = 0; i < instructions->size(); ++i) {
        const Instruction& each = (*instructions)[i];
        if (!needs.Has(i)) continue;
        const std::size_t start = trimmed.size();
        const std::size_t fixed = each.op == Spirv::OpEntryPoint ? FirstVariable(each) : each.words.size();
        trimmed.insert(trimmed.end(), each.words.begin(), each.words.begin() + static_cast<std::ptrdiff_t>(fixed));
        for (const std::uint32_t id : each.words.subspan(fixed)) {
            if (!needs.IsGone(id)) trimmed.push_back(id);
        }
        trimmed[start] = each.op | static_cast<std::uint32_t>(trimmed.size() - start) << 16;
    }
    return trimmed;
}

}  // namespace Platform::Direct3D
