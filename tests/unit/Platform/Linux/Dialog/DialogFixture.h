#pragma once

#include "FakePortal.h"
#include "PrivateBus.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <shobjidl.h>
#include <windows.h>

#include <filesystem>
#include <future>
#include <optional>
#include <string>

/// How a dialog ended: the result of Show, then that of asking for the pick.
struct DialogEnd {
    HRESULT shown = E_FAIL;
    HRESULT picked = E_FAIL;
    std::wstring path;
};

constexpr HRESULT kDialogCancelled = HRESULT_FROM_WIN32(ERROR_CANCELLED);

/// A session bus with nothing but what the test puts there, no display, and no dialog program to be found.
class DialogFixture : public testing::Test {
protected:
    DialogFixture();

    FakePortal& StartPortal(FakePortalSettings settings = {});
    /// Writes an executable shell script to where programs are looked for.
    void InstallProgram(const std::string& name, const std::string& script);
    /// What a script of the test wrote to the file `name` beside the programs; empty until then.
    std::string Written(const std::string& name) const;

    /// Shows a dialog on a thread of its own, as the launcher's worker does.
    std::future<DialogEnd> Show(HWND owner = GetDesktopWindow(), std::filesystem::path folder = {});
    /// The end of a dialog; fails the test when it doesn't come.
    DialogEnd End(std::future<DialogEnd> dialog);

    TemporaryFolder programs_;
    PrivateBus bus_;
    ScopedEnvironment address_;
    ScopedEnvironment runtime_{L"XDG_RUNTIME_DIR", std::nullopt};
    ScopedEnvironment path_;
    ScopedEnvironment display_{L"DISPLAY", std::nullopt};
    ScopedEnvironment wayland_{L"WAYLAND_DISPLAY", std::nullopt};
    ScopedEnvironment desktop_{L"XDG_CURRENT_DESKTOP", std::nullopt};
    std::optional<FakePortal> portal_;
};
