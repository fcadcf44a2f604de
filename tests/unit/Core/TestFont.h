// A font for tests: bytes that nobody has to decipher.
#pragma once

#include "Core/EmbeddedFonts.h"

#include <cstdint>
#include <span>
#include <vector>

class TestFont final : public Tamborel::EmbeddedResource {
public:
    /// `size` is told to whoever asks, and nobody reads as much.
    explicit TestFont(std::uint64_t size) : EmbeddedResource(nullptr, 0), size_(size) {}
    std::pair<const std::uint8_t*, std::uint64_t> Data() override { return {size_ ? bytes_ : nullptr, size_}; }

    ULONG References() {
        AddRef();
        return Release();
    }

private:
    std::uint8_t bytes_[4] = {1, 2, 3, 4};
    std::uint64_t size_;
};

/// Puts test fonts in the place of the built-in ones while it lives.
class ScopedFonts {
public:
    explicit ScopedFonts(std::vector<Tamborel::EmbeddedResource*> fonts)
        : fonts_(std::move(fonts)), before_(Tamborel::EmbeddedFonts()) {
        Tamborel::ReplaceEmbeddedFonts(fonts_);
    }
    ~ScopedFonts() { Tamborel::ReplaceEmbeddedFonts(before_); }
    ScopedFonts(const ScopedFonts&) = delete;
    ScopedFonts& operator=(const ScopedFonts&) = delete;

private:
    std::vector<Tamborel::EmbeddedResource*> fonts_;
    std::span<Tamborel::EmbeddedResource* const> before_;
};
