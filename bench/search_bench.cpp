// The search over 200 libraries with 2,000 candidates, of which the last is the game; files in the system's cache.
#include "launcher/GameDiscovery/Search.h"
#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t libraries = 200;
/// The folder that a library always has stands behind those of its manifest.
constexpr std::size_t namedGames = 9;

/// What the folders that the manifests name are like.
enum class Named { Missing, OtherGames };

/// A Steam folder, which is a library itself and whose file names the others.
class SteamPlaces final : public GameDiscovery::SearchSources {
public:
    explicit SteamPlaces(Named named) {
        std::string file = "\"libraryfolders\"\n{\n";
        for (std::size_t i = 0; i < libraries; ++i) {
            const fs::path apps = Library(i) / "steamapps";
            std::string manifest = "\"AppState\"\n{\n\t\"appid\"\t\t\"2320\"\n";
            for (std::size_t game = 0; game < namedGames; ++game) {
                const std::string name = "Game " + std::to_string(game);
                manifest += "\t\"installdir\"\t\t\"" + name + "\"\n";
                if (named == Named::OtherGames) FillWithFiles(apps / "common" / name);
            }
            WriteBytes(apps / "appmanifest_2320.acf", manifest + "}\n");
            fs::create_directories(apps / "common");
            if (i > 0)
                file += "\t\"" + std::to_string(i) + "\"\n\t{\n\t\t\"path\"\t\t\"" + Library(i).string() + "\"\n\t}\n";
        }
        WriteBytes(Library(0) / "steamapps" / "libraryfolders.vdf", file + "}\n");
        MakeInstallation(Library(libraries - 1) / "steamapps" / "common" / "Quake 2");
    }

    std::vector<std::wstring> RegistryStrings(HKEY root, const wchar_t*, const wchar_t*) override {
        if (root != HKEY_CURRENT_USER) return {};
        return {Platform::TextFromPath(Library(0))};
    }
    std::vector<std::wstring> FolderVariables(const wchar_t*) override { return {}; }
    std::vector<std::wstring> DriveRoots() override { return {}; }
    UINT DriveType(const wchar_t*) override { return DRIVE_UNKNOWN; }

private:
    fs::path Library(std::size_t index) const { return folder_ / ("library" + std::to_string(index)); }

    static void FillWithFiles(const fs::path& folder) {
        for (int i = 0; i < 20; ++i) WriteBytes(folder / ("file" + std::to_string(i) + ".dat"), "");
    }

    TemporaryFolder folder_;
};

void FindLast(benchmark::State& state, Named named) {
    SteamPlaces places(named);
    if (GameDiscovery::Candidates(places).size() != libraries * (namedGames + 1)) {
        state.SkipWithError("not 2,000 candidates");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        if (GameDiscovery::FindGame({}, places).Folder.empty()) {
            state.SkipWithError("the game wasn't found");
            break;
        }
    }
}

}  // namespace

BENCHMARK_CAPTURE(FindLast, among_missing_folders, Named::Missing)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindLast, among_other_games, Named::OtherGames)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
