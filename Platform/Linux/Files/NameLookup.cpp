#include "Platform/Linux/Files/NameLookup.h"

#include "Platform/Linux/Files/CaseFolding.h"
#include "Platform/Text/Unicode.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace Platform {

namespace {

enum class Presence { Exists, Missing, CannotTell };

/// Whether an entry of exactly this spelling exists; a link counts as such, wherever it leads.
Presence Look(const std::string& path) {
    struct stat ignored;
    if (lstat(path.c_str(), &ignored) == 0) return Presence::Exists;
    return errno == ENOENT || errno == ENOTDIR ? Presence::Missing : Presence::CannotTell;
}

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { closedir(folder); }
};

/// The first entry in byte order that is `name` but for case; empty when there is none or the folder can't be read.
std::string FindEntry(const std::string& folderPath, std::string_view name) {
    const std::unique_ptr<DIR, CloseFolder> folder(opendir(folderPath.empty() ? "." : folderPath.c_str()));
    if (!folder) return {};
    std::string best;
    while (const dirent* const entry = readdir(folder.get())) {
        const std::string_view candidate = static_cast<const char*>(entry->d_name);
        if ((best.empty() || candidate < best) && EqualNamesIgnoringCase(candidate, name)) best = candidate;
    }
    return best;
}

/// Length of the longest part of the path, cut after whole components, that exists as given.
std::size_t ExistingPrefix(std::string_view path) {
    std::size_t length = path.size();
    while (length > 0) {
        while (length > 0 && path[length - 1] != '/') --length;  // the component
        const std::size_t withSeparators = length;               // "/a/" of "/a/b"
        while (length > 0 && path[length - 1] == '/') --length;  // the separators before it
        if (length == 0) return withSeparators;                  // the root, or the working directory
        if (Look(std::string(path.substr(0, withSeparators))) == Presence::Exists) return withSeparators;
    }
    return 0;
}

}  // namespace

std::string ExistingNativeSpelling(std::string_view path) {
    std::string whole(path);
    if (path.empty() || Look(whole) != Presence::Missing) return whole;

    std::size_t position = ExistingPrefix(path);
    std::string found(path.substr(0, position));
    while (position < path.size()) {
        const std::size_t end = std::min(path.find('/', position), path.size());
        const std::size_t next = std::min(path.find_first_not_of('/', end), path.size());
        const std::string_view name = path.substr(position, end - position);
        const std::string exact = found + std::string(name);
        switch (Look(exact)) {
            case Presence::Exists:
                found = exact;
                break;
            case Presence::CannotTell:
                return found.append(path.substr(position));
            case Presence::Missing: {
                const std::string entry = FindEntry(found, name);
                if (entry.empty()) return found.append(path.substr(position));
                found += entry;
                break;
            }
        }
        found += path.substr(end, next - end);
        position = next;
    }
    return found;
}

std::string NativePath(std::wstring_view name) {
    return ExistingNativeSpelling(NativeFromWide(name));
}

}  // namespace Platform
