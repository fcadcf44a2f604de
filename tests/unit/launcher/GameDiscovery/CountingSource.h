#pragma once

#include "launcher/GameDiscovery/ByteSource.h"

#include <limits>
#include <string>
#include <utility>

/// Bytes in memory that count what is read, may claim any size, and may begin to fail.
class CountingSource final : public GameDiscovery::ByteSource {
public:
    explicit CountingSource(std::string bytes)
        : bytes_(std::move(bytes)), memory_(std::as_bytes(std::span(bytes_))), claimedSize_(bytes_.size()) {}
    CountingSource(const CountingSource&) = delete;
    CountingSource& operator=(const CountingSource&) = delete;

    void ClaimSize(std::uint64_t size) { claimedSize_ = size; }
    /// All calls fail but the first `calls`.
    void FailAfter(int calls) { workingCalls_ = calls; }
    std::size_t BytesRead() const { return bytesRead_; }

    std::optional<std::uint64_t> Size() override {
        return Works() ? std::optional<std::uint64_t>(claimedSize_) : std::nullopt;
    }
    bool Seek(std::uint64_t offset) override { return Works() && memory_.Seek(offset); }
    std::optional<std::size_t> Read(std::span<std::byte> buffer) override {
        if (!Works()) return std::nullopt;
        const std::optional<std::size_t> read = memory_.Read(buffer);
        bytesRead_ += read.value_or(0);
        return read;
    }

private:
    bool Works() { return workingCalls_-- > 0; }

    std::string bytes_;
    GameDiscovery::MemorySource memory_;
    std::uint64_t claimedSize_;
    std::size_t bytesRead_ = 0;
    int workingCalls_ = std::numeric_limits<int>::max();
};
