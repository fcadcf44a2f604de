#include "Platform/Linux/Dialog/FileOpenDialog.h"

#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Com/ClassRegistry.h"
#include "Platform/Linux/Dialog/ChooserProgram.h"
#include "Platform/Linux/Dialog/OwnerWatch.h"
#include "Platform/Linux/Dialog/Portal.h"
#include "Platform/Linux/Dialog/ShellItem.h"
#include "Platform/Text/Unicode.h"

#include <wrl/client.h>

#include <exception>
#include <memory>
#include <new>
#include <system_error>

namespace Platform {

namespace {

constexpr FILEOPENDIALOGOPTIONS kKnownOptions =
    FOS_NOCHANGEDIR | FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST;

/// The result for the exception that is being handled.
HRESULT ResultFromException() noexcept {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception& error) {
        TraceFailure("exception", error.what());
        return E_FAIL;
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace

FileOpenDialog::FileOpenDialog() : ComObject("FileOpenDialog") {}

HRESULT FileOpenDialog::Show(HWND owner) try {
    answer_ = {};
    if ((options_ & FOS_PICKFOLDERS) == 0) return NotImplemented("FileOpenDialog::Show for files");
    answer_ = Ask(owner);
    return answer_.result;
} catch (...) {
    return ResultFromException();
}

FolderAnswer FileOpenDialog::Ask(HWND owner) const {
    OwnerWatch watch(owner);
    if (watch.Gone()) return {kCancelled, {}};
    const FolderRequest request{watch.XWindow(), Utf8FromWide(title_), Utf8FromWide(acceptLabel_), folder_.native()};

    Portal portal(watch);
    if (const HRESULT result = portal.Connect(); FAILED(result)) return {result, {}};
    const bool picksFolders = portal.Version() >= Portal::kDirectoryVersion;
    const bool opensThere = request.startFolder.empty() || portal.Version() >= Portal::kCurrentFolderVersion;
    if (!picksFolders || !opensThere) {
        if (const auto program = FindChooserProgram()) {
            FolderAnswer answer = RunChooserProgram(*program, request, watch);
            // Better the portal's dialog in the wrong folder than none.
            if (answer.result != E_FAIL || !picksFolders) return answer;
        }
    }
    if (!picksFolders) {
        TraceFailure("file chooser portal", "it is too old to pick folders");
        return {E_NOTIMPL, {}};
    }
    return portal.PickFolder(request);
}

HRESULT FileOpenDialog::SetOptions(FILEOPENDIALOGOPTIONS options) {
    if ((options & ~kKnownOptions) != 0) return NotImplemented("FileOpenDialog::SetOptions beyond picking a folder");
    options_ = options;
    return S_OK;
}

HRESULT FileOpenDialog::SetFolder(IShellItem* folder) try {
    if (!folder) return E_INVALIDARG;
    LPWSTR name = nullptr;
    if (const HRESULT result = folder->GetDisplayName(SIGDN_FILESYSPATH, &name); FAILED(result)) return result;
    const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> owned(name, CoTaskMemFree);
    std::filesystem::path path = PathFromText(name);
    std::error_code ignored;
    if (!std::filesystem::is_directory(path, ignored)) return HRESULT_FROM_WIN32(ERROR_DIRECTORY);
    folder_ = std::move(path);
    return S_OK;
} catch (...) {
    return ResultFromException();
}

HRESULT FileOpenDialog::SetTitle(LPCWSTR title) try {
    title_ = title ? title : L"";
    return S_OK;
} catch (...) {
    return ResultFromException();
}

HRESULT FileOpenDialog::SetOkButtonLabel(LPCWSTR text) try {
    acceptLabel_ = text ? text : L"";
    return S_OK;
} catch (...) {
    return ResultFromException();
}

HRESULT FileOpenDialog::GetResult(IShellItem** item) try {
    if (!item) return E_POINTER;
    *item = nullptr;
    if (FAILED(answer_.result)) return E_UNEXPECTED;
    if (answer_.path.empty()) return HRESULT_FROM_WIN32(ERROR_BAD_PATHNAME);
    *item = new ShellItem(TextFromPath(answer_.path));
    return S_OK;
} catch (...) {
    return ResultFromException();
}

HRESULT FileOpenDialog::SetFileTypes(UINT, const COMDLG_FILTERSPEC*) {
    return NotImplemented("FileOpenDialog::SetFileTypes");
}
HRESULT FileOpenDialog::SetFileTypeIndex(UINT) {
    return NotImplemented("FileOpenDialog::SetFileTypeIndex");
}
HRESULT FileOpenDialog::GetFileTypeIndex(UINT*) {
    return NotImplemented("FileOpenDialog::GetFileTypeIndex");
}
HRESULT FileOpenDialog::Advise(IFileDialogEvents*, DWORD*) {
    return NotImplemented("FileOpenDialog::Advise");
}
HRESULT FileOpenDialog::Unadvise(DWORD) {
    return NotImplemented("FileOpenDialog::Unadvise");
}
HRESULT FileOpenDialog::GetOptions(FILEOPENDIALOGOPTIONS*) {
    return NotImplemented("FileOpenDialog::GetOptions");
}
HRESULT FileOpenDialog::SetDefaultFolder(IShellItem*) {
    return NotImplemented("FileOpenDialog::SetDefaultFolder");
}
HRESULT FileOpenDialog::GetFolder(IShellItem**) {
    return NotImplemented("FileOpenDialog::GetFolder");
}
HRESULT FileOpenDialog::GetCurrentSelection(IShellItem**) {
    return NotImplemented("FileOpenDialog::GetCurrentSelection");
}
HRESULT FileOpenDialog::SetFileName(LPCWSTR) {
    return NotImplemented("FileOpenDialog::SetFileName");
}
HRESULT FileOpenDialog::GetFileName(LPWSTR*) {
    return NotImplemented("FileOpenDialog::GetFileName");
}
HRESULT FileOpenDialog::SetFileNameLabel(LPCWSTR) {
    return NotImplemented("FileOpenDialog::SetFileNameLabel");
}
HRESULT FileOpenDialog::AddPlace(IShellItem*, FDAP) {
    return NotImplemented("FileOpenDialog::AddPlace");
}
HRESULT FileOpenDialog::SetDefaultExtension(LPCWSTR) {
    return NotImplemented("FileOpenDialog::SetDefaultExtension");
}
HRESULT FileOpenDialog::Close(HRESULT) {
    return NotImplemented("FileOpenDialog::Close");
}
HRESULT FileOpenDialog::SetClientGuid(REFGUID) {
    return NotImplemented("FileOpenDialog::SetClientGuid");
}
HRESULT FileOpenDialog::ClearClientData() {
    return NotImplemented("FileOpenDialog::ClearClientData");
}
HRESULT FileOpenDialog::SetFilter(IShellItemFilter*) {
    return NotImplemented("FileOpenDialog::SetFilter");
}
HRESULT FileOpenDialog::GetResults(IShellItemArray**) {
    return NotImplemented("FileOpenDialog::GetResults");
}
HRESULT FileOpenDialog::GetSelectedItems(IShellItemArray**) {
    return NotImplemented("FileOpenDialog::GetSelectedItems");
}

HRESULT CreateFileOpenDialog(REFIID iid, void** object) noexcept try {
    Microsoft::WRL::ComPtr<IFileOpenDialog> dialog;
    dialog.Attach(new FileOpenDialog);
    return dialog->QueryInterface(iid, object);
} catch (...) {
    return ResultFromException();
}

}  // namespace Platform

// Named for the linker, which is told to keep it.
extern "C" const Platform::ClassRegistration VelorinthFileOpenDialogClass;
const Platform::ClassRegistration VelorinthFileOpenDialogClass(CLSID_FileOpenDialog, Platform::CreateFileOpenDialog);
