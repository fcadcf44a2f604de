// The checks of a launch fail in a fixed order: whatever else is wrong as well, the first one speaks.
#include "RecordingSystem.h"
#include "tests/support/GameFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace fs = std::filesystem;

namespace {

struct Step {
    const char* name;
    const wchar_t* sentence;
    bool namesFolder;
    /// The operations that were called, in order, when this step is the first to fail.
    std::vector<std::string> calls;
};

const std::vector<Step>& Steps() {
    static const std::vector<Step> steps = [] {
        std::vector<std::string> calls;
        const auto after = [&calls](std::vector<std::string> more) {
            std::ranges::move(more, std::back_inserter(calls));
            return calls;
        };
        const auto closing = [](std::vector<std::string> all) {
            all.emplace_back("Close lock");
            return all;
        };
        constexpr const wchar_t* running = L"Quake II is already running. Close it before changing drivers.";
        return std::vector<Step>{
            {"InvalidFolder", L"Quake II was not found in this folder (quake2.exe is missing).", false, calls},
            {"InvalidEngine", L"The bundled Quake II engine is missing or invalid. Extract the complete package.",
             false, after({"LauncherFolder"})},
            {"GameRunningFromTheGameFolder", running, true, after({"FindRunningProcess"})},
            {"GameRunningFromTheEnginePath", running, true, after({"FindRunningProcess"})},
            {"DisplayMode", L"Unsupported display mode.", false, calls},
            {"Processor", L"This KVR2 package requires a processor with SSE4.1 support.", false, after({"HasSse41"})},
            {"InvalidDriver", L"The selected bundled driver is missing or invalid.", false, calls},
            {"InvalidGameDll", L"The classic game DLL baseq2/gamex86.dll is missing or incompatible.", true, calls},
            {"LockHeld", L"This installation is already running, or its runtime folder is unavailable.", true,
             after({"TakeInstallationLock"})},
            {"Installation", L"Could not install the driver. Close Quake II and check write permission to its folder.",
             false, closing(after({"InstallDriver"}))},
            {"ProcessStart", L"Windows could not launch Quake II (error 5).", true, closing(after({"StartProcess"}))},
            {"EarlyEnd", L"Quake II closed during startup. Check baseq2/qconsole.log in the game folder.", true,
             closing(after({"Wait"}))},
        };
    }();
    return steps;
}

class FailureOrder : public testing::TestWithParam<std::size_t> {};

TEST_P(FailureOrder, FirstFailingCheckSpeaksAlthoughAllLaterOnesFailToo) {
    const std::size_t first = GetParam();
    const LaunchFolders folders;
    RecordingSystem system(folders);
    DWORD mode = 9;
    const std::vector<std::function<void()>> breaking = {
        [&] { fs::remove(folders.Game() / "quake2.exe"); },
        [&] { WriteBytes(folders.Engine(), PeBytes({.machine = 0x8664})); },
        [&] { system.running.insert(folders.Game() / "quake2.exe"); },
        [&] { system.running.insert(folders.Engine()); },
        [&] { mode = 10; },
        [&] { system.sse41 = false; },
        [&] { fs::remove(folders.Driver("KVR2.dll")); },
        [&] { fs::remove(folders.Game() / "baseq2" / "gamex86.dll"); },
        [&] { system.lockFree = false; },
        [&] { system.beforeInstall = [] { throw std::runtime_error("Cannot read driver"); }; },
        [&] { system.startError = ERROR_ACCESS_DENIED; },
        [&] { system.lifetime = 0; },
    };
    ASSERT_EQ(breaking.size(), Steps().size());
    for (std::size_t step = first; step < breaking.size(); ++step) breaking[step]();

    const GameLaunch::Result result = GameLaunch::Start(system, folders.Game(), true, mode, true, false);

    const Step& expected = Steps()[first];
    EXPECT_EQ(result.Message, expected.sentence);
    EXPECT_FALSE(result.Process);
    EXPECT_EQ(result.Folder, expected.namesFolder ? folders.Game().wstring() : std::wstring());
    EXPECT_EQ(system.calls, expected.calls);
}

std::vector<std::size_t> Indices() {
    std::vector<std::size_t> indices;
    for (std::size_t index = 0; index < Steps().size(); ++index) indices.push_back(index);
    return indices;
}

INSTANTIATE_TEST_SUITE_P(AllChecks, FailureOrder, testing::ValuesIn(Indices()),
                         [](const auto& test) { return std::string(Steps()[test.param].name); });

}  // namespace
