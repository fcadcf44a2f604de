// Cryptography: one symmetric algorithm. Implemented in Platform/Linux/Cryptography.
#pragma once

#include <minwindef.h>
#include <ntstatus.h>

using UCHAR = std::uint8_t;
using PUCHAR = UCHAR*;

using BCRYPT_HANDLE = void*;
using BCRYPT_ALG_HANDLE = BCRYPT_HANDLE;
using BCRYPT_KEY_HANDLE = BCRYPT_HANDLE;

#define BCRYPT_SUCCESS(status) (static_cast<NTSTATUS>(status) >= 0)

#define BCRYPT_AES_ALGORITHM L"AES"
#define BCRYPT_CHAINING_MODE L"ChainingMode"
#define BCRYPT_CHAIN_MODE_GCM L"ChainingModeGCM"
#define BCRYPT_OBJECT_LENGTH L"ObjectLength"

constexpr ULONG BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO_VERSION = 1;

/// Nonce, tag and the like of an authenticated cipher. Sizes are in bytes.
struct BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO {
    ULONG cbSize;
    ULONG dwInfoVersion;
    PUCHAR pbNonce;
    ULONG cbNonce;
    PUCHAR pbAuthData;
    ULONG cbAuthData;
    PUCHAR pbTag;
    ULONG cbTag;
    PUCHAR pbMacContext;
    ULONG cbMacContext;
    ULONG cbAAD;
    ULONGLONG cbData;
    ULONG dwFlags;
};

#define BCRYPT_INIT_AUTH_MODE_INFO(info)                           \
    (info) = {};                                                   \
    (info).cbSize = sizeof(BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO); \
    (info).dwInfoVersion = BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO_VERSION

// All of them may be called on any thread; one handle is for one thread at a time. Flags must be 0.

/// `algorithm` must be "AES" and `implementation` null: anything else is STATUS_NOT_FOUND. BCryptCloseAlgorithmProvider
/// ends what it makes.
NTSTATUS BCryptOpenAlgorithmProvider(BCRYPT_ALG_HANDLE* provider, LPCWSTR algorithm, LPCWSTR implementation,
                                     ULONG flags) noexcept;
NTSTATUS BCryptCloseAlgorithmProvider(BCRYPT_ALG_HANDLE provider, ULONG flags) noexcept;

/// "ChainingMode" of a provider can be set to "ChainingModeGCM", and no key can be made before. `size` counts bytes,
/// the terminator among them.
NTSTATUS BCryptSetProperty(BCRYPT_HANDLE object, LPCWSTR property, PUCHAR value, ULONG size, ULONG flags) noexcept;

/// "ObjectLength" of a provider, a ULONG, is what a key needs in bytes. `result` gets the size of the value.
NTSTATUS BCryptGetProperty(BCRYPT_HANDLE object, LPCWSTR property, PUCHAR value, ULONG size, ULONG* result,
                           ULONG flags) noexcept;

/// Makes a key in the caller's memory, which must stay where it is until BCryptDestroyKey. The secret is copied; it
/// has 32 bytes.
NTSTATUS BCryptGenerateSymmetricKey(BCRYPT_ALG_HANDLE provider, BCRYPT_KEY_HANDLE* key, PUCHAR object, ULONG objectSize,
                                    PUCHAR secret, ULONG secretSize, ULONG flags) noexcept;
NTSTATUS BCryptDestroyKey(BCRYPT_KEY_HANDLE key) noexcept;

/// Deciphers and checks in one go. `paddingInfo` is a BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO with a nonce of 12 and a
/// tag of 16 bytes and no additional data; there is no other initialisation vector. `output` may be `input`. A tag that
/// does not fit is STATUS_AUTH_TAG_MISMATCH, and what `output` then holds is not told.
NTSTATUS BCryptDecrypt(BCRYPT_KEY_HANDLE key, PUCHAR input, ULONG inputSize, void* paddingInfo, PUCHAR iv, ULONG ivSize,
                       PUCHAR output, ULONG outputSize, ULONG* result, ULONG flags) noexcept;
