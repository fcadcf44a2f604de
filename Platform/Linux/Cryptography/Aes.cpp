// The functions of bcrypt.h, which keep the rules of their callers' handles and buffers; Cipher does the work.
#include "Platform/Linux/Cryptography/Cipher.h"

#include <bcrypt.h>

#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace {

using Platform::Cipher;

// The first word of what a handle points to, so that a handle of another kind is noticed.
enum class Kind : std::uint32_t { Provider = 0x50524F56, Key = 0x4B455920 };

struct Provider {
    Kind kind = Kind::Provider;
    bool galoisCounter = false;
};

/// Lives in the caller's key object.
struct Key {
    Kind kind = Kind::Key;
    Cipher cipher;
};

// Wherever the caller's memory begins, a key finds an aligned place in it.
constexpr ULONG kKeyObjectSize = sizeof(Key) + alignof(Key) - 1;

template <class T>
T* Find(BCRYPT_HANDLE handle, Kind kind) noexcept {
    auto* const object = static_cast<T*>(handle);
    return object && object->kind == kind ? object : nullptr;
}

Provider* FindProvider(BCRYPT_HANDLE handle) noexcept {
    return Find<Provider>(handle, Kind::Provider);
}

}  // namespace

NTSTATUS BCryptOpenAlgorithmProvider(BCRYPT_ALG_HANDLE* provider, LPCWSTR algorithm, LPCWSTR implementation,
                                     ULONG flags) noexcept {
    if (!provider || !algorithm || flags != 0) return STATUS_INVALID_PARAMETER;
    *provider = nullptr;
    if (implementation || std::wstring_view(algorithm) != BCRYPT_AES_ALGORITHM) return STATUS_NOT_FOUND;
    *provider = new (std::nothrow) Provider;
    return *provider ? STATUS_SUCCESS : STATUS_NO_MEMORY;
}

NTSTATUS BCryptCloseAlgorithmProvider(BCRYPT_ALG_HANDLE provider, ULONG flags) noexcept {
    if (flags != 0) return STATUS_INVALID_PARAMETER;
    Provider* const object = FindProvider(provider);
    if (!object) return STATUS_INVALID_HANDLE;
    delete object;
    return STATUS_SUCCESS;
}

NTSTATUS BCryptSetProperty(BCRYPT_HANDLE object, LPCWSTR property, PUCHAR value, ULONG size, ULONG flags) noexcept {
    Provider* const provider = FindProvider(object);
    if (!provider) return STATUS_INVALID_HANDLE;
    if (!property || !value || flags != 0) return STATUS_INVALID_PARAMETER;
    if (std::wstring_view(property) != BCRYPT_CHAINING_MODE) return STATUS_NOT_SUPPORTED;
    if (size != sizeof(BCRYPT_CHAIN_MODE_GCM) || std::memcmp(value, BCRYPT_CHAIN_MODE_GCM, size) != 0) {
        return STATUS_NOT_SUPPORTED;
    }
    provider->galoisCounter = true;
    return STATUS_SUCCESS;
}

NTSTATUS BCryptGetProperty(BCRYPT_HANDLE object, LPCWSTR property, PUCHAR value, ULONG size, ULONG* result,
                           ULONG flags) noexcept {
    if (!FindProvider(object)) return STATUS_INVALID_HANDLE;
    if (!property || !value || !result || flags != 0) return STATUS_INVALID_PARAMETER;
    if (std::wstring_view(property) != BCRYPT_OBJECT_LENGTH) return STATUS_NOT_SUPPORTED;
    *result = sizeof(ULONG);
    if (size < sizeof(ULONG)) return STATUS_BUFFER_TOO_SMALL;
    std::memcpy(value, &kKeyObjectSize, sizeof(ULONG));
    return STATUS_SUCCESS;
}

NTSTATUS BCryptGenerateSymmetricKey(BCRYPT_ALG_HANDLE provider, BCRYPT_KEY_HANDLE* key, PUCHAR object, ULONG objectSize,
                                    PUCHAR secret, ULONG secretSize, ULONG flags) noexcept {
    const Provider* const algorithm = FindProvider(provider);
    if (!algorithm) return STATUS_INVALID_HANDLE;
    if (!key || !object || !secret || secretSize != Cipher::KeySize || flags != 0) return STATUS_INVALID_PARAMETER;
    *key = nullptr;
    if (!algorithm->galoisCounter) return STATUS_NOT_SUPPORTED;

    void* place = object;
    std::size_t space = objectSize;
    if (!std::align(alignof(Key), sizeof(Key), place, space)) return STATUS_BUFFER_TOO_SMALL;
    auto* const made = new (place) Key{Kind::Key, Cipher(std::span<const UCHAR, Cipher::KeySize>(secret, secretSize))};
    if (!made->cipher.IsValid()) {
        made->~Key();
        return STATUS_NO_MEMORY;
    }
    *key = made;
    return STATUS_SUCCESS;
}

NTSTATUS BCryptDestroyKey(BCRYPT_KEY_HANDLE key) noexcept {
    auto* const object = Find<Key>(key, Kind::Key);
    if (!object) return STATUS_INVALID_HANDLE;
    object->~Key();
    return STATUS_SUCCESS;
}

NTSTATUS BCryptDecrypt(BCRYPT_KEY_HANDLE key, PUCHAR input, ULONG inputSize, void* paddingInfo, PUCHAR iv, ULONG ivSize,
                       PUCHAR output, ULONG outputSize, ULONG* result, ULONG flags) noexcept {
    auto* const object = Find<Key>(key, Kind::Key);
    if (!object) return STATUS_INVALID_HANDLE;
    const auto* const info = static_cast<const BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO*>(paddingInfo);
    if (!info || !result || iv || ivSize != 0 || flags != 0) return STATUS_INVALID_PARAMETER;
    if ((!input || !output) && inputSize != 0) return STATUS_INVALID_PARAMETER;
    if (info->cbSize != sizeof(*info) || info->dwInfoVersion != BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO_VERSION ||
        !info->pbNonce || info->cbNonce != Cipher::NonceSize || !info->pbTag || info->cbTag != Cipher::TagSize ||
        info->cbAuthData != 0 || info->dwFlags != 0) {
        return STATUS_INVALID_PARAMETER;
    }
    *result = inputSize;
    if (outputSize < inputSize) return STATUS_BUFFER_TOO_SMALL;
    return object->cipher.Decrypt(std::span<const UCHAR, Cipher::NonceSize>(info->pbNonce, info->cbNonce),
                                  std::span<UCHAR, Cipher::TagSize>(info->pbTag, info->cbTag), input, output,
                                  inputSize);
}
