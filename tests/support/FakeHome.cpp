#include "tests/support/FakeHome.h"

#include "tests/support/GameFiles.h"

#include "Platform/Interface/Paths.h"

#include <optional>

namespace fs = std::filesystem;

FakeHome::FakeHome()
    : home_(L"HOME", Platform::TextFromPath(folder_.Path())),
      dataHome_(L"XDG_DATA_HOME", std::nullopt),
      winePrefix_(L"WINEPREFIX", std::nullopt),
      programFiles_(L"ProgramFiles", std::nullopt),
      programFilesX86_(L"ProgramFiles(x86)", std::nullopt) {}

fs::path FakeHome::MakeFolder(const fs::path& name) const {
    fs::create_directories(folder_ / name);
    return folder_ / name;
}

fs::path FakeHome::MakePrefix(const fs::path& name) const {
    fs::path prefix = folder_ / name;
    fs::create_directories(prefix / "drive_c");
    fs::create_directories(prefix / "dosdevices");
    AddDrive(prefix, 'c', "../drive_c");
    AddDrive(prefix, 'z', "/");
    return prefix;
}

void AddDrive(const fs::path& prefix, char letter, const fs::path& target) {
    fs::create_symlink(target, prefix / "dosdevices" / (std::string(1, letter) + ':'));
}

void WriteRegistry(const fs::path& file, const std::string& key, const std::string& name, const std::string& value) {
    WriteBytes(file, "WINE REGISTRY Version 2\n;; All keys relative to \\\\User\n\n#arch=win64\n\n[" + key +
                         "] 1700000000\n#time=1d9e2f3a4b5c6d7\n\"" + name + "\"=\"" + value + "\"\n");
}
