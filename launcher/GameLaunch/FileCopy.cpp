#include "launcher/GameLaunch/FileCopy.h"

#include "launcher/GameDiscovery/FileReader.h"
#include "launcher/GameLaunch/Handle.h"
#include "Platform/Interface/Paths.h"

#include <cstddef>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace GameLaunch {

namespace {

/// Larger than the drivers we know: such a driver is in memory, whole, before its target is opened for writing.
constexpr std::size_t ChunkSize = std::size_t{1} << 20U;

std::error_code CodeFor(DWORD systemError) {
    switch (systemError) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return std::make_error_code(std::errc::no_such_file_or_directory);
        case ERROR_ACCESS_DENIED:
            return std::make_error_code(std::errc::permission_denied);
        case ERROR_SHARING_VIOLATION:
        case ERROR_BUSY:
            return std::make_error_code(std::errc::device_or_resource_busy);
        case ERROR_WRITE_PROTECT:
            return std::make_error_code(std::errc::read_only_file_system);
        case ERROR_DISK_FULL:
            return std::make_error_code(std::errc::no_space_on_device);
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return std::make_error_code(std::errc::file_exists);
        case ERROR_FILENAME_EXCED_RANGE:
            return std::make_error_code(std::errc::filename_too_long);
        default:
            return std::make_error_code(std::errc::io_error);
    }
}

/// The last call's error code, which is never success here.
DWORD Failure() {
    const DWORD code = GetLastError();
    return code == ERROR_SUCCESS ? ERROR_GEN_FAILURE : code;
}

/// Reads until the chunk is full or the file has ended. False on a read error.
bool Fill(GameDiscovery::FileReader& file, std::vector<std::byte>& chunk) {
    chunk.resize(ChunkSize);
    const auto filled = file.Read(chunk);
    chunk.resize(filled.value_or(0));
    return filled.has_value();
}

HANDLE OpenForWriting(const fs::path& path, DWORD disposition) {
    return CreateFileW(Platform::TextFromPath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// Writes `chunk`, then the rest of `input`, and has the disk confirm it. The code of the first call that failed.
DWORD Transfer(GameDiscovery::FileReader& input, HANDLE output, std::vector<std::byte>& chunk) {
    while (!chunk.empty()) {
        for (std::size_t done = 0; done < chunk.size();) {
            DWORD written = 0;
            if (!WriteFile(output, chunk.data() + done, static_cast<DWORD>(chunk.size() - done), &written, nullptr)) {
                return Failure();
            }
            if (written == 0) return ERROR_DISK_FULL;
            done += written;
        }
        if (!Fill(input, chunk)) return Failure();
    }
    return FlushFileBuffers(output) ? ERROR_SUCCESS : Failure();
}

/// Makes `target` and fills it; takes it away again when that fails.
DWORD WriteNew(GameDiscovery::FileReader& input, std::vector<std::byte>& chunk, const fs::path& target) {
    DWORD code = ERROR_SUCCESS;
    {
        const Handle output(OpenForWriting(target, CREATE_NEW));
        if (output.Process == INVALID_HANDLE_VALUE) return Failure();
        code = Transfer(input, output.Process, chunk);
    }
    if (code != ERROR_SUCCESS) {
        std::error_code ignored;
        fs::remove(target, ignored);
    }
    return code;
}

DWORD WriteOver(GameDiscovery::FileReader& input, std::vector<std::byte>& chunk, const fs::path& target) {
    const Handle output(OpenForWriting(target, CREATE_ALWAYS));
    return output.Process == INVALID_HANDLE_VALUE ? Failure() : Transfer(input, output.Process, chunk);
}

DWORD Copy(const fs::path& source, const fs::path& target, IfExists ifExists) {
    GameDiscovery::FileReader input(source);
    if (!input.IsOpen()) return Failure();
    std::vector<std::byte> chunk;
    if (!Fill(input, chunk)) return Failure();
    const DWORD code = WriteNew(input, chunk, target);
    const bool exists = code == ERROR_FILE_EXISTS || code == ERROR_ALREADY_EXISTS;
    return exists && ifExists == IfExists::Overwrite ? WriteOver(input, chunk, target) : code;
}

}  // namespace

void CopyContent(const fs::path& source, const fs::path& target, IfExists ifExists) {
    const DWORD code = Copy(source, target, ifExists);
    if (code != ERROR_SUCCESS) throw fs::filesystem_error("copy_file", source, target, CodeFor(code));
}

bool SameContent(const fs::path& source, const fs::path& target) {
    GameDiscovery::FileReader sourceFile(source);
    GameDiscovery::FileReader targetFile(target);
    if (!sourceFile.IsOpen() || !targetFile.IsOpen()) throw std::runtime_error("Cannot open driver");
    std::vector<std::byte> left;
    std::vector<std::byte> right;
    bool same = true;
    do {
        if (!Fill(sourceFile, left) || !Fill(targetFile, right)) {
            throw std::runtime_error("Cannot read driver");
        }
        same = same && left == right;
    } while (!left.empty() || !right.empty());
    return same;
}

}  // namespace GameLaunch
