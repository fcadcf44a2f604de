// The desktops' dialog programs, played by shell scripts.

#include "Platform/Linux/Dialog/ChooserProgram.h"

#include "DialogFixture.h"
#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Window/Registry/WindowRegistry.h"
#include "tests/support/GameFiles.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <fstream>
#include <thread>

namespace {

using Platform::ChooserArguments;
using Platform::ChooserProgram;
using Platform::FindChooserProgram;
using testing::ElementsAre;
using Kind = ChooserProgram::Kind;

constexpr const char* kNoteArguments = "printf '%s\\n' \"$@\" >arguments\n";

class ChooserProgramTest : public DialogFixture {
protected:
    // A dialog of a portal that can't open at a folder, with a folder to open at.
    std::future<DialogEnd> ShowAtFolder(HWND owner = GetDesktopWindow()) {
        if (!portal_) StartPortal({.version = 3});
        return Show(owner, programs_.Path());
    }
    // The same of a portal that can't pick folders at all: what the program comes to is the dialog's end.
    std::future<DialogEnd> ShowByProgramAlone() {
        if (!portal_) StartPortal({.version = 2});
        return Show(GetDesktopWindow(), programs_.Path());
    }

    ScopedEnvironment anyDisplay_{L"DISPLAY", L":77"};
};

TEST(ChooserArgumentsTest, ZenityGetsTitleFolderAndOwner) {
    EXPECT_THAT(ChooserArguments(Kind::Zenity, {0x2E0000F, "A title", "Take it", "/games/Quake II"}),
                ElementsAre("--file-selection", "--directory", "--modal", "--title=A title",
                            "--filename=/games/Quake II/", "--attach=48234511"));
}

TEST(ChooserArgumentsTest, KDialogGetsTitleFolderAndOwner) {
    EXPECT_THAT(ChooserArguments(Kind::KDialog, {0x2E0000F, "A title", "Take it", "/games/Quake II"}),
                ElementsAre("--title", "A title", "--attach", "48234511", "--getexistingdirectory", "/games/Quake II"));
}

TEST(ChooserArgumentsTest, WhatIsNotKnownIsLeftOut) {
    EXPECT_THAT(ChooserArguments(Kind::Zenity, {std::nullopt, "T", "", ""}),
                ElementsAre("--file-selection", "--directory", "--modal", "--title=T"));
    EXPECT_THAT(ChooserArguments(Kind::KDialog, {std::nullopt, "T", "", ""}),
                ElementsAre("--title", "T", "--getexistingdirectory"));
}

TEST(ChooserArgumentsTest, TheRootFolderKeepsItsOneSlash) {
    EXPECT_THAT(ChooserArguments(Kind::Zenity, {std::nullopt, "T", "", "/"}), testing::Contains("--filename=/"));
}

TEST_F(ChooserProgramTest, NoneIsFoundOnAnEmptyPath) {
    EXPECT_FALSE(FindChooserProgram());
}

TEST_F(ChooserProgramTest, ZenityComesFirstExceptOnKde) {
    InstallProgram("kdialog", "");
    EXPECT_EQ(FindChooserProgram()->kind, Kind::KDialog);
    InstallProgram("zenity", "");
    EXPECT_EQ(FindChooserProgram()->kind, Kind::Zenity);
    EXPECT_EQ(FindChooserProgram()->path, (programs_ / "zenity").native());
    const ScopedEnvironment kde(L"XDG_CURRENT_DESKTOP", L"ubuntu:KDE");
    EXPECT_EQ(FindChooserProgram()->kind, Kind::KDialog);
}

TEST_F(ChooserProgramTest, AFolderOrAFileThatIsNotExecutableIsNoProgram) {
    std::filesystem::create_directory(programs_ / "zenity");
    InstallProgram("kdialog", "");
    std::filesystem::permissions(programs_ / "kdialog", std::filesystem::perms::owner_read);
    EXPECT_FALSE(FindChooserProgram());
}

TEST_F(ChooserProgramTest, RelativePartsOfThePathAreNotSearched) {
    InstallProgram("zenity", "");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(programs_.Path());
    const ScopedEnvironment path(L"PATH", L".::");
    EXPECT_FALSE(FindChooserProgram());
    std::filesystem::current_path(before);
}

TEST_F(ChooserProgramTest, NoneIsFoundWithoutADisplay) {
    InstallProgram("zenity", "");
    const ScopedEnvironment none(L"DISPLAY", std::nullopt);
    EXPECT_FALSE(FindChooserProgram());
    const ScopedEnvironment wayland(L"WAYLAND_DISPLAY", L"wayland-0");
    EXPECT_TRUE(FindChooserProgram());
}

TEST_F(ChooserProgramTest, Version3WithAStartFolderIsReplacedByZenity) {
    InstallProgram("zenity", std::string(kNoteArguments) + "echo '/games/Spiele für Jürgen'\n");
    const DialogEnd end = End(ShowAtFolder());
    EXPECT_EQ(end.shown, S_OK);
    EXPECT_EQ(end.path, L"/games/Spiele für Jürgen");
    EXPECT_EQ(Written("arguments"),
              "--file-selection\n--directory\n--modal\n--title=Wähle einen Ordner\n"
              "--filename=" +
                  programs_.Path().native() + "/\n");
    EXPECT_FALSE(portal_->WasCalled());
}

TEST_F(ChooserProgramTest, Version3WithAStartFolderIsReplacedByKDialog) {
    InstallProgram("kdialog", std::string(kNoteArguments) + "echo /games\n");
    EXPECT_EQ(End(ShowAtFolder()).path, L"/games");
    EXPECT_EQ(Written("arguments"),
              "--title\nWähle einen Ordner\n--getexistingdirectory\n" + programs_.Path().native() + "\n");
}

TEST_F(ChooserProgramTest, Version3WithoutAStartFolderStaysWithThePortal) {
    InstallProgram("zenity", "echo /wrong\n");
    FakePortal& portal = StartPortal({.version = 3});
    auto dialog = Show();
    portal.WaitForCall();
    portal.Respond({0, {"file:///right"}});
    EXPECT_EQ(End(std::move(dialog)).path, L"/right");
}

TEST_F(ChooserProgramTest, Version2IsReplacedEvenWithoutAStartFolder) {
    InstallProgram("zenity", "echo /picked\n");
    StartPortal({.version = 2});
    EXPECT_EQ(End(Show()).path, L"/picked");
}

TEST_F(ChooserProgramTest, AnyOtherExitStatusIsAFailure) {
    InstallProgram("zenity", "echo /games\nexit 255\n");
    EXPECT_EQ(End(ShowByProgramAlone()).shown, E_FAIL);
}

TEST_F(ChooserProgramTest, ASuccessWithoutAnAbsolutePathIsAFailure) {
    InstallProgram("zenity", "echo games\n");
    EXPECT_EQ(End(ShowByProgramAlone()).shown, E_FAIL);
    InstallProgram("zenity", "exit 0\n");
    EXPECT_EQ(End(ShowByProgramAlone()).shown, E_FAIL);
}

TEST_F(ChooserProgramTest, AProgramThatDiesIsAFailure) {
    InstallProgram("zenity", "kill -9 $$\n");
    EXPECT_EQ(End(ShowByProgramAlone()).shown, E_FAIL);
}

TEST_F(ChooserProgramTest, AProgramThatCantBeStartedIsAFailure) {
    InstallProgram("zenity", "");
    WriteBytes(programs_ / "zenity", "#!/nowhere/interpreter\n");
    EXPECT_EQ(End(ShowByProgramAlone()).shown, E_FAIL);
}

TEST_F(ChooserProgramTest, EndlessOutputIsAFailureAndNoHang) {
    InstallProgram("zenity", "exec /usr/bin/yes /games\n");
    EXPECT_EQ(End(ShowByProgramAlone()).shown, E_FAIL);
}

// So that a player who looks for the game is shown a dialog, if in another folder.
TEST_F(ChooserProgramTest, AProgramThatFailsIsReplacedByThePortalWhereThatPicksFolders) {
    InstallProgram("zenity", "echo 'unknown option' >&2\nexit 255\n");
    FakePortal& portal = StartPortal({.version = 3});
    auto dialog = ShowAtFolder();
    portal.WaitForCall();
    portal.Respond({0, {"file:///right"}});
    EXPECT_EQ(End(std::move(dialog)).path, L"/right");
}

TEST_F(ChooserProgramTest, ExitStatus1IsACancelAndNotFollowedByThePortal) {
    InstallProgram("zenity", "exit 1\n");
    EXPECT_EQ(End(ShowAtFolder()).shown, kDialogCancelled);
    EXPECT_FALSE(portal_->WasCalled());
}

TEST_F(ChooserProgramTest, ANameThatEndsInANewlineIsKept) {
    InstallProgram("zenity", "printf '/games/odd\\n\\n'\n");
    EXPECT_EQ(End(ShowAtFolder()).path, L"/games/odd\n");
}

TEST_F(ChooserProgramTest, APathWithoutANewlineIsKeptWhole) {
    InstallProgram("zenity", "printf /games\n");
    EXPECT_EQ(End(ShowAtFolder()).path, L"/games");
}

TEST_F(ChooserProgramTest, TheOwnersEndKillsTheProgramAndWhatItStarted) {
    // A wrapper script with the real program as its child.
    InstallProgram("zenity", "/bin/sleep 1000 &\necho $$ >own\necho $! >child\n/bin/mv child ready\nwait\n");
    const HWND window = Platform::RegisterNativeWindow(7);
    const ScopedEnvironment noServer(L"DISPLAY", L"unix:/nowhere:0");
    auto dialog = ShowAtFolder(window);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (Written("ready").empty() && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
    const std::string own = Written("own");
    const std::string child = Written("ready");
    ASSERT_FALSE(child.empty());
    Platform::UnregisterNativeWindow(window);
    EXPECT_EQ(End(std::move(dialog)).shown, kDialogCancelled);
    EXPECT_NE(::kill(std::stoi(own), 0), 0);  // Reaped: not even a zombie.
    EXPECT_EQ(errno, ESRCH);
    // The grandchild goes to init, which takes its time to bury it.
    const auto gone = [&] {
        std::ifstream status("/proc/" + std::to_string(std::stoi(child)) + "/stat");
        std::string text;
        return !std::getline(status, text) || text.find(") Z") != std::string::npos;
    };
    while (!gone() && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
    EXPECT_TRUE(gone());
}

}  // namespace
