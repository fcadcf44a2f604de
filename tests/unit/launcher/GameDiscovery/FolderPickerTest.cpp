#include "FakeFolderDialog.h"
#include "launcher/GameDiscovery/FolderPicker.h"
#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <filesystem>
#include <functional>
#include <string>
#include <system_error>
#include <thread>

namespace {

using GameDiscovery::BrowseForGame;
using GameDiscovery::Result;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr const wchar_t* kNotOpened = L"The Windows folder picker could not be opened.";
constexpr HRESULT kDismissed = static_cast<HRESULT>(0x800704C7);

class FolderPickerTest : public testing::Test {
protected:
    FolderPickerTest() {
        MakeInstallation(valid_);
        std::filesystem::create_directory(empty_);
        system_.dialog.pick = Platform::TextFromPath(valid_);
    }

    Result Browse(const std::filesystem::path& folder = {}) { return BrowseForGame(owner_, folder, system_); }
    void Fail(const char* call, HRESULT result = E_FAIL) { system_.log.results[call] = result; }
    const std::vector<std::string>& Calls() const { return system_.log.calls; }

    // The picker's own failure: nothing but the sentence, all objects let go of, the apartment left.
    void ExpectNotOpened(const Result& result) {
        EXPECT_EQ(result.Message, kNotOpened);
        EXPECT_EQ(result.Folder, L"");
        EXPECT_EQ(result.SelectedFolder, L"");
        EXPECT_FALSE(result.Cancelled);
        EXPECT_EQ(system_.log.objects, 0);
        ASSERT_FALSE(Calls().empty());
        EXPECT_EQ(Calls().back(), "CoUninitialize");
    }

    TemporaryFolder temporary_;
    const std::filesystem::path valid_ = temporary_ / "Quake II";
    const std::filesystem::path empty_ = temporary_ / "empty";
    int window_ = 0;
    const HWND owner_ = reinterpret_cast<HWND>(&window_);
    FakeFolderDialogSystem system_;
};

TEST_F(FolderPickerTest, CallsTheDialogInTheToldOrder) {
    Browse(valid_);
    EXPECT_THAT(Calls(), ElementsAre("CoInitializeEx", "CoCreateInstance", "SetOptions", "SetTitle", "SetOkButtonLabel",
                                     "SHCreateItemFromParsingName", "SetFolder", "~Item", "IsWindow", "Show",
                                     "GetResult", "GetDisplayName", "~Item", "~Dialog", "CoUninitialize"));
}

TEST_F(FolderPickerTest, AsksForTheToldApartmentOptionsTitleLabelOwnerAndFolder) {
    Browse(valid_);
    EXPECT_EQ(system_.apartmentModel, 0x6U);
    EXPECT_EQ(system_.dialog.options, 0x868U);
    EXPECT_EQ(system_.dialog.title, L"Select the classic Quake II folder containing quake2.exe");
    EXPECT_EQ(system_.dialog.label, L"Select game folder");
    EXPECT_EQ(system_.dialog.owner, owner_);
    EXPECT_EQ(system_.parsedPath, Platform::TextFromPath(valid_));
    EXPECT_EQ(system_.dialog.startFolder, Platform::TextFromPath(valid_));
}

TEST_F(FolderPickerTest, AnEmptyFolderOpensTheDialogAtThePlatformsOwnChoice) {
    const Result result = Browse();
    EXPECT_THAT(Calls(), Not(Contains("SHCreateItemFromParsingName")));
    EXPECT_THAT(Calls(), Not(Contains("SetFolder")));
    EXPECT_THAT(Calls(), Contains("Show"));
    EXPECT_EQ(result.Message, L"Quake II installation verified.");
}

TEST_F(FolderPickerTest, PickingAValidInstallationGivesItsFolderAndTheSelection) {
    const Result result = Browse();
    EXPECT_EQ(result.Message, L"Quake II installation verified.");
    EXPECT_EQ(result.Folder, Platform::TextFromPath(valid_));
    EXPECT_EQ(result.SelectedFolder, Platform::TextFromPath(valid_));
    EXPECT_FALSE(result.Cancelled);
}

TEST_F(FolderPickerTest, PickingAFolderWithoutQuake2ExeKeepsTheSelectionOnly) {
    system_.dialog.pick = Platform::TextFromPath(empty_);
    const Result result = Browse(valid_);
    EXPECT_EQ(result.Message, L"Quake II was not found in this folder (quake2.exe is missing).");
    EXPECT_EQ(result.Folder, L"");
    EXPECT_EQ(result.SelectedFolder, Platform::TextFromPath(empty_));
    EXPECT_FALSE(result.Cancelled);
}

TEST_F(FolderPickerTest, TheSelectionIsThePathExactlyAsPickedWhereTheFolderIsNormalised) {
    system_.dialog.pick = Platform::TextFromPath(empty_ / ".." / "Quake II");
    const Result result = Browse();
    EXPECT_EQ(result.Folder, Platform::TextFromPath(valid_));
    EXPECT_EQ(result.SelectedFolder, system_.dialog.pick);
}

TEST_F(FolderPickerTest, AWindowThatVanishedBeforeShowGivesACancelledResultWithNoDialog) {
    Fail("IsWindow");
    const Result result = Browse(valid_);
    EXPECT_TRUE(result.Cancelled);
    EXPECT_EQ(result.Message, L"");
    EXPECT_THAT(Calls(), Not(Contains("Show")));
    EXPECT_EQ(Calls().back(), "CoUninitialize");
    EXPECT_EQ(system_.log.objects, 0);
}

TEST_F(FolderPickerTest, ADismissedDialogGivesACancelWithoutWords) {
    Fail("Show", kDismissed);
    const Result result = Browse(valid_);
    EXPECT_TRUE(result.Cancelled);
    EXPECT_EQ(result.Message, L"");
    EXPECT_EQ(result.Folder, L"");
    EXPECT_EQ(result.SelectedFolder, L"");
    EXPECT_THAT(Calls(), Not(Contains("GetResult")));
    EXPECT_EQ(Calls().back(), "CoUninitialize");
}

TEST_F(FolderPickerTest, AFailingApartmentIsToldAndNotLeft) {
    Fail("CoInitializeEx", RPC_E_CHANGED_MODE);
    const Result result = Browse(valid_);
    EXPECT_EQ(result.Message, L"Could not initialize the Windows folder picker.");
    EXPECT_EQ(result.Folder, L"");
    EXPECT_FALSE(result.Cancelled);
    EXPECT_EQ(result.SelectedFolder, L"");
    EXPECT_THAT(Calls(), ElementsAre("CoInitializeEx"));
}

TEST_F(FolderPickerTest, AnApartmentThatWasEnteredBeforeIsUsedAndLeft) {
    Fail("CoInitializeEx", S_FALSE);
    EXPECT_EQ(Browse().Message, L"Quake II installation verified.");
    EXPECT_EQ(Calls().back(), "CoUninitialize");
}

TEST_F(FolderPickerTest, ADialogThatCantBeMadeIsAnOpeningFailure) {
    Fail("CoCreateInstance", REGDB_E_CLASSNOTREG);
    ExpectNotOpened(Browse(valid_));
    EXPECT_THAT(Calls(), ElementsAre("CoInitializeEx", "CoCreateInstance", "CoUninitialize"));
}

TEST_F(FolderPickerTest, OptionsThatAreRefusedAreAnOpeningFailure) {
    Fail("SetOptions");
    ExpectNotOpened(Browse(valid_));
    EXPECT_THAT(Calls(), Not(Contains("Show")));
}

TEST_F(FolderPickerTest, ARefusedTitleOrLabelChangesNothing) {
    Fail("SetTitle");
    Fail("SetOkButtonLabel");
    EXPECT_EQ(Browse(valid_).Message, L"Quake II installation verified.");
}

TEST_F(FolderPickerTest, AStalePathOpensTheDialogWithoutAFolder) {
    Fail("SHCreateItemFromParsingName", HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Browse(temporary_ / "gone").Message, L"Quake II installation verified.");
    EXPECT_THAT(Calls(), Not(Contains("SetFolder")));
}

TEST_F(FolderPickerTest, ARefusedFolderChangesNothing) {
    Fail("SetFolder");
    EXPECT_EQ(Browse(valid_).Message, L"Quake II installation verified.");
}

TEST_F(FolderPickerTest, ADialogThatFailsToShowIsAnOpeningFailureAndNoCancel) {
    Fail("Show", E_ACCESSDENIED);
    ExpectNotOpened(Browse(valid_));
    EXPECT_THAT(Calls(), Not(Contains("GetResult")));
}

TEST_F(FolderPickerTest, APickWithoutAResultIsAnOpeningFailure) {
    Fail("GetResult", E_UNEXPECTED);
    ExpectNotOpened(Browse(valid_));
}

TEST_F(FolderPickerTest, APickWithoutAFileSystemPathIsAnOpeningFailureAndNoCancel) {
    Fail("GetDisplayName", E_INVALIDARG);
    ExpectNotOpened(Browse(valid_));
}

TEST_F(FolderPickerTest,
       AnExceptionOutOfValidationPassesThroughAfterTheInterfacesAreReleasedWithoutLeavingTheApartment) {
    std::error_code error;
    std::filesystem::create_directory_symlink(temporary_ / "loop", temporary_ / "loop", error);
    if (error) GTEST_SKIP() << "no symbolic links here: " << error.message();
    system_.dialog.pick = Platform::TextFromPath(temporary_ / "loop");
    EXPECT_THROW(Browse(), std::filesystem::filesystem_error);
    EXPECT_EQ(system_.log.objects, 0);
    EXPECT_THAT(Calls(), Contains("Show"));
    EXPECT_THAT(Calls(), Not(Contains("CoUninitialize")));
}

// Runs the system's own dialog code on a thread of its own, as a worker does.
Result OnThread(DWORD model, const std::function<Result()>& body) {
    Result result;
    std::thread([&] {
        const HRESULT entered = CoInitializeEx(nullptr, model);
        result = body();
        if (SUCCEEDED(entered)) CoUninitialize();
    }).join();
    return result;
}

TEST(FolderPickerSystemTest, OnAThreadThatAlreadyHasAnotherApartmentModeTheFirstFailureSentenceAppears) {
    const Result result =
        OnThread(COINIT_MULTITHREADED, [] { return BrowseForGame(GetDesktopWindow(), std::filesystem::path()); });
    EXPECT_EQ(result.Message, L"Could not initialize the Windows folder picker.");
    EXPECT_FALSE(result.Cancelled);
}

TEST(FolderPickerSystemTest, AnOwnerThatIsNoWindowGivesACancelFromTheSystemsOwnDialog) {
    bool hasDialogs = false;
    const Result result = OnThread(COINIT_APARTMENTTHREADED, [&] {
        Microsoft::WRL::ComPtr<IFileOpenDialog> dialog;
        hasDialogs = SUCCEEDED(GameDiscovery::SystemDialogs().CoCreateInstance(
            CLSID_FileOpenDialog, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(dialog.GetAddressOf())));
        dialog.Reset();
        return BrowseForGame(nullptr, std::filesystem::temp_directory_path());
    });
    if (!hasDialogs) GTEST_SKIP() << "the system makes no dialogs without a display";
    EXPECT_TRUE(result.Cancelled);
    EXPECT_EQ(result.Message, L"");
}

TEST(DiscoverTest, BrowsesWhenAskedTo) {
    const Result result =
        OnThread(COINIT_MULTITHREADED, [] { return GameDiscovery::Discover(true, GetDesktopWindow(), {}); });
    EXPECT_EQ(result.Message, L"Could not initialize the Windows folder picker.");
}

TEST(DiscoverTest, SearchesWhenNotAskedToBrowse) {
    TemporaryFolder temporary;
    MakeInstallation(temporary / "Quake II");
    const Result result = GameDiscovery::Discover(false, nullptr, temporary / "Quake II");
    EXPECT_EQ(result.Message, L"Quake II installation verified.");
    EXPECT_EQ(result.SelectedFolder, L"");
}

}  // namespace
