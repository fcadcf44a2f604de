// An asset that the program carries within itself.
#pragma once

#include <unknwn.h>

#include <atomic>
#include <cstdint>
#include <utility>

namespace Tamborel {

/// One block of bytes built into the program. It is an IUnknown so that whoever reads the bytes where they lie can hold
/// a reference to their owner; objects are static and never freed, so the count decides nothing. Any thread.
class EmbeddedResource : public IUnknown {
public:
    /// `block` is writable memory of `blockSize` bytes that lives as long as the program.
    constexpr EmbeddedResource(std::uint8_t* block, std::uint64_t blockSize) : block_(block), blockSize_(blockSize) {}

    constexpr ~EmbeddedResource() = default;
    EmbeddedResource(const EmbeddedResource&) = delete;
    EmbeddedResource& operator=(const EmbeddedResource&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    /// The asset's bytes and their count; (null, 0) when they can't be had.
    virtual std::pair<const std::uint8_t*, std::uint64_t> Data();

private:
    // The program carries no block yet: these are for Data to decipher.
    [[maybe_unused]] std::uint8_t* block_;
    [[maybe_unused]] std::uint64_t blockSize_;
    const std::uint8_t* data_ = nullptr;
    std::uint64_t dataSize_ = 0;
    std::atomic<ULONG> references_{1};
};

}  // namespace Tamborel
