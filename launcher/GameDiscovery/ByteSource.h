#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

namespace GameDiscovery {

/// Bytes with a read position, which starts at 0. The checks of file formats read through this, so that they judge a
/// file and a piece of memory alike.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// Bytes in all; nothing when that can't be told.
    virtual std::optional<std::uint64_t> Size() = 0;
    /// Puts the position `offset` bytes behind the start; it may lie behind the end. False on failure.
    virtual bool Seek(std::uint64_t offset) = 0;
    /// Fills `buffer` from the position on and moves it. Returns the bytes read, fewer than asked for only at the end;
    /// nothing when reading fails.
    virtual std::optional<std::size_t> Read(std::span<std::byte> buffer) = 0;

    /// Whether the whole of `buffer` could be filled.
    bool ReadExactly(std::span<std::byte> buffer) { return Read(buffer) == buffer.size(); }
};

/// Borrowed bytes in memory, which must outlive the source.
class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::span<const std::byte> bytes) : bytes_(bytes) {}

    std::optional<std::uint64_t> Size() override { return bytes_.size(); }
    bool Seek(std::uint64_t offset) override {
        position_ = offset;
        return true;
    }
    std::optional<std::size_t> Read(std::span<std::byte> buffer) override {
        if (position_ >= bytes_.size()) return 0;
        const auto start = static_cast<std::size_t>(position_);
        const std::size_t size = std::min(buffer.size(), bytes_.size() - start);
        if (size > 0) std::memcpy(buffer.data(), bytes_.data() + start, size);
        position_ += size;
        return size;
    }

private:
    std::span<const std::byte> bytes_;
    std::uint64_t position_ = 0;
};

}  // namespace GameDiscovery
