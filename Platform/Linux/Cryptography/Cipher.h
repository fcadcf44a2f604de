// AES-256 in Galois/Counter mode.
#pragma once

#include <bcrypt.h>

#include <memory>
#include <span>

using EVP_CIPHER_CTX = struct evp_cipher_ctx_st;

namespace Platform {

/// A key that deciphers. The library stays behind it.
class Cipher {
public:
    static constexpr std::size_t KeySize = 32;
    static constexpr std::size_t NonceSize = 12;
    static constexpr std::size_t TagSize = 16;

    /// Copies the key.
    explicit Cipher(std::span<const UCHAR, KeySize> key) noexcept;

    /// False: there was no memory, or the library does not know the cipher.
    bool IsValid() const noexcept { return context_ != nullptr; }

    /// Deciphers `size` bytes from `input` to `output`, which may be the same, and checks the tag.
    NTSTATUS Decrypt(std::span<const UCHAR, NonceSize> nonce, std::span<UCHAR, TagSize> tag, const UCHAR* input,
                     UCHAR* output, ULONG size) noexcept;

private:
    struct FreeContext {
        void operator()(EVP_CIPHER_CTX* context) const noexcept;
    };
    std::unique_ptr<EVP_CIPHER_CTX, FreeContext> context_;
};

}  // namespace Platform
