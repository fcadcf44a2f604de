#include "launcher/GameLaunch/StateFolder.h"

#include "launcher/GameDiscovery/Search.h"
#include "Platform/Interface/Paths.h"
#include "Platform/Text/Unicode.h"

#include <stdexcept>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace GameLaunch {

namespace {

/// Lower-casing of the C library's default locale, which knows the letters A to Z only. Written out, because towlower
/// follows whatever locale another library has set, and an installation must keep its name.
char16_t ToLower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

}  // namespace

fs::path LauncherFolder() {
    std::wstring program(32768, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    if (length == 0) throw std::runtime_error("Cannot locate launcher");
    program.resize(length);
    return Platform::PathFromText(program).parent_path();
}

fs::path StateFolder() {
    const std::wstring base = GameDiscovery::ReadEnvironment(L"LOCALAPPDATA");
    if (base.empty()) throw std::runtime_error("LocalAppData unavailable");
    fs::path folder = Platform::PathFromText(base) / L"VelorinthLauncher";
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw fs::filesystem_error("create_directories", folder, error);
    return folder;
}

std::uint64_t HashInstallation(std::u16string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char16_t unit : text) {
        hash ^= unit;
        hash *= 0x100000001B3;
    }
    return hash;
}

fs::path RuntimePathFor(const fs::path& folder) {
    std::error_code error;
    const fs::path canonical = Platform::WeaklyCanonical(folder, error);
    if (error) throw fs::filesystem_error("weakly_canonical", folder, error);
    std::u16string identity = Platform::Utf16FromWide(Platform::TextFromPath(canonical));
    for (char16_t& unit : identity) unit = ToLower(unit);
    return StateFolder() / ("Quake2-" + std::to_string(HashInstallation(identity)));
}

fs::path LockFileFor(const fs::path& folder) {
    fs::path file = RuntimePathFor(folder);
    file += ".lock";
    return file;
}

HANDLE TakeInstallationLock(const fs::path& folder) {
    const std::wstring file = Platform::TextFromPath(LockFileFor(folder));
    SECURITY_ATTRIBUTES inheritable{};
    inheritable.nLength = sizeof inheritable;
    inheritable.bInheritHandle = TRUE;
    return CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, &inheritable, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

}  // namespace GameLaunch
