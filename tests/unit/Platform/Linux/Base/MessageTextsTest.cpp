#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr DWORD fromSystem = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;

std::string TextOf(DWORD code) {
    char buffer[512] = {};
    const DWORD length = FormatMessageA(fromSystem, nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), buffer,
                                        sizeof buffer, nullptr);
    EXPECT_EQ(std::string(buffer).size(), length);
    return buffer;
}

TEST(MessageTexts, EndInALineBreak) {
    EXPECT_EQ(TextOf(static_cast<DWORD>(E_FAIL)), "Unspecified error\r\n");
    EXPECT_EQ(TextOf(ERROR_FILE_NOT_FOUND), "The system cannot find the file specified.\r\n");
}

TEST(MessageTexts, AnHresultOfASystemCodeHasTheCodesText) {
    EXPECT_EQ(TextOf(static_cast<DWORD>(E_ACCESSDENIED)), "Access is denied.\r\n");
    EXPECT_EQ(TextOf(static_cast<DWORD>(E_OUTOFMEMORY)),
              "Not enough memory resources are available to complete this operation.\r\n");
}

TEST(MessageTexts, ACodeWithoutATextGivesNothing) {
    EXPECT_EQ(TextOf(0x8BADF00D), "");
    EXPECT_EQ(GetLastError(), ERROR_MR_MID_NOT_FOUND);
}

TEST(MessageTexts, ABufferThatCannotHoldTheTextIsLeftAlone) {
    char buffer[20] = "as before";
    EXPECT_EQ(FormatMessageA(fromSystem, nullptr, static_cast<DWORD>(E_FAIL), 0, buffer, 19, nullptr), 0U);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_STREQ(buffer, "as before");
    EXPECT_EQ(FormatMessageA(fromSystem, nullptr, static_cast<DWORD>(E_FAIL), 0, buffer, 20, nullptr), 19U);
}

TEST(MessageTexts, OtherFlagsAreRefused) {
    char buffer[64];
    EXPECT_EQ(FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, 2, 0, buffer, sizeof buffer, nullptr), 0U);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

}  // namespace
