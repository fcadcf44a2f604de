#include "Platform/Linux/Wine/RegistryFile.h"

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Linux/Wine/RegistryText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace Platform {

namespace {

constexpr off_t MaxBytes = off_t{64} << 20;

/// Empty for what can't be read.
std::string ReadText(const std::filesystem::path& file) {
    const FileDescriptor descriptor = OpenRegularFile(AT_FDCWD, file.native(), O_RDONLY);
    struct stat status {};
    if (!descriptor || fstat(descriptor.Get(), &status) != 0 || status.st_size > MaxBytes) return {};
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t size = 0;
    while (size < text.size()) {
        const ssize_t count = read(descriptor.Get(), text.data() + size, text.size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        size += static_cast<std::size_t>(count);
    }
    text.resize(size);
    return text;
}

}  // namespace

std::optional<std::wstring> ReadRegistryString(const std::filesystem::path& file, std::wstring_view key,
                                               std::wstring_view name) {
    return FindRegistryString(ReadText(file), key, name);
}

}  // namespace Platform
