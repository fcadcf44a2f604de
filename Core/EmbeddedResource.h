// An asset that the program carries within itself, enciphered.
#pragma once

#include <unknwn.h>
#include <windows.h>

#include <atomic>
#include <cstdint>
#include <utility>

namespace Tamborel {

/// One block of bytes built into the program, deciphered where it lies at the first use. It is an IUnknown so that
/// whoever reads the bytes in place can hold a reference to their owner; objects are static and never freed, so the
/// count decides nothing. Any thread.
///
/// A block is a nonce of 12 bytes, the body enciphered with AES-256 in Galois/Counter mode under EmbeddedKey, and a tag
/// of 16 bytes; nothing else goes into the tag. tools/encipher makes it.
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

    /// The asset's bytes and their count. The first call deciphers, and other threads wait for it. A failure is logged,
    /// gives (null, 0) and is not tried again.
    virtual std::pair<const std::uint8_t*, std::uint64_t> Data();

private:
    void Decipher() noexcept;

    std::uint8_t* block_;
    std::uint64_t blockSize_;
    std::uint8_t* data_ = nullptr;
    std::uint64_t dataSize_ = 0;
    INIT_ONCE once_ = INIT_ONCE_STATIC_INIT;  // Its completion publishes the fields around it.
    bool decrypted_ = false;
    std::atomic<ULONG> references_{1};
};

}  // namespace Tamborel
