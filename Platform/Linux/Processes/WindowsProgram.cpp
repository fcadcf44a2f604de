#include "Platform/Linux/Processes/WindowsProgram.h"

#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Files/RegularFile.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <cstdint>

namespace Platform {

namespace {

bool ReadAt(const FileDescriptor& file, std::uint32_t offset, unsigned char* bytes, std::size_t size) {
    ssize_t got = 0;
    do got = pread(file.Get(), bytes, size, offset);
    while (got < 0 && errno == EINTR);
    return got == static_cast<ssize_t>(size);
}

}  // namespace

DWORD JudgeWindowsProgram(const std::filesystem::path& file) {
    const FileDescriptor opened = OpenRegularFile(AT_FDCWD, file.native(), O_RDONLY | O_CLOEXEC);
    if (!opened) return ErrorFromErrno(errno);

    std::array<unsigned char, 64> dos{};
    if (!ReadAt(opened, 0, dos.data(), dos.size()) || dos[0] != 'M' || dos[1] != 'Z') return ERROR_BAD_EXE_FORMAT;
    const std::uint32_t offset = static_cast<std::uint32_t>(dos[60]) | static_cast<std::uint32_t>(dos[61]) << 8 |
                                 static_cast<std::uint32_t>(dos[62]) << 16 | static_cast<std::uint32_t>(dos[63]) << 24;
    std::array<unsigned char, 4> mark{};
    const std::array<unsigned char, 4> expected{'P', 'E', 0, 0};
    return ReadAt(opened, offset, mark.data(), mark.size()) && mark == expected ? ERROR_SUCCESS : ERROR_BAD_EXE_FORMAT;
}

}  // namespace Platform
