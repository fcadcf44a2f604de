// The system's folder dialog as the picker calls it.
#pragma once

#include "launcher/GameDiscovery/Result.h"

#include <windows.h>

#include <shobjidl.h>

#include <filesystem>

namespace GameDiscovery {

/// The calls that the picker makes, so that tests can record their order and make each of them fail. Every operation is
/// the system's function of its name.
class FolderDialogSystem {
public:
    virtual ~FolderDialogSystem() = default;
    virtual HRESULT CoInitializeEx(DWORD model) = 0;
    virtual void CoUninitialize() = 0;
    virtual HRESULT CoCreateInstance(REFCLSID classId, DWORD context, REFIID iid, void** object) = 0;
    virtual HRESULT SHCreateItemFromParsingName(const wchar_t* path, REFIID iid, void** object) = 0;
    virtual bool IsWindow(HWND window) = 0;
};

/// The system itself.
FolderDialogSystem& SystemDialogs();

/// BrowseForGame over the dialog of a given system.
Result BrowseForGame(HWND owner, const std::filesystem::path& folder, FolderDialogSystem& system);

}  // namespace GameDiscovery
