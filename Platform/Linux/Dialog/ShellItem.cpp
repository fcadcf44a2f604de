#include "Platform/Linux/Dialog/ShellItem.h"

#include "Platform/Interface/Paths.h"
#include "Platform/Linux/Base/Errors.h"

#include <wrl/client.h>

#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace Platform {

ShellItem::ShellItem(std::wstring path) : ComObject("ShellItem"), path_(std::move(path)) {}

HRESULT ShellItem::GetDisplayName(SIGDN form, LPWSTR* name) {
    if (!name) return E_POINTER;
    *name = nullptr;
    if (form != SIGDN_FILESYSPATH) return NotImplemented("ShellItem::GetDisplayName in another form than a path");
    auto* const copy = static_cast<wchar_t*>(CoTaskMemAlloc((path_.size() + 1) * sizeof(wchar_t)));
    if (!copy) return E_OUTOFMEMORY;
    path_.copy(copy, path_.size());
    copy[path_.size()] = L'\0';
    *name = copy;
    return S_OK;
}

HRESULT ShellItem::BindToHandler(IBindCtx*, REFGUID, REFIID, void**) {
    return NotImplemented("ShellItem::BindToHandler");
}
HRESULT ShellItem::GetParent(IShellItem**) {
    return NotImplemented("ShellItem::GetParent");
}
HRESULT ShellItem::GetAttributes(SFGAOF, SFGAOF*) {
    return NotImplemented("ShellItem::GetAttributes");
}
HRESULT ShellItem::Compare(IShellItem*, SICHINTF, int*) {
    return NotImplemented("ShellItem::Compare");
}

}  // namespace Platform

HRESULT SHCreateItemFromParsingName(LPCWSTR path, IBindCtx*, REFIID iid, void** object) noexcept try {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!path || !*path) return E_INVALIDARG;
    const std::filesystem::path existing =
        Platform::ExistingSpelling(std::filesystem::absolute(Platform::PathFromText(path)));
    std::error_code error;
    if (!std::filesystem::exists(existing, error)) {
        return HRESULT_FROM_WIN32(error ? Platform::ErrorFromErrno(error.value()) : ERROR_FILE_NOT_FOUND);
    }
    Microsoft::WRL::ComPtr<IShellItem> item;
    item.Attach(new Platform::ShellItem(Platform::TextFromPath(existing)));
    return item->QueryInterface(iid, object);
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
} catch (const std::system_error& error) {
    return HRESULT_FROM_WIN32(Platform::ErrorFromErrno(error.code().value()));
} catch (...) {
    return E_FAIL;
}
