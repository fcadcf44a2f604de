#pragma once

#include "launcher/GameDiscovery/ByteSource.h"

#include <windows.h>

#include <filesystem>

namespace GameDiscovery {

/// An existing file, open for reading only; closed on destruction. Others may read, write, rename and delete it
/// meanwhile. Never waits for anybody: what is no regular file doesn't open. Nothing is read ahead. Any one thread at a
/// time.
class FileReader final : public ByteSource {
public:
    explicit FileReader(const std::filesystem::path& path);
    ~FileReader() override;
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    /// Every other operation fails on a file that isn't open.
    bool IsOpen() const { return file_ != INVALID_HANDLE_VALUE; }

    std::optional<std::uint64_t> Size() override;
    bool Seek(std::uint64_t offset) override;
    std::optional<std::size_t> Read(std::span<std::byte> buffer) override;

private:
    HANDLE file_;
};

}  // namespace GameDiscovery
