// What the screen's state does.

#include "SceneTest.h"

#include <thread>

namespace {

class Workflow : public SceneTest {
protected:
    /// Frames until the task at work has been taken in.
    void FramesUntil(const std::function<bool()>& done) {
        while (!done()) {
            Frame();
            std::this_thread::yield();
        }
    }
    void Discover(GameDiscovery::Result result) {
        actions_->FinishDiscovery(std::move(result));
        FramesUntil([&] { return !scene_->checking; });
    }
    void Start(GameLaunch::Result result) {
        actions_->FinishStart(std::move(result));
        FramesUntil([&] { return !scene_->launching; });
    }
    static std::shared_ptr<GameLaunch::Handle> Game() { return std::make_shared<GameLaunch::Handle>(); }
    void Run() {
        ShowReady();
        Click(kLaunch);
        Start({.Process = Game(), .Message = L"Quake II started with KVR2.dll.", .Folder = L"/games/quake2"});
    }
};

TEST_F(Workflow, AFirstStartWithoutSettingsSelectsNothingAndSearchesNothing) {
    Show();
    EXPECT_TRUE(Shows(L"No installation selected"));
    EXPECT_TRUE(Shows(L"Not selected"));
    EXPECT_TRUE(Shows(L"Select the folder containing quake2.exe."));
    EXPECT_TRUE(Shows(L"Find or browse for your game folder."));
    EXPECT_TRUE(Shows(L"Select a Quake II installation"));
    EXPECT_FALSE(ButtonOver(kLaunch)->enabled);
    EXPECT_FALSE(scene_->discoveryFuture.valid());
    EXPECT_TRUE(actions_->judged.empty());
    ASSERT_EQ(actions_->saved.size(), 1U);
    EXPECT_EQ(actions_->saved[0], LauncherSettings{});
}

TEST_F(Workflow, ARememberedFolderThatIsValidIsReady) {
    actions_->settings = {.Folder = L"/games/quake2", .Modern = false, .Fullscreen = false, .Mode = 7};
    actions_->validFolders = {L"/games/quake2"};
    Show();
    EXPECT_TRUE(Shows(L"Quake II · Classic installation"));
    EXPECT_TRUE(Shows(L"● Ready"));
    EXPECT_TRUE(Shows(L"/games/quake2"));
    EXPECT_TRUE(Shows(L"Quake II installation verified."));
    EXPECT_TRUE(Shows(L"Ready to launch"));
    EXPECT_TRUE(Shows(L"1152 × 864"));
    EXPECT_TRUE(ButtonNamed(L"Launch with KVR ↗")->enabled);
    EXPECT_EQ(actions_->LastSaved(), actions_->settings);
}

TEST_F(Workflow, ARememberedFolderThatIsNotValidStaysOnTheScreen) {
    actions_->settings.Folder = L"/gone";
    Show();
    EXPECT_TRUE(Shows(L"Invalid installation"));
    EXPECT_TRUE(Shows(L"Not ready"));
    EXPECT_TRUE(Shows(L"/gone"));
    EXPECT_FALSE(ButtonOver(kLaunch)->enabled);
}

TEST_F(Workflow, FindingShowsThatItSearchesAndTakesWhatIsFound) {
    Show();
    Click(kFind);
    EXPECT_TRUE(Shows(L"Checking…"));
    EXPECT_TRUE(Shows(L"Checking Steam libraries and common folders…"));
    EXPECT_FALSE(ButtonOver(kFind)->enabled);
    EXPECT_FALSE(ButtonOver(kBrowse)->enabled);
    EXPECT_FALSE(actions_->Discoveries(1)[0].browse);
    Discover({.Folder = L"/steam/quake2", .Message = L"Found.", .Cancelled = false, .SelectedFolder = {}});
    EXPECT_TRUE(Shows(L"● Ready"));
    EXPECT_TRUE(Shows(L"Found."));
    EXPECT_EQ(actions_->LastSaved().Folder, L"/steam/quake2");
}

TEST_F(Workflow, ASecondRequestDuringACheckIsIgnored) {
    Show();
    Click(kBrowse);
    scene_->SelectGame(false);
    EXPECT_TRUE(scene_->checkingBrowse);
    EXPECT_TRUE(Shows(L"Choose your Quake II folder…"));
    Discover({.Folder = {}, .Message = {}, .Cancelled = true, .SelectedFolder = {}});
    EXPECT_EQ(actions_->Discoveries(1).size(), 1U);
}

TEST_F(Workflow, CancellingThePickerKeepsAValidInstallation) {
    ShowReady();
    Click(kBrowse);
    EXPECT_EQ(actions_->Discoveries(1)[0].folder, L"/games/quake2");
    Discover({.Folder = {}, .Message = {}, .Cancelled = true, .SelectedFolder = {}});
    EXPECT_TRUE(scene_->installationValid);
    EXPECT_EQ(scene_->folder, L"/games/quake2");
    EXPECT_EQ(scene_->installationText, L"Quake II installation verified.");
}

TEST_F(Workflow, CancellingThePickerWithNothingSelectedSaysSo) {
    Show();
    Click(kBrowse);
    Discover({.Folder = {}, .Message = {}, .Cancelled = true, .SelectedFolder = {}});
    EXPECT_TRUE(Shows(L"Folder selection cancelled."));
    EXPECT_TRUE(Shows(L"No installation selected"));
}

TEST_F(Workflow, APickedFolderThatFailsValidationStaysOnTheScreenAndIsSaved) {
    ShowReady();
    Click(kBrowse);
    Discover({.Folder = {}, .Message = L"quake2.exe was not found.", .Cancelled = false, .SelectedFolder = L"/bad"});
    EXPECT_TRUE(Shows(L"Invalid installation"));
    EXPECT_TRUE(Shows(L"/bad"));
    EXPECT_TRUE(Shows(L"quake2.exe was not found."));
    EXPECT_EQ(actions_->LastSaved().Folder, L"/bad");
}

TEST_F(Workflow, ASearchWithoutResultForgetsTheFolder) {
    ShowReady();
    Click(kFind);
    Discover({.Folder = {}, .Message = L"Nothing.", .Cancelled = false, .SelectedFolder = {}});
    EXPECT_TRUE(Shows(L"No installation selected"));
}

TEST_F(Workflow, ARendererCardClickedDuringACheckTakesEffectAndIsSaved) {
    Show();
    Click(kFind);
    Click(kOriginalCard);
    EXPECT_FALSE(scene_->modernRenderer);
    EXPECT_FALSE(actions_->LastSaved().Modern);
    Discover({.Folder = {}, .Message = L"Nothing.", .Cancelled = false, .SelectedFolder = {}});
    EXPECT_FALSE(scene_->modernRenderer);
}

TEST_F(Workflow, LaunchingFreezesTheChoicesOfTheClick) {
    actions_->settings = {.Folder = L"/games/quake2", .Modern = false, .Fullscreen = false, .Mode = 2};
    actions_->validFolders = {L"/games/quake2"};
    Show();
    Click(kLaunch);
    EXPECT_TRUE(Shows(L"Installing the selected driver and starting Quake II…"));
    EXPECT_FALSE(ButtonOver(kLaunch)->enabled);
    EXPECT_FALSE(ButtonOver(kModernCard)->enabled);
    EXPECT_FALSE(ButtonOver(kResolution)->enabled);
    EXPECT_FALSE(ButtonOver(kFullscreen)->enabled);
    scene_->modernRenderer = true;
    const auto start = actions_->Starts(1)[0];
    EXPECT_EQ(start.folder, L"/games/quake2");
    EXPECT_FALSE(start.modern);
    EXPECT_FALSE(start.fullscreen);
    EXPECT_EQ(start.mode, 2U);
    Start({.Process = nullptr, .Message = L"It failed.", .Folder = {}});
    EXPECT_TRUE(Shows(L"It failed."));
    EXPECT_TRUE(ButtonOver(kLaunch)->enabled);
}

TEST_F(Workflow, ADoubleClickOnLaunchStartsOneGame) {
    ShowReady();
    Point(Tamborel::InputEventKind::PointerDown, kLaunch, 1);
    Point(Tamborel::InputEventKind::PointerUp, kLaunch, 0);
    Point(Tamborel::InputEventKind::PointerDown, kLaunch, 1);
    Point(Tamborel::InputEventKind::PointerUp, kLaunch, 0);
    Start({.Process = Game(), .Message = L"Started.", .Folder = {}});
    EXPECT_EQ(actions_->Starts(1).size(), 1U);
}

TEST_F(Workflow, ALaunchDuringACheckIsIgnored) {
    ShowReady();
    Click(kFind);
    scene_->Launch();
    EXPECT_FALSE(scene_->launching);
    EXPECT_FALSE(scene_->launchFuture.valid());
    Discover({.Folder = L"/games/quake2", .Message = L"Found.", .Cancelled = false, .SelectedFolder = {}});
}

TEST_F(Workflow, ARunningGameDisablesTheScreen) {
    Run();
    EXPECT_TRUE(Shows(L"Quake II is running"));
    EXPECT_TRUE(Shows(L"Quake II started with KVR2.dll."));
    ASSERT_NE(ButtonNamed(L"Game running"), nullptr);
    for (const Tamborel::Point place :
         {kFind, kBrowse, kModernCard, kOriginalCard, kResolution, kFullscreen, kLaunch}) {
        EXPECT_FALSE(ButtonOver(place)->enabled);
    }
}

TEST_F(Workflow, AGameThatEndsWith0SaysClosed) {
    Run();
    actions_->exitCode = 0;
    Frame();
    EXPECT_TRUE(Shows(L"Quake II closed."));
    EXPECT_EQ(scene_->gameHandle, nullptr);
    EXPECT_TRUE(ButtonNamed(L"Launch with KVR2 ↗")->enabled);
}

TEST_F(Workflow, AGameThatEndsWithAnotherCodeShowsItUnsigned) {
    Run();
    actions_->exitCode = 3221225477;
    Frame();
    EXPECT_TRUE(Shows(L"Quake II exited with error 3221225477. See baseq2/qconsole.log in the game folder."));
}

TEST_F(Workflow, AClickBesideTheOpenListOnlyClosesItAndStillSaves) {
    ShowReady();
    Click(kResolution);
    ASSERT_TRUE(scene_->modeMenuOpen);
    const LauncherSettings before = actions_->LastSaved();
    const std::size_t saves = actions_->saved.size();
    Click({700, 100});
    EXPECT_FALSE(scene_->modeMenuOpen);
    EXPECT_EQ(actions_->saved.size(), saves + 1);
    EXPECT_EQ(actions_->LastSaved(), before);
}

TEST_F(Workflow, AnEntryOfTheListChoosesItAndCloses) {
    ShowReady();
    Click(kResolution);
    Click({200, 256 + 33 * 9 + 16});
    EXPECT_EQ(scene_->displayMode, 9);
    EXPECT_FALSE(scene_->modeMenuOpen);
    EXPECT_TRUE(Shows(L"1600 × 1200"));
    EXPECT_EQ(actions_->LastSaved().Mode, 9);
}

TEST_F(Workflow, TheSwitchTogglesFullscreen) {
    ShowReady();
    EXPECT_TRUE(Shows(L"Use the entire screen."));
    Click(kFullscreen);
    EXPECT_FALSE(scene_->fullscreen);
    EXPECT_TRUE(Shows(L"Play in a window on your desktop."));
    EXPECT_FALSE(actions_->LastSaved().Fullscreen);
}

TEST_F(Workflow, AFrameInWhichNothingChangedSavesNothingAndKeepsItsNodes) {
    ShowReady();
    const auto nodes = scene_->children;
    const std::size_t saves = actions_->saved.size();
    Frame();
    EXPECT_EQ(scene_->children, nodes);
    EXPECT_EQ(actions_->saved.size(), saves);
}

TEST_F(Workflow, TheScreenCanGoWhileATaskIsAtWork) {
    Show();
    Click(kFind);
    actions_->Discoveries(1);
    scene_.reset();
    actions_->FinishDiscovery({});
}

}  // namespace
