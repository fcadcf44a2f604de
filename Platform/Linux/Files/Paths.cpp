#include "Platform/Interface/Paths.h"

#include "Platform/Linux/Files/NameLookup.h"
#include "Platform/Text/Unicode.h"

namespace Platform {

std::wstring TextFromPath(const std::filesystem::path& path) {
    return WideFromNative(path.native());
}

std::filesystem::path PathFromText(std::wstring_view text) {
    return NativeFromWide(text);
}

std::filesystem::path ExistingSpelling(const std::filesystem::path& path) {
    return ExistingNativeSpelling(path.native());
}

std::filesystem::path WeaklyCanonical(const std::filesystem::path& path, std::error_code& error) {
    error.clear();
    if (path.empty()) return {};
    return std::filesystem::weakly_canonical(ExistingSpelling(path), error);
}

void PrepareProfileFile(const std::filesystem::path&) noexcept {}

std::FILE* OpenForWriting(const std::filesystem::path& path) noexcept {
    return std::fopen(path.c_str(), "we");
}

}  // namespace Platform
