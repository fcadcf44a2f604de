#include "WineTest.h"

#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"

#include <signal.h>

#include <cstring>

namespace fs = std::filesystem;

WineTest::WineTest() {
    SetVariable(L"HOME", Platform::TextFromPath(temporary_.Path()));
    SetVariable(L"WINEPREFIX", Platform::TextFromPath(TEST_WINE_PREFIX));
    SetVariable(L"WINEDEBUG", L"-all");
    SetVariable(L"DISPLAY", std::nullopt);
    if (fs::exists(TEST_WINE_32BIT "/i386-windows"))
        SetVariable(L"WINEDLLPATH", Platform::TextFromPath(TEST_WINE_32BIT));
    fs::create_directories(engine_.parent_path());
    fs::create_directories(game_);
    fs::copy_file(TEST_PROBE, engine_);
}

WineTest::~WineTest() {
    // Whatever a failed test left behind must not run on.
    for (const DWORD id : ProcessesRunning(engine_)) kill(static_cast<pid_t>(id), SIGKILL);
}

void WineTest::SetVariable(const std::wstring& name, std::optional<std::wstring> value) {
    variables_.emplace_front(name, std::move(value));
}

void WineTest::Tell(const fs::path& folder, const std::u16string& action) {
    WriteBytes(folder / "action", {reinterpret_cast<const char*>(action.data()), action.size() * 2});
}

std::u16string WineTest::Told(const fs::path& file) {
    Eventually([&] { return fs::exists(file) && fs::file_size(file) > 0; });
    const std::string bytes = ReadBytes(file);
    std::u16string text(bytes.size() / 2, u'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * 2);
    return text;
}

DWORD WineTest::EngineProcess() const {
    std::vector<DWORD> found;
    Eventually([&] { return (found = ProcessesRunning(engine_)).size() == 1; });
    return found.size() == 1 ? found.front() : 0;
}
