// The registered window classes.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace Platform {

struct WindowClass {
    std::wstring name;
    UINT style = 0;
    WNDPROC procedure = nullptr;
    HINSTANCE instance = nullptr;
    HCURSOR cursor = nullptr;
};

/// Nothing for an unknown name. Any thread.
std::optional<WindowClass> FindWindowClass(const std::wstring& name);

}  // namespace Platform
