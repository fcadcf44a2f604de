#pragma once

#include "launcher/GameDiscovery/Search.h"

#include <map>
#include <string>
#include <vector>

/// Search places under a test's control. Each question is recorded.
class FakeSources final : public GameDiscovery::SearchSources {
public:
    using Texts = std::vector<std::wstring>;

    std::map<std::wstring, Texts> registry;   ///< By "HKCU" or "HKLM", a backslash, the subkey, a colon, the value.
    std::map<std::wstring, Texts> variables;  ///< By name.
    Texts driveRoots;
    std::map<std::wstring, UINT> driveTypes;  ///< DRIVE_FIXED for those that aren't here.
    Texts questions;

    Texts RegistryStrings(HKEY root, const wchar_t* subkey, const wchar_t* value) override {
        std::wstring name = root == HKEY_CURRENT_USER ? L"HKCU\\" : root == HKEY_LOCAL_MACHINE ? L"HKLM\\" : L"?\\";
        name += std::wstring(subkey) + L':' + value;
        questions.push_back(name);
        return registry[name];
    }
    Texts FolderVariables(const wchar_t* name) override {
        questions.push_back(std::wstring(L"%") + name + L'%');
        return variables[name];
    }
    Texts DriveRoots() override {
        questions.emplace_back(L"drives");
        return driveRoots;
    }
    UINT DriveType(const wchar_t* root) override {
        const auto found = driveTypes.find(root);
        return found == driveTypes.end() ? DRIVE_FIXED : found->second;
    }
};
