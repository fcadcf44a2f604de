#pragma once

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Dialog/FolderRequest.h"

#include <shobjidl.h>

#include <filesystem>
#include <string>

namespace Platform {

/// The folder dialog. Made, shown and let go of by one thread.
///
/// It is shown by the desktop's file chooser portal. The portal can open at a given folder from interface version 4 on;
/// with an older one a dialog program of the desktop (zenity, kdialog) takes its place when one is installed and a
/// start folder is known. Should the program fail, the portal's dialog comes after all, where that has it.
class FileOpenDialog final : public ComObject<IFileOpenDialog, IFileDialog, IModalWindow> {
public:
    FileOpenDialog();

    HRESULT Show(HWND owner) override;
    HRESULT SetOptions(FILEOPENDIALOGOPTIONS options) override;
    HRESULT SetFolder(IShellItem* folder) override;
    HRESULT SetTitle(LPCWSTR title) override;
    HRESULT SetOkButtonLabel(LPCWSTR text) override;
    HRESULT GetResult(IShellItem** item) override;

    // Without a caller: each leaves a trace once and returns E_NOTIMPL.
    HRESULT SetFileTypes(UINT count, const COMDLG_FILTERSPEC* types) override;
    HRESULT SetFileTypeIndex(UINT index) override;
    HRESULT GetFileTypeIndex(UINT* index) override;
    HRESULT Advise(IFileDialogEvents* events, DWORD* cookie) override;
    HRESULT Unadvise(DWORD cookie) override;
    HRESULT GetOptions(FILEOPENDIALOGOPTIONS* options) override;
    HRESULT SetDefaultFolder(IShellItem* folder) override;
    HRESULT GetFolder(IShellItem** folder) override;
    HRESULT GetCurrentSelection(IShellItem** item) override;
    HRESULT SetFileName(LPCWSTR name) override;
    HRESULT GetFileName(LPWSTR* name) override;
    HRESULT SetFileNameLabel(LPCWSTR label) override;
    HRESULT AddPlace(IShellItem* place, FDAP position) override;
    HRESULT SetDefaultExtension(LPCWSTR extension) override;
    HRESULT Close(HRESULT result) override;
    HRESULT SetClientGuid(REFGUID identifier) override;
    HRESULT ClearClientData() override;
    HRESULT SetFilter(IShellItemFilter* filter) override;
    HRESULT GetResults(IShellItemArray** items) override;
    HRESULT GetSelectedItems(IShellItemArray** items) override;

private:
    ~FileOpenDialog() override = default;

    FolderAnswer Ask(HWND owner) const;

    FILEOPENDIALOGOPTIONS options_ = 0;
    std::wstring title_;
    std::wstring acceptLabel_;
    std::filesystem::path folder_;
    FolderAnswer answer_;
};

/// Makes a dialog and hands out the interface asked for.
HRESULT CreateFileOpenDialog(REFIID iid, void** object) noexcept;

}  // namespace Platform
