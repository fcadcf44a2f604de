// What the dialog object does without showing anything.

#include "DialogFixture.h"

#include <wrl/client.h>

#include <algorithm>
#include <functional>

namespace {

using Microsoft::WRL::ComPtr;

class FileOpenDialogTest : public testing::Test {
protected:
    FileOpenDialogTest() {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        EXPECT_EQ(
            CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(dialog_.GetAddressOf())),
            S_OK);
    }
    ~FileOpenDialogTest() override {
        dialog_.Reset();
        CoUninitialize();
    }

    ComPtr<IFileOpenDialog> dialog_;
};

TEST_F(FileOpenDialogTest, MethodsWithoutACallerAreNotImplementedAndLeaveOneTraceEach) {
    IFileOpenDialog* const dialog = dialog_.Get();
    const std::vector<std::function<HRESULT()>> methods{
        [=] { return dialog->SetFileTypes(0, nullptr); },
        [=] { return dialog->SetFileTypeIndex(0); },
        [=] { return dialog->GetFileTypeIndex(nullptr); },
        [=] { return dialog->Advise(nullptr, nullptr); },
        [=] { return dialog->Unadvise(0); },
        [=] { return dialog->GetOptions(nullptr); },
        [=] { return dialog->SetDefaultFolder(nullptr); },
        [=] { return dialog->GetFolder(nullptr); },
        [=] { return dialog->GetCurrentSelection(nullptr); },
        [=] { return dialog->SetFileName(nullptr); },
        [=] { return dialog->GetFileName(nullptr); },
        [=] { return dialog->SetFileNameLabel(nullptr); },
        [=] { return dialog->AddPlace(nullptr, FDAP_TOP); },
        [=] { return dialog->SetDefaultExtension(nullptr); },
        [=] { return dialog->Close(S_OK); },
        [=] { return dialog->SetClientGuid(GUID{}); },
        [=] { return dialog->ClearClientData(); },
        [=] { return dialog->SetFilter(nullptr); },
        [=] { return dialog->GetResults(nullptr); },
        [=] { return dialog->GetSelectedItems(nullptr); },
    };
    testing::internal::CaptureStderr();
    for (int round = 0; round < 2; ++round) {
        for (const auto& method : methods) EXPECT_EQ(method(), E_NOTIMPL);
    }
    const std::string trace = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(trace.begin(), trace.end(), '\n'), static_cast<std::ptrdiff_t>(methods.size())) << trace;
    EXPECT_NE(trace.find("FileOpenDialog::SetFileTypes is not implemented.\n"), std::string::npos);
    EXPECT_NE(trace.find("FileOpenDialog::GetSelectedItems is not implemented.\n"), std::string::npos);
}

TEST_F(FileOpenDialogTest, OptionsBeyondPickingAFolderAreRefused) {
    EXPECT_EQ(dialog_->SetOptions(0x868), S_OK);
    EXPECT_EQ(dialog_->SetOptions(0x868 | 0x200), E_NOTIMPL);
}

TEST_F(FileOpenDialogTest, ADialogForFilesIsNotShown) {
    EXPECT_EQ(dialog_->Show(GetDesktopWindow()), E_NOTIMPL);
}

TEST_F(FileOpenDialogTest, ThereIsNoResultBeforeTheDialogWasShown) {
    IShellItem* item = reinterpret_cast<IShellItem*>(this);
    EXPECT_EQ(dialog_->GetResult(&item), E_UNEXPECTED);
    EXPECT_EQ(item, nullptr);
    EXPECT_EQ(dialog_->GetResult(nullptr), E_POINTER);
}

TEST_F(FileOpenDialogTest, OnlyAnExistingFolderIsTakenAsStartFolder) {
    TemporaryFolder temporary;
    EXPECT_EQ(dialog_->SetFolder(nullptr), E_INVALIDARG);
    ComPtr<IShellItem> item;
    ASSERT_EQ(SHCreateItemFromParsingName(L"/dev/zero", nullptr, IID_PPV_ARGS(item.GetAddressOf())), S_OK);
    EXPECT_EQ(dialog_->SetFolder(item.Get()), HRESULT_FROM_WIN32(ERROR_DIRECTORY));
    ASSERT_EQ(SHCreateItemFromParsingName(L"/", nullptr, IID_PPV_ARGS(item.ReleaseAndGetAddressOf())), S_OK);
    EXPECT_EQ(dialog_->SetFolder(item.Get()), S_OK);
}

TEST_F(FileOpenDialogTest, MissingTextsCountAsEmpty) {
    EXPECT_EQ(dialog_->SetTitle(nullptr), S_OK);
    EXPECT_EQ(dialog_->SetOkButtonLabel(nullptr), S_OK);
}

}  // namespace
