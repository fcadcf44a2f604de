#include "tools/launch_console/Console.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

namespace {

struct Answer {
    int status;
    std::string output;
    std::string errors;
};

Answer Console(const std::vector<std::wstring>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = LaunchConsole::RunConsole(arguments, out, err);
    return {status, out.str(), err.str()};
}

std::string Field(const Answer& answer, const char* name) {
    return nlohmann::json::parse(answer.output).at(name).get<std::string>();
}

class ConsoleCalls : public testing::Test {
protected:
    std::wstring Text(const char* name) const { return Platform::TextFromPath(folder_ / name); }

    TemporaryFolder folder_;
    ScopedEnvironment state_{L"LOCALAPPDATA", Platform::TextFromPath(folder_ / "state")};
};

}  // namespace

TEST(ConsoleUsage, WrongUsageHasStatus2AndNoOutput) {
    const std::vector<std::vector<std::wstring>> wrong = {
        {},
        {L""},
        {L"Validate", L"folder"},
        {L"validate"},
        {L"find", L"folder"},
        {L"candidates", L"--all"},
        {L"values", L"file"},
        {L"values", L"file", L"a\"b"},
        {L"values", L"file", L"a\\b"},
        {L"start", L"folder", L"--driver", L"KVR3"},
        {L"start", L"folder", L"--mode", L"high"},
        {L"settings", L"--driver", L""},
        {L"settings", L"--windowed", L"--fullscreen"},
    };
    for (const std::vector<std::wstring>& arguments : wrong) {
        const Answer answer = Console(arguments);
        EXPECT_EQ(answer.status, 2);
        EXPECT_EQ(answer.output, "");
        EXPECT_NE(answer.errors.find("usage: launch_console"), std::string::npos) << answer.errors;
    }
}

TEST(ConsoleUsage, HelpIsAPositiveResult) {
    const Answer answer = Console({L"--help"});
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.errors, "");
    EXPECT_EQ(answer.output.find("usage: launch_console validate DIR\n"), 0U);
    EXPECT_NE(answer.output.find("U+FFFD"), std::string::npos);
}

TEST(ConsoleUsage, OutputThatFailsIsANegativeResult) {
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(LaunchConsole::RunConsole({L"settings"}, out, err), 1);
    EXPECT_NE(err.str(), "");
}

TEST_F(ConsoleCalls, ValidateOfAnInstallation) {
    MakeInstallation(folder_ / "game");
    const Answer answer = Console({L"validate", Text("game")});
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(Field(answer, "message"), "Quake II installation verified.");
    EXPECT_EQ(answer.output.find("{\"folder\":\""), 0U);
    EXPECT_NE(answer.output.find(",\"message\":\"Quake II installation verified.\",\"cancelled\":false,"
                                 "\"selectedFolder\":\"\"}\n"),
              std::string::npos);
}

TEST_F(ConsoleCalls, ValidateOfAnEmptyNameIsANegativeResult) {
    const Answer answer = Console({L"validate", L""});
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.output,
              "{\"folder\":\"\",\"message\":\"Select a Quake II installation folder.\",\"cancelled\":false,"
              "\"selectedFolder\":\"\"}\n");
}

TEST_F(ConsoleCalls, FindTakesAValidPreferredFolder) {
    MakeInstallation(folder_ / "game");
    const Answer answer = Console({L"find", L"--preferred", Text("game")});
    EXPECT_EQ(answer.status, 0);
    EXPECT_NE(Field(answer, "folder"), "");
}

TEST_F(ConsoleCalls, PeAndPakSayWhetherAFileIsValid) {
    MakeInstallation(folder_ / "game");
    const Answer program = Console({L"pe", Text("game/quake2.exe")});
    EXPECT_EQ(program.status, 0);
    EXPECT_EQ(program.output, "{\"valid\":true}\n");
    const Answer pak = Console({L"pak", Text("game/quake2.exe")});
    EXPECT_EQ(pak.status, 1);
    EXPECT_EQ(pak.output, "{\"valid\":false}\n");
}

TEST_F(ConsoleCalls, ValuesOfAFileAndOfAMissingOne) {
    WriteBytes(folder_ / "file", "\"path\" \"one\" { \"path\" \"\" }");
    EXPECT_EQ(Console({L"values", Text("file"), L"path"}).output, "{\"values\":[\"one\",\"\"]}\n");
    const Answer missing = Console({L"values", Text("missing"), L"path"});
    EXPECT_EQ(missing.status, 0);
    EXPECT_EQ(missing.output, "{\"values\":[]}\n");
}

TEST_F(ConsoleCalls, InstallCopiesAndTellsWhyNot) {
    WriteBytes(folder_ / "source", "driver");
    const Answer installed = Console({L"install", Text("source"), Text("target")});
    EXPECT_EQ(installed.status, 0);
    EXPECT_EQ(installed.output, "{\"installed\":true}\n");
    EXPECT_EQ(ReadBytes(folder_ / "target"), "driver");

    const Answer failed = Console({L"install", Text("missing"), Text("target")});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.output, "{\"installed\":false,\"error\":\"Cannot open driver\"}\n");
}

TEST_F(ConsoleCalls, RunningIsNegativeForAFileThatDoesNotRun) {
    const Answer answer = Console({L"running", Text("quake2.exe")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.output, "{\"running\":false}\n");
}

TEST_F(ConsoleCalls, RuntimePathLiesInTheStateFolder) {
    const Answer answer = Console({L"runtime-path", Text("game")});
    EXPECT_EQ(answer.status, 0);
    EXPECT_NE(Field(answer, "runtimePath").find("Quake2-"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_directory(folder_ / "state" / "VelorinthLauncher"));
}

TEST_F(ConsoleCalls, RuntimePathWithoutAStateFolderIsToldOnStandardError) {
    WriteBytes(folder_ / "file", "");
    const ScopedEnvironment state(L"LOCALAPPDATA", Text("file"));
    const Answer answer = Console({L"runtime-path", Text("game")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.output, "");
    EXPECT_NE(answer.errors, "");
}

TEST_F(ConsoleCalls, StartOfAnInvalidFolderIsANegativeResultOfOneLine) {
    const Answer answer = Console({L"start", Text("nothing")});
    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.output,
              "{\"process\":false,\"message\":\"Quake II was not found in this folder (quake2.exe is missing).\","
              "\"folder\":\"\"}\n");
}

TEST_F(ConsoleCalls, SettingsAreOnlyLoadedWithoutAnOption) {
    const Answer answer = Console({L"settings"});
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.output, "{\"folder\":\"\",\"modern\":true,\"fullscreen\":true,\"mode\":4}\n");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "state" / "VelorinthLauncher" / "launcher.ini"));
}

TEST_F(ConsoleCalls, SettingsChangeWhatIsGivenAndKeepTheRest) {
    Console({L"settings", L"--folder", L"Quake", L"--driver", L"KVR", L"--windowed"});
    EXPECT_EQ(Console({L"settings", L"--mode", L"-3"}).output,
              "{\"folder\":\"Quake\",\"modern\":false,\"fullscreen\":false,\"mode\":-3}\n");
    EXPECT_EQ(Console({L"settings", L"--fullscreen", L"--driver", L"KVR2"}).output,
              "{\"folder\":\"Quake\",\"modern\":true,\"fullscreen\":true,\"mode\":0}\n");
}
