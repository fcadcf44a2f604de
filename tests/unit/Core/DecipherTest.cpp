// Deciphering with the system's own cryptography: blocks whole, short and tampered with, and those built into programs.
#include "Core/EmbeddedAssets.h"
#include "Core/EmbeddedFonts.h"
#include "Core/EmbeddedKey.h"
#include "Core/Log.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

// The generated source of one block, so that the block itself is in reach. It is compiled here and nowhere else.
#include "Verse.cpp"

namespace Tamborel::Assets {
extern constinit EmbeddedResource Empty;
}

namespace {

using Tamborel::EmbeddedResource;
using Block = std::vector<std::uint8_t>;

constexpr std::string_view kVerse = "What is within the walls is for those who find the way in.";
constexpr const char* kTooSmall = "[Tamborel] EmbeddedResource: buffer too small to decrypt.\n";
constexpr const char* kIntegrity =
    "[Tamborel] EmbeddedResource: integrity check failed. Asset may be tampered or key is incorrect.\n";
constexpr const char* kError = "[Tamborel] EmbeddedResource: BCrypt error during decrypt.\n";

std::mutex logMutex;
std::string logged;  // guarded by logMutex

std::string TakeLog() {
    const std::lock_guard lock(logMutex);
    return std::exchange(logged, {});
}

std::string_view TextOf(const std::pair<const std::uint8_t*, std::uint64_t>& data) {
    return {reinterpret_cast<const char*>(data.first), static_cast<std::size_t>(data.second)};
}

class Decipher : public testing::Test {
protected:
    Decipher() { TakeLog(); }

    /// The verse's block, which nothing has deciphered yet.
    const Block block{std::begin(Tamborel::Assets::block), std::end(Tamborel::Assets::block)};

    static void ExpectRefused(Block tampered, const std::string& what) {
        EmbeddedResource resource(tampered.data(), tampered.size());
        const auto [data, size] = resource.Data();
        EXPECT_EQ(data, nullptr) << what;
        EXPECT_EQ(size, 0U) << what;
        EXPECT_EQ(TakeLog(), std::string(kIntegrity) + kError) << what;
    }

    void ExpectEachBitCounts(std::size_t from, std::size_t to) {
        for (std::size_t bit = 8 * from; bit < 8 * to; ++bit) {
            Block tampered = block;
            tampered[bit / 8] = static_cast<std::uint8_t>(tampered[bit / 8] ^ 1U << bit % 8);
            ExpectRefused(tampered, "bit " + std::to_string(bit));
        }
    }
};

TEST_F(Decipher, WholeBlockGivesItsBodyInThePlaceOfTheCiphertext) {
    Block whole = block;
    ASSERT_EQ(whole.size(), 12 + kVerse.size() + 16);
    EmbeddedResource resource(whole.data(), whole.size());
    const auto data = resource.Data();
    EXPECT_EQ(TextOf(data), kVerse);
    EXPECT_EQ(data.first, whole.data() + 12);
    EXPECT_EQ(resource.Data(), data);
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(Decipher, BlockOfExactly28BytesGivesAnEmptyBodyAndNoFailure) {
    const auto [data, size] = Tamborel::Assets::Empty.Data();
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(Decipher, BlockOf27BytesSaysThatTheBufferIsTooSmall) {
    std::array<std::uint8_t, 27> bytes{};
    EmbeddedResource resource(bytes.data(), bytes.size());
    EXPECT_EQ(resource.Data(), (std::pair<const std::uint8_t*, std::uint64_t>(nullptr, 0)));
    EXPECT_EQ(TakeLog(), kTooSmall);
}

TEST_F(Decipher, BlockThatIsNullSaysThatTheBufferIsTooSmall) {
    EmbeddedResource resource(nullptr, 100);
    EXPECT_EQ(resource.Data().first, nullptr);
    EXPECT_EQ(TakeLog(), kTooSmall);
}

TEST_F(Decipher, BlockOf28ForeignBytesFailsItsCheck) {
    ExpectRefused(Block(28), "28 zero bytes");
}

TEST_F(Decipher, EveryBitOfTheNonceCounts) {
    ExpectEachBitCounts(0, 12);
}

TEST_F(Decipher, EveryBitOfTheBodyCounts) {
    ExpectEachBitCounts(12, block.size() - 16);
}

TEST_F(Decipher, EveryBitOfTheTagCounts) {
    ExpectEachBitCounts(block.size() - 16, block.size());
}

TEST_F(Decipher, BlockThatLostItsLastByteFailsItsCheck) {
    Block cut = block;
    cut.pop_back();
    ExpectRefused(cut, "cut");
}

TEST_F(Decipher, FailureIsNotTriedAgain) {
    Block tampered = block;
    tampered.back() ^= 1;
    EmbeddedResource resource(tampered.data(), tampered.size());
    EXPECT_EQ(resource.Data().first, nullptr);
    TakeLog();
    tampered = block;  // It would fit now.
    EXPECT_EQ(resource.Data().first, nullptr);
    EXPECT_EQ(TakeLog(), "");
}

// A second decipherment would find plaintext where the ciphertext was, and fail.
TEST_F(Decipher, ThreadsThatAskAtOnceAllGetWhatOneDeciphered) {
    constexpr int kThreads = 2;
    for (int round = 0; round < 100; ++round) {
        Block whole = block;
        EmbeddedResource resource(whole.data(), whole.size());
        std::array<std::string, kThreads> seen;
        std::atomic<int> late{kThreads};
        std::vector<std::thread> threads;
        for (std::string& text : seen) {
            threads.emplace_back([&] {
                // By turning, not by waiting, they are sure to ask at the same moment.
                --late;
                while (late > 0) std::this_thread::yield();
                text = TextOf(resource.Data());
            });
        }
        for (std::thread& thread : threads) thread.join();
        for (const std::string& text : seen) ASSERT_EQ(text, kVerse);
    }
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(Decipher, BuiltInDrawingsAreSvg) {
    namespace Assets = Tamborel::Assets;
    for (EmbeddedResource* const drawing : {&Assets::AppIcon, &Assets::ReservedGlyphFirst, &Assets::ReservedGlyphSecond,
                                            &Assets::MinimizeGlyph, &Assets::MaximizeGlyph, &Assets::CloseGlyph}) {
        const auto data = drawing->Data();
        EXPECT_TRUE(TextOf(data).starts_with("<svg xmlns=\"http://www.w3.org/2000/svg\""));
        EXPECT_TRUE(TextOf(data).ends_with("</svg>\n"));
    }
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(Decipher, BuiltInFontsAreThreeTrueTypeFiles) {
    using std::string_view_literals::operator""sv;
    const auto fonts = Tamborel::EmbeddedFonts();
    ASSERT_EQ(fonts.size(), 3U);
    for (EmbeddedResource* const font : fonts) EXPECT_TRUE(TextOf(font->Data()).starts_with("\0\1\0\0"sv));
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(Decipher, KeyIsNotAllZero) {
    EXPECT_NE(Tamborel::EmbeddedKey, (std::array<std::uint8_t, 32>{}));
}

}  // namespace

// In the place of the toolkit's log, whose file is then not linked.
void Tamborel::Log(const char* text) noexcept {
    const std::lock_guard lock(logMutex);
    logged += text;
}
