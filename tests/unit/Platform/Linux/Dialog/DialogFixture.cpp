#include "DialogFixture.h"

#include "Platform/Interface/Paths.h"
#include "Platform/Text/Unicode.h"
#include "tests/support/GameFiles.h"

#include <wrl/client.h>

#include <chrono>
#include <thread>
#include <utility>

namespace fs = std::filesystem;
using Microsoft::WRL::ComPtr;

namespace {

DialogEnd RunDialog(HWND owner, const fs::path& folder) {
    ComPtr<IFileOpenDialog> dialog;
    EXPECT_EQ(
        CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(dialog.GetAddressOf())),
        S_OK);
    EXPECT_EQ(dialog->SetOptions(FOS_NOCHANGEDIR | FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST), S_OK);
    EXPECT_EQ(dialog->SetTitle(L"Wähle einen Ordner"), S_OK);
    EXPECT_EQ(dialog->SetOkButtonLabel(L"Take_it"), S_OK);
    if (!folder.empty()) {
        ComPtr<IShellItem> item;
        EXPECT_EQ(SHCreateItemFromParsingName(Platform::TextFromPath(folder).c_str(), nullptr,
                                              IID_PPV_ARGS(item.GetAddressOf())),
                  S_OK);
        EXPECT_EQ(dialog->SetFolder(item.Get()), S_OK);
    }
    DialogEnd end;
    end.shown = dialog->Show(owner);
    ComPtr<IShellItem> pick;
    end.picked = dialog->GetResult(pick.GetAddressOf());
    EXPECT_EQ(SUCCEEDED(end.picked), pick.Get() != nullptr);
    LPWSTR name = nullptr;
    if (pick && SUCCEEDED(pick->GetDisplayName(SIGDN_FILESYSPATH, &name))) end.path = name;
    CoTaskMemFree(name);
    return end;
}

}  // namespace

DialogFixture::DialogFixture()
    : address_(L"DBUS_SESSION_BUS_ADDRESS", Platform::WideFromUtf8(bus_.Address())),
      path_(L"PATH", Platform::TextFromPath(programs_.Path())) {}

FakePortal& DialogFixture::StartPortal(FakePortalSettings settings) {
    return portal_.emplace(bus_.Address(), std::move(settings));
}

void DialogFixture::InstallProgram(const std::string& name, const std::string& script) {
    WriteBytes(programs_ / name, "#!/bin/sh\ncd " + programs_.Path().native() + "\n" + script);
    fs::permissions(programs_ / name, fs::perms::owner_all);
}

std::string DialogFixture::Written(const std::string& name) const {
    return fs::exists(programs_ / name) ? ReadBytes(programs_ / name) : std::string();
}

std::future<DialogEnd> DialogFixture::Show(HWND owner, fs::path folder) {
    std::packaged_task<DialogEnd()> task([owner, folder = std::move(folder)] {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        DialogEnd end = RunDialog(owner, folder);
        CoUninitialize();
        return end;
    });
    auto end = task.get_future();
    std::thread(std::move(task)).detach();  // A dialog that hangs must not hang the test.
    return end;
}

DialogEnd DialogFixture::End(std::future<DialogEnd> dialog) {
    if (dialog.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
        ADD_FAILURE() << "the dialog hangs";
        return {S_OK, S_OK, L"hangs"};
    }
    return dialog.get();
}
