#include "launcher/Settings/Settings.h"

#include "launcher/GameLaunch/StateFolder.h"
#include "Platform/Interface/Paths.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr const wchar_t* section = L"Launcher";
constexpr const wchar_t* folderKey = L"Folder";
constexpr const wchar_t* modernKey = L"Modern";
constexpr const wchar_t* fullscreenKey = L"Fullscreen";
constexpr const wchar_t* modeKey = L"Mode";

/// Makes the state folder if it is missing.
std::filesystem::path SettingsFile() {
    return GameLaunch::StateFolder() / "launcher.ini";
}

}  // namespace

LauncherSettings LoadSettings() noexcept {
    LauncherSettings settings;
    try {
        const std::wstring file = Platform::TextFromPath(SettingsFile());
        const auto number = [&file](const wchar_t* key, std::int32_t defaultValue) {
            return static_cast<std::int32_t>(GetPrivateProfileIntW(section, key, defaultValue, file.c_str()));
        };
        std::wstring buffer(32768, L'\0');
        buffer.resize(GetPrivateProfileStringW(section, folderKey, L"", buffer.data(),
                                               static_cast<DWORD>(buffer.size()), file.c_str()));
        settings.Folder = std::move(buffer);
        settings.Modern = number(modernKey, settings.Modern) != 0;
        settings.Fullscreen = number(fullscreenKey, settings.Fullscreen) != 0;
        settings.Mode = std::clamp(number(modeKey, settings.Mode), 0, 9);
    } catch (...) {  // NOLINT(bugprone-empty-catch): what can't be read keeps its default; there is nobody to tell.
    }
    return settings;
}

void SaveSettings(const LauncherSettings& settings) {
    const std::filesystem::path path = SettingsFile();
    Platform::PrepareProfileFile(path);
    const std::wstring file = Platform::TextFromPath(path);
    const auto write = [&file](const wchar_t* key, const std::wstring& value) {
        WritePrivateProfileStringW(section, key, value.c_str(), file.c_str());
    };
    write(folderKey, settings.Folder);
    write(modernKey, settings.Modern ? L"1" : L"0");
    write(fullscreenKey, settings.Fullscreen ? L"1" : L"0");
    write(modeKey, std::to_wstring(settings.Mode));
}
