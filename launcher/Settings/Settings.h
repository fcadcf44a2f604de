// What the launcher remembers between runs: launcher.ini in the state folder.
#pragma once

#include <cstdint>
#include <string>

struct LauncherSettings {
    std::wstring Folder;     ///< The game folder as the screen last held it: the last one tried, valid or not.
    bool Modern = true;      ///< KVR2.dll rather than KVR.dll.
    bool Fullscreen = true;  ///< Value of vid_fullscreen.
    std::int32_t Mode = 4;   ///< Display mode, 0 to 9.

    friend bool operator==(const LauncherSettings&, const LauncherSettings&) = default;
};

/// Reads the settings; a missing file or key gives its default, `Mode` is clamped to 0 to 9. Never throws.
LauncherSettings LoadSettings() noexcept;

/// Writes the four keys, one at a time; a write that fails goes unnoticed. Throws what GameLaunch::StateFolder throws.
void SaveSettings(const LauncherSettings& settings);
