#include "launcher/GameDiscovery/FolderPicker.h"

#include "launcher/GameDiscovery/FolderDialogSystem.h"
#include "launcher/GameDiscovery/Search.h"
#include "launcher/GameDiscovery/Validation.h"
#include "Platform/Interface/Paths.h"

#include <wrl/client.h>

#include <memory>
#include <optional>
#include <string>

using Microsoft::WRL::ComPtr;

namespace GameDiscovery {

namespace {

constexpr FILEOPENDIALOGOPTIONS kOptions = FOS_NOCHANGEDIR | FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_PATHMUSTEXIST;
constexpr HRESULT kCancelled = static_cast<HRESULT>(0x800704C7);  // ERROR_CANCELLED

class System final : public FolderDialogSystem {
public:
    HRESULT CoInitializeEx(DWORD model) override { return ::CoInitializeEx(nullptr, model); }
    void CoUninitialize() override { ::CoUninitialize(); }
    HRESULT CoCreateInstance(REFCLSID classId, DWORD context, REFIID iid, void** object) override {
        return ::CoCreateInstance(classId, nullptr, context, iid, object);
    }
    HRESULT SHCreateItemFromParsingName(const wchar_t* path, REFIID iid, void** object) override {
        return ::SHCreateItemFromParsingName(path, nullptr, iid, object);
    }
    bool IsWindow(HWND window) override { return ::IsWindow(window) != FALSE; }
};

// How the dialog ended. `path` is the pick as the dialog gave it; a missing one means that there was none to have.
struct Pick {
    bool cancelled = false;
    std::optional<std::wstring> path;
};

// The path of what the user picked, if it has one in the file system.
std::optional<std::wstring> PickedPath(IFileOpenDialog& dialog) {
    ComPtr<IShellItem> item;
    if (FAILED(dialog.GetResult(item.GetAddressOf())) || !item) return std::nullopt;
    LPWSTR name = nullptr;
    if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &name)) || !name) return std::nullopt;
    const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> owned(name, CoTaskMemFree);
    return std::wstring(name);
}

Pick ShowDialog(IFileOpenDialog& dialog, HWND owner, const std::filesystem::path& folder, FolderDialogSystem& system) {
    if (FAILED(dialog.SetOptions(kOptions))) return {};
    dialog.SetTitle(L"Select the classic Quake II folder containing quake2.exe");
    dialog.SetOkButtonLabel(L"Select game folder");
    if (!folder.empty()) {
        // A stale path is no failure: the dialog then opens where the system decides.
        ComPtr<IShellItem> start;
        const std::wstring path = Platform::TextFromPath(folder);
        if (SUCCEEDED(system.SHCreateItemFromParsingName(path.c_str(), IID_PPV_ARGS(start.ReleaseAndGetAddressOf())))) {
            dialog.SetFolder(start.Get());
        }
    }
    // The window may have been closed since the click; a dialog without it would be nobody's.
    const HRESULT shown = system.IsWindow(owner) ? dialog.Show(owner) : kCancelled;
    if (shown == kCancelled) return {true, std::nullopt};
    if (FAILED(shown)) return {};
    return {false, PickedPath(dialog)};
}

}  // namespace

FolderDialogSystem& SystemDialogs() {
    static System system;
    return system;
}

Result BrowseForGame(HWND owner, const std::filesystem::path& folder) {
    return BrowseForGame(owner, folder, SystemDialogs());
}

Result BrowseForGame(HWND owner, const std::filesystem::path& folder, FolderDialogSystem& system) {
    Result result;
    if (FAILED(system.CoInitializeEx(COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {
        result.Message = L"Could not initialize the Windows folder picker.";
        return result;
    }
    {
        ComPtr<IFileOpenDialog> dialog;
        Pick pick;
        if (SUCCEEDED(system.CoCreateInstance(CLSID_FileOpenDialog, CLSCTX_INPROC_SERVER,
                                              IID_PPV_ARGS(dialog.ReleaseAndGetAddressOf())))) {
            pick = ShowDialog(*dialog.Get(), owner, folder, system);
        }
        if (pick.cancelled) {
            result.Cancelled = true;
        } else if (pick.path) {
            result = ValidateFolder(Platform::PathFromText(*pick.path));
            result.SelectedFolder = *pick.path;
        } else {
            result.Message = L"The Windows folder picker could not be opened.";
        }
    }
    // The apartment ends after its last object. An exception leaves it to the worker thread's end.
    system.CoUninitialize();
    return result;
}

Result Discover(bool browse, HWND owner, const std::filesystem::path& folder) noexcept {
    try {
        return browse ? BrowseForGame(owner, folder) : FindGame(folder);
    } catch (...) {
        Result result;
        result.Message = L"Could not inspect the installation. Try another folder.";
        return result;
    }
}

}  // namespace GameDiscovery
