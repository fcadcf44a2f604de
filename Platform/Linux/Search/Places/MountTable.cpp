#include "Platform/Linux/Search/Places/MountTable.h"

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Search/Places/MountKind.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <unordered_set>

namespace fs = std::filesystem;

namespace Platform {

namespace {

constexpr int NoParent = INT_MIN;
constexpr std::size_t MaxTableBytes = 16U << 20U;
// The kernel's own limit (path_resolution(7)).
constexpr int MaxLinks = 40;

/// Takes the next word off the front of a line; empty at its end.
std::string_view TakeWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    const std::string_view word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    return word;
}

template <class Number>
bool ParseNumber(std::string_view word, Number& number) {
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size();
}

bool IsOctal(char c) {
    return c >= '0' && c <= '7';
}

/// Blanks, tabs, line breaks and backslashes stand in the table as a backslash and three octal digits.
std::string Unescape(std::string_view word) {
    std::string text;
    text.reserve(word.size());
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] == '\\' && i + 3 < word.size() && IsOctal(word[i + 1]) && IsOctal(word[i + 2]) &&
            IsOctal(word[i + 3])) {
            text += static_cast<char>((word[i + 1] - '0') * 64 + (word[i + 2] - '0') * 8 + (word[i + 3] - '0'));
            i += 3;
        } else {
            text += word[i];
        }
    }
    return text;
}

bool ParseLine(std::string_view line, Mount& mount) {
    if (!ParseNumber(TakeWord(line), mount.id) || !ParseNumber(TakeWord(line), mount.parent)) return false;
    const std::string_view device = TakeWord(line);
    const std::size_t colon = device.find(':');
    if (colon == std::string_view::npos || !ParseNumber(device.substr(0, colon), mount.major) ||
        !ParseNumber(device.substr(colon + 1), mount.minor)) {
        return false;
    }
    mount.root = Unescape(TakeWord(line));
    mount.point = Unescape(TakeWord(line));
    if (!mount.point.is_absolute()) return false;
    TakeWord(line);  // mount options
    std::string_view word = TakeWord(line);
    while (!word.empty() && word != "-") word = TakeWord(line);  // optional fields
    mount.type = Unescape(TakeWord(line));
    mount.source = Unescape(TakeWord(line));
    return !mount.type.empty();
}

std::string ReadTable() {
    std::string text;
    const FileDescriptor file(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    if (!file) return text;
    std::array<char, 65536> buffer;
    while (text.size() < MaxTableBytes) {
        const ssize_t count = read(file.Get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

/// The target of a link; nothing for what is no link or isn't there.
std::optional<std::string> ReadLink(const fs::path& path) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length <= 0 || static_cast<std::size_t>(length) == target.size()) return std::nullopt;
    return std::string(target.data(), static_cast<std::size_t>(length));
}

}  // namespace

bool IsWithin(const fs::path& path, const fs::path& folder) {
    const std::string& inner = path.native();
    const std::string& outer = folder.native();
    if (inner.compare(0, outer.size(), outer) != 0) return false;
    return inner.size() == outer.size() || outer.ends_with('/') || inner[outer.size()] == '/';
}

MountTable MountTable::Current() {
    return MountTable(ReadTable());
}

MountTable::MountTable(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        Mount mount;
        if (ParseLine(text.substr(0, end), mount)) mounts_.push_back(std::move(mount));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    std::unordered_set<int> ids;
    for (const Mount& mount : mounts_) ids.insert(mount.id);
    for (std::size_t i = 0; i < mounts_.size(); ++i) {
        const Mount& mount = mounts_[i];
        const bool hasParent = mount.parent != mount.id && ids.contains(mount.parent);
        children_[hasParent ? mount.parent : NoParent].push_back(i);
    }
}

const Mount* MountTable::Holding(const fs::path& path) const {
    const Mount* holder = nullptr;
    // A walk along the path meets the outermost mount first and goes on below it, so what that one covers is never met.
    // Each step goes one mount deeper; the bound is for tables whose parents form a ring.
    for (std::size_t step = 0; step < mounts_.size(); ++step) {
        const auto below = children_.find(holder ? holder->id : NoParent);
        if (below == children_.end()) break;
        const Mount* next = nullptr;
        for (const std::size_t index : below->second) {
            const Mount& mount = mounts_[index];
            if (!IsWithin(path, mount.point) || (holder && !IsWithin(mount.point, holder->point))) continue;
            if (!next || mount.point.native().size() <= next->point.native().size()) next = &mount;
        }
        if (!next) break;
        holder = next;
    }
    return holder;
}

std::optional<fs::path> MountTable::Resolve(const fs::path& path) const {
    // Components still to walk, the next one last.
    std::vector<fs::path> pending;
    const auto push = [&pending](const fs::path& more) {
        const std::vector<fs::path> components(more.begin(), more.end());
        pending.insert(pending.end(), components.rbegin(), components.rend());
    };
    push(path);
    fs::path resolved = "/";
    for (int links = 0; !pending.empty();) {
        const fs::path component = std::move(pending.back());
        pending.pop_back();
        if (component.empty() || component == ".") continue;
        if (component == "/") {
            resolved = component;
        } else if (component == "..") {
            resolved = resolved.parent_path();
        } else {
            fs::path next = resolved / component;
            const Mount* const mount = Holding(next);
            const bool remote = mount && IsRemote(*mount);
            const std::optional<std::string> target = remote ? std::nullopt : ReadLink(next);
            if (!target) {
                resolved = std::move(next);
            } else if (++links > MaxLinks) {
                return std::nullopt;
            } else {
                push(*target);
            }
        }
    }
    return resolved;
}

}  // namespace Platform
