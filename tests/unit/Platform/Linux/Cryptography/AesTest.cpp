#include <bcrypt.h>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<UCHAR>;

Bytes FromHex(const std::string& digits) {
    Bytes bytes;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        bytes.push_back(static_cast<UCHAR>(std::stoul(digits.substr(at, 2), nullptr, 16)));
    }
    return bytes;
}

PUCHAR Writable(const void* bytes) {
    return static_cast<PUCHAR>(const_cast<void*>(bytes));
}

NTSTATUS SetMode(BCRYPT_ALG_HANDLE provider) {
    return BCryptSetProperty(provider, BCRYPT_CHAINING_MODE, Writable(BCRYPT_CHAIN_MODE_GCM),
                             sizeof(BCRYPT_CHAIN_MODE_GCM), 0);
}

class Aes : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(BCryptOpenAlgorithmProvider(&provider, BCRYPT_AES_ALGORITHM, nullptr, 0), STATUS_SUCCESS);
        ASSERT_EQ(SetMode(provider), STATUS_SUCCESS);
    }
    void TearDown() override {
        if (key) {
            EXPECT_EQ(BCryptDestroyKey(key), STATUS_SUCCESS);
        }
        EXPECT_EQ(BCryptCloseAlgorithmProvider(provider, 0), STATUS_SUCCESS);
    }

    ULONG ObjectLength() const {
        ULONG length = 0;
        ULONG written = 0;
        EXPECT_EQ(BCryptGetProperty(provider, BCRYPT_OBJECT_LENGTH, reinterpret_cast<PUCHAR>(&length), sizeof(length),
                                    &written, 0),
                  STATUS_SUCCESS);
        EXPECT_EQ(written, sizeof(length));
        return length;
    }

    NTSTATUS MakeKey(std::size_t offset = 0) {
        object.assign(offset + ObjectLength(), 0);
        return BCryptGenerateSymmetricKey(provider, &key, object.data() + offset, ObjectLength(), secret.data(),
                                          static_cast<ULONG>(secret.size()), 0);
    }

    NTSTATUS Decrypt(Bytes& text) {
        BCRYPT_INIT_AUTH_MODE_INFO(info);
        info.pbNonce = nonce.data();
        info.cbNonce = static_cast<ULONG>(nonce.size());
        info.pbTag = tag.data();
        info.cbTag = static_cast<ULONG>(tag.size());
        ULONG written = 0;
        const auto size = static_cast<ULONG>(text.size());
        const NTSTATUS status =
            BCryptDecrypt(key, text.data(), size, &info, nullptr, 0, text.data(), size, &written, 0);
        if (status == STATUS_SUCCESS) {
            EXPECT_EQ(written, size);
        }
        return status;
    }

    BCRYPT_ALG_HANDLE provider = nullptr;
    BCRYPT_KEY_HANDLE key = nullptr;
    BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO info{};
    Bytes object;
    Bytes secret = Bytes(32);
    Bytes nonce = Bytes(12);
    Bytes tag = FromHex("d0d1c8a799996bf0265b98b5d48ab919");
};

// The vectors are cases 13 to 15 of McGrew and Viega, "The Galois/Counter Mode of Operation", appendix B.

TEST_F(Aes, DeciphersABlockOfZeros) {
    ASSERT_EQ(MakeKey(), STATUS_SUCCESS);
    Bytes text = FromHex("cea7403d4d606b6e074ec5d3baf39d18");
    EXPECT_EQ(Decrypt(text), STATUS_SUCCESS);
    EXPECT_EQ(text, Bytes(16));
}

TEST_F(Aes, ChecksAnEmptyText) {
    ASSERT_EQ(MakeKey(), STATUS_SUCCESS);
    tag = FromHex("530f8afbc74536b9a963b4f1c4cb738b");
    Bytes nothing;
    EXPECT_EQ(Decrypt(nothing), STATUS_SUCCESS);
    tag[3] ^= 1;
    EXPECT_EQ(Decrypt(nothing), STATUS_AUTH_TAG_MISMATCH);
}

TEST_F(Aes, DeciphersSeveralTextsWithOneKey) {
    secret = FromHex("feffe9928665731c6d6a8f9467308308feffe9928665731c6d6a8f9467308308");
    nonce = FromHex("cafebabefacedbaddecaf888");
    tag = FromHex("b094dac5d93471bdec1a502270e3cc6c");
    const Bytes cipher = FromHex(
        "522dc1f099567d07f47f37a32a84427d643a8cdcbfe5c0c97598a2bd2555d1aa"
        "8cb08e48590dbb3da7b08b1056828838c5f61e6393ba7a0abcc9f662898015ad");
    const Bytes plain = FromHex(
        "d9313225f88406e5a55909c5aff5269a86a7a9531534f7da2e4c303d8a318a72"
        "1c3c0c95956809532fcf0e2449a6b525b16aedf5aa0de657ba637b391aafd255");
    ASSERT_EQ(MakeKey(), STATUS_SUCCESS);
    for (int time = 0; time < 2; ++time) {
        Bytes text = cipher;
        EXPECT_EQ(Decrypt(text), STATUS_SUCCESS);
        EXPECT_EQ(text, plain);
    }
}

TEST_F(Aes, TagThatDoesNotFitIsAMismatch) {
    ASSERT_EQ(MakeKey(), STATUS_SUCCESS);
    tag[15] ^= 0x80;
    Bytes text = FromHex("cea7403d4d606b6e074ec5d3baf39d18");
    EXPECT_EQ(Decrypt(text), STATUS_AUTH_TAG_MISMATCH);
}

TEST_F(Aes, KeyObjectMayLieAnywhere) {
    for (std::size_t offset = 0; offset < 16; ++offset) {
        ASSERT_EQ(MakeKey(offset), STATUS_SUCCESS) << offset;
        Bytes text = FromHex("cea7403d4d606b6e074ec5d3baf39d18");
        EXPECT_EQ(Decrypt(text), STATUS_SUCCESS) << offset;
        ASSERT_EQ(BCryptDestroyKey(key), STATUS_SUCCESS);
        key = nullptr;
    }
}

TEST_F(Aes, KeyObjectTooSmallMakesNoKey) {
    Bytes small(8);
    EXPECT_EQ(BCryptGenerateSymmetricKey(provider, &key, small.data(), 8, secret.data(), 32, 0),
              STATUS_BUFFER_TOO_SMALL);
    EXPECT_EQ(key, nullptr);
}

TEST_F(Aes, SecretOfAnotherSizeMakesNoKey) {
    secret.resize(16);
    EXPECT_EQ(MakeKey(), STATUS_INVALID_PARAMETER);
}

TEST_F(Aes, ProviderWithoutAModeMakesNoKey) {
    BCRYPT_ALG_HANDLE other = nullptr;
    ASSERT_EQ(BCryptOpenAlgorithmProvider(&other, BCRYPT_AES_ALGORITHM, nullptr, 0), STATUS_SUCCESS);
    Bytes memory(ObjectLength());
    BCRYPT_KEY_HANDLE none = nullptr;
    EXPECT_EQ(BCryptGenerateSymmetricKey(other, &none, memory.data(), static_cast<ULONG>(memory.size()), secret.data(),
                                         32, 0),
              STATUS_NOT_SUPPORTED);
    EXPECT_EQ(BCryptCloseAlgorithmProvider(other, 0), STATUS_SUCCESS);
}

TEST_F(Aes, AnotherAlgorithmOrImplementationIsNotFound) {
    BCRYPT_ALG_HANDLE none = &none;
    EXPECT_EQ(BCryptOpenAlgorithmProvider(&none, L"DES", nullptr, 0), STATUS_NOT_FOUND);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(BCryptOpenAlgorithmProvider(&none, BCRYPT_AES_ALGORITHM, L"Somebody", 0), STATUS_NOT_FOUND);
}

TEST_F(Aes, AnotherModeOrPropertyIsNotSupported) {
    EXPECT_EQ(
        BCryptSetProperty(provider, BCRYPT_CHAINING_MODE, Writable(L"ChainingModeCBC"), sizeof(L"ChainingModeCBC"), 0),
        STATUS_NOT_SUPPORTED);
    ULONG value = 0;
    ULONG written = 0;
    EXPECT_EQ(BCryptGetProperty(provider, L"BlockLength", reinterpret_cast<PUCHAR>(&value), 4, &written, 0),
              STATUS_NOT_SUPPORTED);
    EXPECT_EQ(BCryptGetProperty(provider, BCRYPT_OBJECT_LENGTH, reinterpret_cast<PUCHAR>(&value), 3, &written, 0),
              STATUS_BUFFER_TOO_SMALL);
}

TEST_F(Aes, NonceOrTagOfAnotherSizeIsInvalid) {
    ASSERT_EQ(MakeKey(), STATUS_SUCCESS);
    Bytes text(16);
    nonce.resize(11);
    EXPECT_EQ(Decrypt(text), STATUS_INVALID_PARAMETER);
    nonce.resize(12);
    tag.resize(12);
    EXPECT_EQ(Decrypt(text), STATUS_INVALID_PARAMETER);
}

TEST_F(Aes, HandlesOfAnotherKindAreInvalid) {
    ASSERT_EQ(MakeKey(), STATUS_SUCCESS);
    EXPECT_EQ(BCryptDestroyKey(provider), STATUS_INVALID_HANDLE);
    EXPECT_EQ(BCryptDestroyKey(nullptr), STATUS_INVALID_HANDLE);
    EXPECT_EQ(BCryptCloseAlgorithmProvider(key, 0), STATUS_INVALID_HANDLE);
    EXPECT_EQ(SetMode(key), STATUS_INVALID_HANDLE);
}

}  // namespace
