// A profile file of its own for each test of this folder.
#pragma once

#include "Platform/Interface/Paths.h"
#include "tests/support/GameFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

class ProfileTest : public testing::Test {
protected:
    std::wstring Name() const { return Platform::TextFromPath(path); }

    std::wstring Read(const std::wstring& key, const std::wstring& fallback = L"(default)") const {
        std::wstring buffer(32768, L'\0');
        buffer.resize(GetPrivateProfileStringW(L"Launcher", key.c_str(), fallback.c_str(), buffer.data(),
                                               static_cast<DWORD>(buffer.size()), Name().c_str()));
        return buffer;
    }

    UINT ReadInt(const std::wstring& key, INT fallback = 4) const {
        return GetPrivateProfileIntW(L"Launcher", key.c_str(), fallback, Name().c_str());
    }

    bool Write(const std::wstring& key, const std::wstring& value) const {
        SetLastError(ERROR_SUCCESS);
        return WritePrivateProfileStringW(L"Launcher", key.c_str(), value.c_str(), Name().c_str()) != FALSE;
    }

    /// What lies in the folder, by name.
    std::string Entries() const {
        std::string names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            names += entry.path().filename().native() + " ";
        }
        return names;
    }

    TemporaryFolder folder;
    std::filesystem::path path = folder / "launcher.ini";
};
