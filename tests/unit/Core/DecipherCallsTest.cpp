// The order in which a block is deciphered, and what each failing step leads to, with a cryptography that writes down
// its calls.
#include "Core/EmbeddedKey.h"
#include "Core/EmbeddedResource.h"
#include "tests/fakes/LogCapture.h"

#include <bcrypt.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <latch>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr ULONG kKeyObjectSize = 654;
const std::string kIntegrity =
    "[Tamborel] EmbeddedResource: integrity check failed. Asset may be tampered or key is incorrect.\n";
const std::string kError = "[Tamborel] EmbeddedResource: BCrypt error during decrypt.\n";

struct Calls {
    std::mutex mutex;
    std::vector<std::string> names;  // guarded by mutex
    std::string failing;             // the call that fails
    bool keyObjectWasZero = false;
    bool keyWasOurs = false;
    BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO info{};
    PUCHAR input = nullptr;
    PUCHAR output = nullptr;
    ULONG inputSize = 0;
    ULONG outputSize = 0;
    int provider = 0;  // its address is the handle
    int key = 0;
} calls;

NTSTATUS Record(const std::string& name) {
    const std::lock_guard lock(calls.mutex);
    calls.names.push_back(name);
    if (name != calls.failing) return STATUS_SUCCESS;
    return name == "BCryptDecrypt" ? STATUS_AUTH_TAG_MISMATCH : STATUS_NOT_SUPPORTED;
}

const std::array<std::string, 5> kSteps{"BCryptOpenAlgorithmProvider", "BCryptSetProperty", "BCryptGetProperty",
                                        "BCryptGenerateSymmetricKey", "BCryptDecrypt"};

class DecipherCalls : public testing::Test {
protected:
    DecipherCalls() {
        calls.names.clear();
        calls.failing.clear();
    }

    Fakes::LogCapture log;
    std::array<std::uint8_t, 40> block{};  // a body of 12 bytes
    Tamborel::EmbeddedResource resource{block.data(), block.size()};
};

TEST_F(DecipherCalls, ComeInOrderAndTheHandlesAreClosed) {
    const auto [data, size] = resource.Data();
    EXPECT_THAT(calls.names, ElementsAre("BCryptOpenAlgorithmProvider", "BCryptSetProperty", "BCryptGetProperty",
                                         "BCryptGenerateSymmetricKey", "BCryptDecrypt", "BCryptDestroyKey",
                                         "BCryptCloseAlgorithmProvider"));
    EXPECT_EQ(data, block.data() + 12);
    EXPECT_EQ(size, 12U);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(DecipherCalls, HandOverTheKeyAndAKeyObjectOfZeros) {
    resource.Data();
    EXPECT_TRUE(calls.keyWasOurs);
    EXPECT_TRUE(calls.keyObjectWasZero);
}

TEST_F(DecipherCalls, DecryptInPlaceWithNonceAndTagOfTheBlockAndNothingElse) {
    resource.Data();
    EXPECT_EQ(calls.input, block.data() + 12);
    EXPECT_EQ(calls.output, calls.input);
    EXPECT_EQ(calls.inputSize, 12U);
    EXPECT_EQ(calls.outputSize, 12U);
    const auto& info = calls.info;
    EXPECT_EQ(info.cbSize, 88U);
    EXPECT_EQ(info.dwInfoVersion, 1U);
    EXPECT_EQ(info.pbNonce, block.data());
    EXPECT_EQ(info.cbNonce, 12U);
    EXPECT_EQ(info.pbTag, block.data() + 24);
    EXPECT_EQ(info.cbTag, 16U);
    EXPECT_EQ(info.pbAuthData, nullptr);
    EXPECT_EQ(info.cbAuthData, 0U);
    EXPECT_EQ(info.pbMacContext, nullptr);
    EXPECT_EQ(info.cbMacContext, 0U);
    EXPECT_EQ(info.cbAAD, 0U);
    EXPECT_EQ(info.cbData, 0U);
    EXPECT_EQ(info.dwFlags, 0U);
}

TEST_F(DecipherCalls, TwoThreadsAtOnceDecipherOnce) {
    std::latch start(2);
    const auto ask = [&] {
        start.arrive_and_wait();
        EXPECT_EQ(resource.Data().second, 12U);
    };
    std::thread first(ask);
    std::thread second(ask);
    first.join();
    second.join();
    EXPECT_EQ(std::ranges::count(calls.names, "BCryptDecrypt"), 1);
}

TEST_F(DecipherCalls, BlockThatIsTooSmallMakesNone) {
    Tamborel::EmbeddedResource small(block.data(), 27);
    EXPECT_EQ(small.Data().first, nullptr);
    EXPECT_THAT(calls.names, ElementsAre());
}

class FailingStep : public DecipherCalls, public testing::WithParamInterface<std::size_t> {};

TEST_P(FailingStep, EndsTheChainClosesWhatExistsAndIsLogged) {
    const std::size_t step = GetParam();
    calls.failing = kSteps[step];
    EXPECT_EQ(resource.Data(), (std::pair<const std::uint8_t*, std::uint64_t>(nullptr, 0)));
    std::vector<std::string> expected(kSteps.begin(), kSteps.begin() + static_cast<std::ptrdiff_t>(step) + 1);
    if (step == 4) expected.emplace_back("BCryptDestroyKey");
    if (step > 0) expected.emplace_back("BCryptCloseAlgorithmProvider");
    EXPECT_THAT(calls.names, ElementsAreArray(expected));
    EXPECT_EQ(log.Text(), step == 4 ? kIntegrity + kError : kError);

    calls.names.clear();
    calls.failing.clear();
    EXPECT_EQ(resource.Data().first, nullptr) << "there is no second attempt";
    EXPECT_THAT(calls.names, ElementsAre());
}

INSTANTIATE_TEST_SUITE_P(InTurn, FailingStep, testing::Range(std::size_t{0}, std::size_t{5}),
                         [](const auto& info) { return kSteps[info.param]; });

}  // namespace

// The system's functions, in whose place these stand: nothing links Platform/Linux/Cryptography here.

NTSTATUS BCryptOpenAlgorithmProvider(BCRYPT_ALG_HANDLE* provider, LPCWSTR algorithm, LPCWSTR implementation,
                                     ULONG flags) noexcept {
    EXPECT_STREQ(algorithm, L"AES");
    EXPECT_EQ(implementation, nullptr);
    EXPECT_EQ(flags, 0U);
    const NTSTATUS status = Record("BCryptOpenAlgorithmProvider");
    if (BCRYPT_SUCCESS(status)) *provider = &calls.provider;
    return status;
}

NTSTATUS BCryptSetProperty(BCRYPT_HANDLE object, LPCWSTR property, PUCHAR value, ULONG size, ULONG flags) noexcept {
    EXPECT_EQ(object, &calls.provider);
    EXPECT_STREQ(property, L"ChainingMode");
    EXPECT_STREQ(reinterpret_cast<const wchar_t*>(value), L"ChainingModeGCM");
    EXPECT_EQ(size, 16 * sizeof(wchar_t));
    EXPECT_EQ(flags, 0U);
    return Record("BCryptSetProperty");
}

NTSTATUS BCryptGetProperty(BCRYPT_HANDLE object, LPCWSTR property, PUCHAR value, ULONG size, ULONG* result,
                           ULONG flags) noexcept {
    EXPECT_EQ(object, &calls.provider);
    EXPECT_STREQ(property, L"ObjectLength");
    EXPECT_EQ(size, 4U);
    EXPECT_EQ(flags, 0U);
    *reinterpret_cast<ULONG*>(value) = kKeyObjectSize;
    *result = 4;
    return Record("BCryptGetProperty");
}

NTSTATUS BCryptGenerateSymmetricKey(BCRYPT_ALG_HANDLE provider, BCRYPT_KEY_HANDLE* key, PUCHAR object, ULONG objectSize,
                                    PUCHAR secret, ULONG secretSize, ULONG flags) noexcept {
    EXPECT_EQ(provider, &calls.provider);
    EXPECT_EQ(objectSize, kKeyObjectSize);
    EXPECT_EQ(flags, 0U);
    calls.keyObjectWasZero = std::all_of(object, object + objectSize, [](UCHAR byte) { return byte == 0; });
    calls.keyWasOurs = secretSize == 32 && std::equal(secret, secret + 32, Tamborel::EmbeddedKey.begin());
    const NTSTATUS status = Record("BCryptGenerateSymmetricKey");
    if (BCRYPT_SUCCESS(status)) *key = &calls.key;
    return status;
}

NTSTATUS BCryptDecrypt(BCRYPT_KEY_HANDLE key, PUCHAR input, ULONG inputSize, void* paddingInfo, PUCHAR iv, ULONG ivSize,
                       PUCHAR output, ULONG outputSize, ULONG* result, ULONG flags) noexcept {
    EXPECT_EQ(key, &calls.key);
    EXPECT_EQ(iv, nullptr);
    EXPECT_EQ(ivSize, 0U);
    EXPECT_EQ(flags, 0U);
    calls.info = *static_cast<BCRYPT_AUTHENTICATED_CIPHER_MODE_INFO*>(paddingInfo);
    calls.input = input;
    calls.inputSize = inputSize;
    calls.output = output;
    calls.outputSize = outputSize;
    *result = inputSize;
    return Record("BCryptDecrypt");
}

NTSTATUS BCryptDestroyKey(BCRYPT_KEY_HANDLE key) noexcept {
    EXPECT_EQ(key, &calls.key);
    return Record("BCryptDestroyKey");
}

NTSTATUS BCryptCloseAlgorithmProvider(BCRYPT_ALG_HANDLE provider, ULONG flags) noexcept {
    EXPECT_EQ(provider, &calls.provider);
    EXPECT_EQ(flags, 0U);
    return Record("BCryptCloseAlgorithmProvider");
}
