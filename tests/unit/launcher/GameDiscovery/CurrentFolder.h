#pragma once

#include <filesystem>

/// Makes a folder the working directory, and the old one again at the end.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& folder) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(folder);
    }
    ~CurrentFolder() {
        std::error_code ignored;
        std::filesystem::current_path(before_, ignored);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    std::filesystem::path before_;
};
