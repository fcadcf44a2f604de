#include "launcher/GameDiscovery/FileReader.h"

#include "Platform/Interface/Paths.h"

#include <limits>

namespace GameDiscovery {

FileReader::FileReader(const std::filesystem::path& path)
    : file_(CreateFileW(Platform::TextFromPath(path).c_str(), GENERIC_READ,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                        FILE_ATTRIBUTE_NORMAL, nullptr)) {}

FileReader::~FileReader() {
    if (IsOpen()) CloseHandle(file_);
}

std::optional<std::uint64_t> FileReader::Size() {
    LARGE_INTEGER size{};
    if (!IsOpen() || !GetFileSizeEx(file_, &size) || size.QuadPart < 0) return std::nullopt;
    return static_cast<std::uint64_t>(size.QuadPart);
}

bool FileReader::Seek(std::uint64_t offset) {
    if (!IsOpen() || offset > static_cast<std::uint64_t>(std::numeric_limits<LONGLONG>::max())) return false;
    LARGE_INTEGER distance{};
    distance.QuadPart = static_cast<LONGLONG>(offset);
    return SetFilePointerEx(file_, distance, nullptr, FILE_BEGIN) != FALSE;
}

std::optional<std::size_t> FileReader::Read(std::span<std::byte> buffer) {
    if (!IsOpen()) return std::nullopt;
    constexpr std::size_t largestRead = std::size_t{1} << 30;
    std::size_t total = 0;
    while (total < buffer.size()) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min(buffer.size() - total, largestRead));
        if (!ReadFile(file_, buffer.data() + total, wanted, &count, nullptr)) return std::nullopt;
        if (count == 0) break;
        total += count;
    }
    return total;
}

}  // namespace GameDiscovery
