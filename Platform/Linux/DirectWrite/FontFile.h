#pragma once

#include "Platform/Linux/Base/ComObject.h"

#include <dwrite_3.h>
#include <wrl/client.h>

#include <cstddef>
#include <span>
#include <vector>

namespace Platform::DirectWrite {

/// A font's bytes. Never change.
class FontFile final : public ComObject<IDWriteFontFile> {
public:
    /// Bytes that lie with an owner, which the file keeps alive.
    FontFile(std::span<const std::byte> bytes, IUnknown* owner)
        : ComObject("IDWriteFontFile"), owner_(owner), bytes_(bytes) {}
    /// Bytes of its own.
    explicit FontFile(std::vector<std::byte> bytes)
        : ComObject("IDWriteFontFile"), own_(std::move(bytes)), bytes_(own_) {}

    std::span<const std::byte> Bytes() const noexcept { return bytes_; }

private:
    ~FontFile() override = default;

    Microsoft::WRL::ComPtr<IUnknown> owner_;
    std::vector<std::byte> own_;
    std::span<const std::byte> bytes_;
};

}  // namespace Platform::DirectWrite
