// The parsers of Wine's registry files and of the mount table, over the same bytes.
#include "Platform/Linux/Search/Places/MountKind.h"
#include "Platform/Linux/Search/Places/MountTable.h"
#include "Platform/Linux/Wine/RegistryText.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

void ReadRegistry(std::string_view text) {
    for (const wchar_t* const name : {L"SteamPath", L""}) {
        const std::optional<std::wstring> value = Platform::FindRegistryString(text, L"Software\\Valve\\Steam", name);
        if (!value) continue;
        Require(value->find(L'\0') == std::wstring::npos);
        Require(value->size() <= text.size());
    }
}

void ReadMounts(std::string_view text) {
    // Holding() takes time in proportion to the table, so only some of a large one are asked for.
    constexpr std::size_t maxAsked = 64;
    const Platform::MountTable table(text);
    const auto& mounts = table.Mounts();
    for (std::size_t i = 0; i < std::min(mounts.size(), maxAsked); ++i) {
        Require(mounts[i].point.is_absolute());
        Platform::IsRemote(mounts[i]);
        const Platform::Mount* const holder = table.Holding(mounts[i].point);
        Require(!holder || Platform::IsWithin(mounts[i].point, holder->point));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    ReadRegistry(text);
    // Random bytes seldom begin as a registry file or a key does.
    ReadRegistry("WINE REGISTRY Version 2\n[Software\\\\Valve\\\\Steam]\n" + std::string(text));
    ReadMounts(text);
    return 0;
}
