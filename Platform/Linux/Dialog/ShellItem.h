#pragma once

#include "Platform/Linux/Base/ComObject.h"

#include <shobjidl.h>

#include <string>

namespace Platform {

/// A file or folder, known by its path. GetDisplayName with SIGDN_FILESYSPATH gives the path as it came.
class ShellItem final : public ComObject<IShellItem> {
public:
    explicit ShellItem(std::wstring path);

    HRESULT BindToHandler(IBindCtx* context, REFGUID handler, REFIID iid, void** object) override;
    HRESULT GetParent(IShellItem** parent) override;
    HRESULT GetDisplayName(SIGDN form, LPWSTR* name) override;
    HRESULT GetAttributes(SFGAOF mask, SFGAOF* attributes) override;
    HRESULT Compare(IShellItem* other, SICHINTF hint, int* order) override;

private:
    ~ShellItem() override = default;

    const std::wstring path_;
};

}  // namespace Platform
