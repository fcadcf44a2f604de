#include "Core/EmbeddedResource.h"

#include "Core/EmbeddedKey.h"
#include "Core/Log.h"

#include <bcrypt.h>

#include <memory>
#include <new>

namespace Tamborel {

namespace {

constexpr ULONG kNonceSize = 12;
constexpr ULONG kTagSize = 16;
constexpr std::uint64_t kSmallestBlock = kNonceSize + kTagSize;

// The interface takes what it only reads as writable memory.
PUCHAR Readable(const void* bytes) {
    return static_cast<PUCHAR>(const_cast<void*>(bytes));
}

/// A provider and the key made with it; they end with it, the key first.
class Decryption {
public:
    Decryption() = default;
    Decryption(const Decryption&) = delete;
    Decryption& operator=(const Decryption&) = delete;
    ~Decryption() {
        if (key_) BCryptDestroyKey(key_);
        if (provider_) BCryptCloseAlgorithmProvider(provider_, 0);
    }

    /// Everything up to the key. Each step needs the one before.
    bool MakeKey() noexcept {
        if (!BCRYPT_SUCCESS(BCryptOpenAlgorithmProvider(&provider_, BCRYPT_AES_ALGORITHM, nullptr, 0))) return false;
        if (!BCRYPT_SUCCESS(BCryptSetProperty(provider_, BCRYPT_CHAINING_MODE, Readable(BCRYPT_CHAIN_MODE_GCM),
                                              sizeof(BCRYPT_CHAIN_MODE_GCM), 0))) {
            return false;
        }
        ULONG size = 0;
        ULONG written = 0;
        if (!BCRYPT_SUCCESS(BCryptGetProperty(provider_, BCRYPT_OBJECT_LENGTH, reinterpret_cast<PUCHAR>(&size),
                                              sizeof(size), &written, 0))) {
            return false;
        }
        keyObject_.reset(new (std::nothrow) std::uint8_t[size]());
        if (!keyObject_) return false;
        return BCRYPT_SUCCESS(BCryptGenerateSymmetricKey(provider_, &key_, keyObject_.get(), size,
                                                         Readable(EmbeddedKey.data()),
                                                         static_cast<ULONG>(EmbeddedKey.size()), 0));
    }

    /// Deciphers a whole block in place. False if its tag does not fit.
    bool Run(std::uint8_t* block, ULONG bodySize) noexcept {
        BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO info;
        BCRYPT_INIT_AUTH_MODE_INFO(info);
        info.pbNonce = block;
        info.cbNonce = kNonceSize;
        info.pbTag = block + kNonceSize + bodySize;
        info.cbTag = kTagSize;
        std::uint8_t* const body = block + kNonceSize;
        ULONG written = 0;
        return BCRYPT_SUCCESS(BCryptDecrypt(key_, body, bodySize, &info, nullptr, 0, body, bodySize, &written, 0));
    }

private:
    BCRYPT_ALG_HANDLE provider_ = nullptr;
    std::unique_ptr<std::uint8_t[]> keyObject_;  // What the key lives in: it goes after the key.
    BCRYPT_KEY_HANDLE key_ = nullptr;
};

}  // namespace

HRESULT EmbeddedResource::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != __uuidof(IUnknown)) return E_NOINTERFACE;
    *object = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
}

ULONG EmbeddedResource::AddRef() {
    return references_.fetch_add(1, std::memory_order_relaxed) + 1;
}

ULONG EmbeddedResource::Release() {
    return references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
}

std::pair<const std::uint8_t*, std::uint64_t> EmbeddedResource::Data() {
    BOOL pending = FALSE;
    if (InitOnceBeginInitialize(&once_, 0, &pending, nullptr) && pending) {
        Decipher();
        InitOnceComplete(&once_, 0, nullptr);
    }
    return {data_, dataSize_};
}

void EmbeddedResource::Decipher() noexcept {
    if (!block_ || blockSize_ < kSmallestBlock) {
        Log("[Tamborel] EmbeddedResource: buffer too small to decrypt.\n");
        return;
    }
    const std::uint64_t bodySize = blockSize_ - kSmallestBlock;
    {
        Decryption decryption;
        if (decryption.MakeKey()) {
            decrypted_ = decryption.Run(block_, static_cast<ULONG>(bodySize));
            if (!decrypted_) {
                Log("[Tamborel] EmbeddedResource: integrity check failed. Asset may be tampered or key is "
                    "incorrect.\n");
            }
        }
    }
    if (!decrypted_) {
        Log("[Tamborel] EmbeddedResource: BCrypt error during decrypt.\n");
        return;
    }
    data_ = block_ + kNonceSize;
    dataSize_ = bodySize;
}

}  // namespace Tamborel
