#include "Platform/Linux/Cryptography/Cipher.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <limits>

namespace Platform {

namespace {

/// Starts the library without the machine's configuration file: a setting there, such as a restricted provider, must
/// not decide whether a program can read its own assets, and reading it costs time at every start.
void StartLibrary() noexcept {
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr);
}

}  // namespace

void Cipher::FreeContext::operator()(EVP_CIPHER_CTX* context) const noexcept {
    EVP_CIPHER_CTX_free(context);  // It wipes the key.
}

Cipher::Cipher(std::span<const UCHAR, KeySize> key) noexcept {
    StartLibrary();
    context_.reset(EVP_CIPHER_CTX_new());
    if (!context_) return;
    // A nonce of 12 bytes is this mode's default; each message brings its own.
    if (EVP_DecryptInit_ex(context_.get(), EVP_aes_256_gcm(), nullptr, key.data(), nullptr) != 1) context_.reset();
}

NTSTATUS Cipher::Decrypt(std::span<const UCHAR, NonceSize> nonce, std::span<UCHAR, TagSize> tag, const UCHAR* input,
                         UCHAR* output, ULONG size) noexcept {
    if (size > static_cast<ULONG>(std::numeric_limits<int>::max())) return STATUS_INVALID_PARAMETER;
    if (EVP_DecryptInit_ex(context_.get(), nullptr, nullptr, nullptr, nonce.data()) != 1) return STATUS_INTERNAL_ERROR;
    if (EVP_CIPHER_CTX_ctrl(context_.get(), EVP_CTRL_AEAD_SET_TAG, static_cast<int>(tag.size()), tag.data()) != 1) {
        return STATUS_INTERNAL_ERROR;
    }
    int written = 0;
    if (size > 0 && EVP_DecryptUpdate(context_.get(), output, &written, input, static_cast<int>(size)) != 1) {
        return STATUS_INTERNAL_ERROR;
    }
    // The last step writes nothing in this mode: it compares the tags.
    UCHAR none = 0;
    return EVP_DecryptFinal_ex(context_.get(), &none, &written) == 1 ? STATUS_SUCCESS : STATUS_AUTH_TAG_MISMATCH;
}

}  // namespace Platform
