// The shell's folder dialog: interfaces with their methods in the order of their tables. Implemented in
// Platform/Linux/Dialog over the desktop's file chooser.
#pragma once

#include <combaseapi.h>

// Interfaces and records that only pass through signatures here.
struct IBindCtx;
struct IFileDialogEvents;
struct IShellItemArray;
struct IShellItemFilter;
struct COMDLG_FILTERSPEC;

using SFGAOF = ULONG;
using SICHINTF = DWORD;
using FILEOPENDIALOGOPTIONS = DWORD;

enum SIGDN : int {
    SIGDN_NORMALDISPLAY = 0,
    SIGDN_FILESYSPATH = static_cast<int>(0x80058000),
};

enum FDAP : int { FDAP_BOTTOM = 0, FDAP_TOP = 1 };

enum _FILEOPENDIALOGOPTIONS : DWORD {
    FOS_NOCHANGEDIR = 0x8,
    FOS_PICKFOLDERS = 0x20,
    FOS_FORCEFILESYSTEM = 0x40,
    FOS_PATHMUSTEXIST = 0x800,
};

struct IShellItem : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE BindToHandler(IBindCtx* context, REFGUID handler, REFIID iid, void** object) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetParent(IShellItem** parent) = 0;
    /// `*name` is freed with CoTaskMemFree.
    virtual HRESULT STDMETHODCALLTYPE GetDisplayName(SIGDN form, LPWSTR* name) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAttributes(SFGAOF mask, SFGAOF* attributes) = 0;
    virtual HRESULT STDMETHODCALLTYPE Compare(IShellItem* other, SICHINTF hint, int* order) = 0;
};
VELORINTH_DECLARE_IID(IShellItem, 0x43826d1e, 0xe718, 0x42ee, 0xbc, 0x55, 0xa1, 0xe2, 0x61, 0xc3, 0x7b, 0xfe);

struct IModalWindow : IUnknown {
    /// Blocks until the user ends the dialog. HRESULT_FROM_WIN32(ERROR_CANCELLED) when they dismissed it.
    virtual HRESULT STDMETHODCALLTYPE Show(HWND owner) = 0;
};
VELORINTH_DECLARE_IID(IModalWindow, 0xb4db1657, 0x70d7, 0x485e, 0x8e, 0x3e, 0x6f, 0xcb, 0x5a, 0x5c, 0x18, 0x02);

struct IFileDialog : IModalWindow {
    virtual HRESULT STDMETHODCALLTYPE SetFileTypes(UINT count, const COMDLG_FILTERSPEC* types) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFileTypeIndex(UINT index) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFileTypeIndex(UINT* index) = 0;
    virtual HRESULT STDMETHODCALLTYPE Advise(IFileDialogEvents* events, DWORD* cookie) = 0;
    virtual HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOptions(FILEOPENDIALOGOPTIONS options) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOptions(FILEOPENDIALOGOPTIONS* options) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDefaultFolder(IShellItem* folder) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFolder(IShellItem* folder) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFolder(IShellItem** folder) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCurrentSelection(IShellItem** item) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFileName(LPCWSTR name) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFileName(LPWSTR* name) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTitle(LPCWSTR title) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetOkButtonLabel(LPCWSTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFileNameLabel(LPCWSTR label) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetResult(IShellItem** item) = 0;
    virtual HRESULT STDMETHODCALLTYPE AddPlace(IShellItem* place, FDAP position) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDefaultExtension(LPCWSTR extension) = 0;
    virtual HRESULT STDMETHODCALLTYPE Close(HRESULT result) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetClientGuid(REFGUID identifier) = 0;
    virtual HRESULT STDMETHODCALLTYPE ClearClientData() = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFilter(IShellItemFilter* filter) = 0;
};
VELORINTH_DECLARE_IID(IFileDialog, 0x42f85136, 0xdb7e, 0x439c, 0x85, 0xf1, 0xe4, 0x07, 0x5d, 0x13, 0x5f, 0xc8);

struct IFileOpenDialog : IFileDialog {
    virtual HRESULT STDMETHODCALLTYPE GetResults(IShellItemArray** items) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSelectedItems(IShellItemArray** items) = 0;
};
VELORINTH_DECLARE_IID(IFileOpenDialog, 0xd57c7288, 0xd4ad, 0x4768, 0xbe, 0x02, 0x9d, 0x96, 0x95, 0x32, 0xd9, 0x60);

constexpr CLSID CLSID_FileOpenDialog{0xdc1c5a9c, 0xe88a, 0x4dde, {0xa5, 0xa1, 0x60, 0xf8, 0x2a, 0x20, 0xae, 0xf7}};

/// Makes an item of an existing file or folder; ERROR_FILE_NOT_FOUND as an HRESULT when there is none.
HRESULT SHCreateItemFromParsingName(LPCWSTR path, IBindCtx* context, REFIID iid, void** object) noexcept;
