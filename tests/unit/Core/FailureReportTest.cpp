// Failure reports, with system texts that the test supplies.
#include "Core/Check.h"

#include "tests/fakes/LogCapture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

std::string systemText;  // Empty: the system knows none.
DWORD askedFlags = 0;
DWORD askedCode = 0;
DWORD askedLanguage = 0;
DWORD askedSize = 0;

}  // namespace

DWORD FormatMessageA(DWORD flags, LPCVOID, DWORD code, DWORD language, LPSTR buffer, DWORD size,
                     std::va_list*) noexcept {
    askedFlags = flags;
    askedCode = code;
    askedLanguage = language;
    askedSize = size;
    std::memcpy(buffer, systemText.c_str(), systemText.size() + 1);
    return static_cast<DWORD>(systemText.size());
}

namespace {

std::string ReportOf(const std::string& text, const char* expression = "f(a, b)") {
    systemText = text;
    Fakes::LogCapture capture;
    Tamborel::ReportFailure(E_FAIL, expression, "Folder/File.cpp", 12);
    return capture.Text();
}

TEST(FailureReport, TellsCodeTextExpressionAndPlace) {
    EXPECT_EQ(ReportOf("Unspecified error"),
              "[Tamborel] FAILED 0x80004005 (Unspecified error)\n  expr : f(a, b)\n  at   : Folder/File.cpp:12\n");
}

TEST(FailureReport, AsksForTheSystemsTextInTheDefaultLanguage) {
    ReportOf("x");
    EXPECT_EQ(askedFlags, 0x1200U);
    EXPECT_EQ(askedCode, 0x80004005U);
    EXPECT_EQ(askedLanguage, 0x400U);
    EXPECT_EQ(askedSize, 512U);
}

TEST(FailureReport, ACodeWithoutASystemTextIsAnUnknownHresult) {
    EXPECT_EQ(ReportOf(""),
              "[Tamborel] FAILED 0x80004005 (Unknown HRESULT)\n  expr : f(a, b)\n  at   : Folder/File.cpp:12\n");
}

TEST(FailureReport, ATrailingLineBreakOfTheSystemTextIsDropped) {
    EXPECT_EQ(Fakes::ReportsIn(ReportOf("Access is denied.\r\n")).at(0).text, "Access is denied.");
    EXPECT_EQ(Fakes::ReportsIn(ReportOf("Access is denied.\n\r\n\n")).at(0).text, "Access is denied.");
}

TEST(FailureReport, LineBreaksWithinTheSystemTextStay) {
    EXPECT_EQ(ReportOf("one\r\ntwo \r\n"),
              "[Tamborel] FAILED 0x80004005 (one\r\ntwo )\n  expr : f(a, b)\n  at   : Folder/File.cpp:12\n");
}

TEST(FailureReport, ASystemTextOfLineEndsOnlyBecomesEmpty) {
    EXPECT_EQ(Fakes::ReportsIn(ReportOf("\r\n\r\n")).at(0).text, "");
}

TEST(FailureReport, IsCutTo1023Characters) {
    const std::string expression(2000, 'x');
    const std::string report = ReportOf("t", expression.c_str());
    EXPECT_EQ(report.size(), 1023U);
    const std::string start = "[Tamborel] FAILED 0x80004005 (t)\n  expr : ";
    EXPECT_EQ(report, start + std::string(1023 - start.size(), 'x'));
}

HRESULT Answer(HRESULT result, int& calls) {
    ++calls;
    return result;
}

HRESULT CheckOf(HRESULT result, int& calls, bool& wentOn) {
    // clang-format off
    TAMBOREL_CHECK(Answer(
        result,   calls));
    // clang-format on
    wentOn = true;
    return S_FALSE;
}

TEST(Check, AFailureIsReportedWithTheExpressionAsWrittenAndReturned) {
    Fakes::LogCapture capture;
    int calls = 0;
    bool wentOn = false;
    systemText = "text";
    EXPECT_EQ(CheckOf(E_OUTOFMEMORY, calls, wentOn), E_OUTOFMEMORY);
    EXPECT_FALSE(wentOn);
    EXPECT_EQ(calls, 1);
    const auto reports = Fakes::ReportsIn(capture.Text());
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].code, "0x8007000E");
    EXPECT_EQ(reports[0].expression, "Answer( result, calls)");
    EXPECT_NE(reports[0].place.find("FailureReportTest.cpp:"), std::string::npos);
}

TEST(Check, EverySuccessCodeGoesOnWithoutAReport) {
    Fakes::LogCapture capture;
    int calls = 0;
    for (const HRESULT result : {S_OK, S_FALSE}) {
        bool wentOn = false;
        EXPECT_EQ(CheckOf(result, calls, wentOn), S_FALSE);
        EXPECT_TRUE(wentOn);
    }
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(capture.Text(), "");
}

}  // namespace
