#include "Platform/Interface/SearchPlaces.h"

namespace Platform {

namespace {

/// Bytes, terminator included: more than any path takes.
constexpr DWORD registryBufferSize = 65'536;

/// Characters, terminator included: the most that a variable can have.
constexpr DWORD variableBufferSize = 32'768;

}  // namespace

std::vector<std::wstring> RegistryStrings(HKEY root, const wchar_t* subkey, const wchar_t* value) {
    std::wstring text(registryBufferSize / sizeof(wchar_t), L'\0');
    DWORD size = registryBufferSize;
    if (RegGetValueW(root, subkey, value, RRF_RT_REG_SZ, nullptr, text.data(), &size) != ERROR_SUCCESS) return {};
    text.resize(wcsnlen(text.data(), size / sizeof(wchar_t)));
    if (text.empty()) return {};
    return {std::move(text)};
}

std::vector<std::wstring> FolderVariables(const wchar_t* name) {
    std::wstring text(variableBufferSize, L'\0');
    const DWORD length = GetEnvironmentVariableW(name, text.data(), variableBufferSize);
    if (length == 0 || length >= variableBufferSize) return {};
    text.resize(length);
    return {std::move(text)};
}

std::vector<std::wstring> DriveRoots() {
    std::vector<std::wstring> roots;
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) roots.push_back(std::wstring(1, letter) + L":\\");
    return roots;
}

std::filesystem::path JoinStoredPath(const std::filesystem::path& base, const std::wstring& text) {
    return base / std::filesystem::path(text);
}

}  // namespace Platform
