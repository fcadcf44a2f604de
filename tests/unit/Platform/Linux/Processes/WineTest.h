// Tests that start a real 32-bit Windows program under real Wine.
#pragma once

#include "LaunchedProgram.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <list>

/// A private home, the tests' own Wine prefix, an "engine" (the probe) and a game folder for each test.
class WineTest : public testing::Test {
protected:
    WineTest();
    ~WineTest() override;

    void SetVariable(const std::wstring& name, std::optional<std::wstring> value);

    /// What the probe is to do when it starts in the folder.
    static void Tell(const std::filesystem::path& folder, const std::u16string& action);
    /// What the probe wrote; waits for it.
    static std::u16string Told(const std::filesystem::path& file);

    LaunchOptions Options(HANDLE lock = nullptr) const { return {.image = engine_, .folder = game_, .lock = lock}; }

    /// The one process that runs the engine; 0 when there isn't exactly one within some seconds.
    DWORD EngineProcess() const;

    TemporaryFolder temporary_;
    std::filesystem::path engine_ = temporary_ / "Engine" / "quake2.exe";
    std::filesystem::path game_ = temporary_ / "game";
    std::filesystem::path lockFile_ = temporary_ / "installation.lock";

private:
    std::list<ScopedEnvironment> variables_;
};
