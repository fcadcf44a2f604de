#pragma once

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <string>

/// A home folder of the test's own, with none of the variables that a search reads set but HOME.
class FakeHome {
public:
    FakeHome();

    const std::filesystem::path& Path() const { return folder_.Path(); }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return folder_ / name; }

    /// Makes a folder below the home folder and returns its path.
    std::filesystem::path MakeFolder(const std::filesystem::path& name) const;

    /// Makes a Wine prefix with the drives C (drive_c) and Z ("/"), and returns its path.
    std::filesystem::path MakePrefix(const std::filesystem::path& name) const;

private:
    TemporaryFolder folder_;
    ScopedEnvironment home_;
    ScopedEnvironment dataHome_;
    ScopedEnvironment winePrefix_;
    ScopedEnvironment programFiles_;
    ScopedEnvironment programFilesX86_;
};

/// Gives a prefix a drive: `letter` as in the link's name, lower case.
void AddDrive(const std::filesystem::path& prefix, char letter, const std::filesystem::path& target);

/// Writes a registry file with one string value. Key and value are as in the file, escapes included.
void WriteRegistry(const std::filesystem::path& file, const std::string& key, const std::string& name,
                   const std::string& value);
