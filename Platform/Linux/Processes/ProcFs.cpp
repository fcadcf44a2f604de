#include "Platform/Linux/Processes/ProcFs.h"

#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Files/CaseFolding.h"
#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Linux/Processes/Supervisor/WineSetup.h"
#include "Platform/Linux/Wine/Prefix.h"
#include "Platform/Text/Unicode.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace Platform {

namespace {

// More than the kernel allows arguments and environment to be together.
constexpr std::size_t maximumRead = std::size_t{8} << 20;

std::string ReadSome(const fs::path& file, std::size_t limit = maximumRead) {
    std::string text;
    const FileDescriptor opened = OpenRegularFile(AT_FDCWD, file.native(), O_RDONLY | O_CLOEXEC);
    std::size_t size = 0;
    while (opened && size < limit) {
        text.resize(std::min(limit, size + 4096 + size));
        const ssize_t got = read(opened.Get(), text.data() + size, text.size() - size);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        size += static_cast<std::size_t>(got);
    }
    text.resize(size);
    return text;
}

/// Takes the next piece of `rest`, up to `separator` or the end.
std::string_view NextPiece(std::string_view& rest, char separator) {
    const std::string_view piece = rest.substr(0, rest.find(separator));
    rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    return piece;
}

std::string_view WithoutDeleted(std::string_view path) {
    constexpr std::string_view mark = " (deleted)";
    return path.ends_with(mark) ? path.substr(0, path.size() - mark.size()) : path;
}

/// The last component, whichever separators the path has.
std::string_view FileName(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

bool IsWindowsPath(std::string_view path) {
    if (path.starts_with(R"(\\?\)")) return true;
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return path.size() > 2 && isLetter(path[0]) && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
}

/// Wine starts a program that is given without an extension as an .exe.
std::string WithExtension(std::string_view name) {
    std::string full(name);
    if (FileName(name).find('.') == std::string_view::npos) full += ".exe";
    return full;
}

std::optional<int> NumberIn(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

/// One process, each of whose facts is read when it is asked for.
class ProcFs::Process {
public:
    Process(const fs::path& root, int id) : folder_(root / std::to_string(id)) {
        std::error_code error;
        executable_ = WithoutDeleted(fs::read_symlink(folder_ / "exe", error).native());
        const std::string line = ReadSome(folder_ / "cmdline");
        firstWord_ = line.substr(0, line.find('\0'));
    }

    /// Parent and number of threads; nothing for a process that has ended.
    bool ReadStatus(ProcessFacts& facts) const {
        // "ID (NAME) STATE PARENT ...", where only the last parenthesis surely isn't the name's own.
        const std::string text = ReadSome(folder_ / "stat", 4096);
        const std::size_t nameEnd = text.rfind(')');
        const std::size_t nameStart = text.find('(');
        if (nameEnd == std::string::npos || nameStart >= nameEnd) return false;
        kernelName_ = text.substr(nameStart + 1, nameEnd - nameStart - 1);
        std::string_view rest = std::string_view(text).substr(std::min(nameEnd + 2, text.size()));
        constexpr int parentField = 4;
        constexpr int threadsField = 20;
        for (int field = 3; field <= threadsField; ++field) {
            const std::string_view piece = NextPiece(rest, ' ');
            if (field == 3 && (piece.empty() || piece == "Z" || piece == "X")) return false;
            if (field == parentField) facts.parent = NumberIn(piece).value_or(0);
            if (field == threadsField) facts.threads = static_cast<unsigned>(NumberIn(piece).value_or(0));
        }
        return true;
    }

    std::string ProgramName() const {
        if (IsWindowsProgram()) return WithExtension(FileName(firstWord_));
        if (!executable_.empty()) return std::string(FileName(executable_));
        return kernelName_;
    }

    std::optional<fs::path> ProgramFile() const {
        if (IsWindowsPath(firstWord_)) return FromWindowsPath();
        if (IsWindowsProgram()) return FromPlainName();
        if (executable_.empty()) return std::nullopt;
        return executable_;
    }

private:
    bool IsWindowsProgram() const {
        if (IsWindowsPath(firstWord_)) return true;
        const std::string_view loader = FileName(executable_);
        if (!loader.starts_with("wine") || loader.starts_with("wineserver")) return false;
        // Before Wine has put the program's command line in the place of its own it is still the loader.
        const std::string_view name = FileName(firstWord_);
        return !name.empty() && !name.starts_with("wine");
    }

    std::optional<fs::path> FromWindowsPath() const {
        std::error_code error;
        const fs::path prefix = PrefixFolder();
        auto path = prefix.empty() ? std::nullopt : WinePrefix(prefix).UnixPath(WideFromNative(firstWord_));
        if (path && fs::exists(*path, error)) return path;
        // Letters outside the locale that Wine runs in are lost from its command line, not from its memory map.
        const auto mapped = FromMap(WithExtension(FileName(firstWord_)));
        return mapped ? mapped : path;
    }

    std::optional<fs::path> FromPlainName() const {
        const std::string name = WithExtension(firstWord_);
        const fs::path told = Variable(engineImageVariable);
        if (told.is_absolute() && SameName(FileName(told.native()), FileName(name))) return told;
        if (auto mapped = FromMap(FileName(name))) return mapped;
        // A path of this system, or one with the separators of the other.
        std::string text = name;
        if (!text.starts_with('/')) std::replace(text.begin(), text.end(), '\\', '/');
        std::error_code error;
        const fs::path folder = WithoutDeleted(fs::read_symlink(folder_ / "cwd", error).native());
        const fs::path path = ExistingSpelling((folder / text).lexically_normal());
        if (path.is_absolute() && fs::exists(path, error)) return path;
        return std::nullopt;
    }

    /// The mapped file of that name. Wine maps the headers of a program even where it can't map the rest.
    std::optional<fs::path> FromMap(std::string_view name) const {
        const std::string text = ReadSome(folder_ / "maps");
        for (std::string_view rest = text; !rest.empty();) {
            // "ADDRESSES MODE OFFSET DEVICE NODE       PATH"
            const std::string_view line = NextPiece(rest, '\n');
            const std::size_t start = line.find('/');
            if (start == std::string_view::npos) continue;
            const std::string_view path = WithoutDeleted(line.substr(start));
            if (SameName(FileName(path), name)) return fs::path(path);
        }
        return std::nullopt;
    }

    static bool SameName(std::string_view left, std::string_view right) { return EqualNamesIgnoringCase(left, right); }

    /// Empty where it can't be told.
    fs::path PrefixFolder() const {
        fs::path named = Variable("WINEPREFIX");
        if (named.is_absolute()) return named;
        const fs::path home = Variable("HOME");
        return home.is_absolute() ? home / ".wine" : fs::path();
    }

    std::string Variable(std::string_view name) const {
        const std::string text = ReadSome(folder_ / "environ");
        for (std::string_view rest = text; !rest.empty();) {
            const std::string_view entry = NextPiece(rest, '\0');
            if (entry.starts_with(name) && entry.substr(name.size()).starts_with('=')) {
                return std::string(entry.substr(name.size() + 1));
            }
        }
        return {};
    }

    fs::path folder_;
    std::string executable_;
    std::string firstWord_;
    mutable std::string kernelName_;
};

std::vector<ProcessFacts> ProcFs::Processes() const {
    std::vector<ProcessFacts> all;
    std::error_code error;
    for (fs::directory_iterator entry(root_, error), end; !error && entry != end; entry.increment(error)) {
        const auto id = NumberIn(entry->path().filename().native());
        if (!id || *id <= 0) continue;
        const Process process(root_, *id);
        ProcessFacts facts{.id = *id, .parent = 0, .threads = 0, .fileName = {}};
        if (!process.ReadStatus(facts)) continue;
        facts.fileName = process.ProgramName();
        all.push_back(std::move(facts));
    }
    std::sort(all.begin(), all.end(), [](const auto& left, const auto& right) { return left.id < right.id; });
    return all;
}

std::optional<fs::path> ProcFs::ProgramFile(int id) const {
    return Process(root_, id).ProgramFile();
}

}  // namespace Platform
