// Text of any content and length, from any thread.

#include "Layouts.h"

#include <chrono>
#include <random>
#include <thread>

namespace {

using namespace Layouts;

constexpr unsigned seed = 20240611;

// Letters with what is rare and what is wrong: controls, marks, both directions, emoji and their joiners, surrogates,
// codes that are no characters.
wchar_t RandomCharacter(std::mt19937& random) {
    const auto within = [&](wchar_t first, wchar_t last) {
        return static_cast<wchar_t>(std::uniform_int_distribution<int>(first, last)(random));
    };
    switch (within(0, 11)) {
        case 0:
            return within(0, 0x1F);
        case 1:
            return within(0x300, 0x36F);
        case 2:
            return within(0x590, 0x6FF);
        case 3:
            return within(0x900, 0xDFF);
        case 4:
            return within(0x2000, 0x206F);
        case 5:
            return within(0x4E00, 0x9FFF);
        case 6:
            return within(0xD800, 0xDFFF);
        case 7:
            return within(0xFE00, 0xFFFF);
        case 8:
            return within(0x1F300, 0x1FAFF);
        case 9:
            return within(0, 0x10FFFF);
        case 10:
            return within(0x110000, 0x7FFFFFFF);
        default:
            return within(0x20, 0x7E);
    }
}

std::wstring RandomText(std::mt19937& random, std::size_t length) {
    std::wstring text(length, L' ');
    for (wchar_t& character : text) character = RandomCharacter(random);
    return text;
}

void ExpectWhole(IDWriteTextLayout* layout, std::size_t length) {
    std::size_t sum = 0;
    for (const DWRITE_LINE_METRICS& line : Lines(layout)) sum += line.length;
    EXPECT_EQ(sum, length);
}

TEST(AnyText, TenThousandRandomStringsAreSet) {
    std::mt19937 random(seed);
    for (int i = 0; i < 10000; ++i) {
        const std::wstring text = RandomText(random, std::uniform_int_distribution<std::size_t>(0, 40)(random));
        const auto wrapping = static_cast<DWRITE_WORD_WRAPPING>(i % 5);
        const ComPtr<IDWriteTextLayout> layout = Layout(text, {.width = 80, .wrapping = wrapping});
        ASSERT_NE(layout.Get(), nullptr);
        ExpectWhole(layout.Get(), text.size());
        Renderer renderer;
        ASSERT_EQ(layout->Draw(nullptr, &renderer, 0, 0), S_OK);
        for (const DrawnRun& run : renderer.runs) ASSERT_LE(run.textPosition + run.textLength, text.size());
    }
}

void ExpectSetInBoundedTime(const std::wstring& text, DWRITE_WORD_WRAPPING wrapping) {
    const auto start = std::chrono::steady_clock::now();
    const ComPtr<IDWriteTextLayout> layout = Layout(text, {.width = 300, .wrapping = wrapping});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    ExpectWhole(layout.Get(), text.size());
}

TEST(AnyText, AMebibyteInOneWordIsSetInBoundedTime) {
    const std::wstring letters(1U << 20U, L'm');
    ExpectSetInBoundedTime(letters, DWRITE_WORD_WRAPPING_WRAP);
    ExpectSetInBoundedTime(letters, DWRITE_WORD_WRAPPING_NO_WRAP);
}

TEST(AnyText, AMebibyteOfWordsIsSetInBoundedTime) {
    std::wstring words(1U << 20U, L'm');
    for (std::size_t i = 7; i < words.size(); i += 8) words[i] = L' ';
    ExpectSetInBoundedTime(words, DWRITE_WORD_WRAPPING_WRAP);
    ExpectSetInBoundedTime(words, DWRITE_WORD_WRAPPING_CHARACTER);
}

TEST(AnyText, ALongLineOfRandomTextIsSetInBoundedTime) {
    std::mt19937 random(seed);
    const std::wstring text = RandomText(random, 1U << 17U);
    const auto start = std::chrono::steady_clock::now();
    const ComPtr<IDWriteTextLayout> layout = Layout(text, {.width = 300});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    ExpectWhole(layout.Get(), text.size());
}

TEST(AnyText, SeveralThreadsSetTheSameTextAlike) {
    const std::vector<std::wstring> texts{L"Play", L"\u05e9\u05dc\u05d5\u05dd", L"\u6f22\u5b57", L"Select a folder"};
    std::vector<float> expected;
    for (const std::wstring& text : texts) expected.push_back(Metrics(text).width);
    std::vector<std::thread> threads;
    std::vector<std::vector<float>> widths(4);
    for (std::vector<float>& own : widths) {
        threads.emplace_back([&own, &texts] {
            for (int i = 0; i < 100; ++i) {
                for (const std::wstring& text : texts) own.push_back(Metrics(text).width);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const std::vector<float>& own : widths) {
        for (std::size_t i = 0; i < own.size(); ++i) EXPECT_EQ(own[i], expected[i % texts.size()]);
    }
}

}  // namespace
