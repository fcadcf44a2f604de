// A folder of its own for what a measured launcher writes, so that the player's choices stay as they are.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

/// Holds for programs started while it lives; the folder goes with it.
class PrivateState {
public:
    PrivateState() {
        std::string name = (std::filesystem::temp_directory_path() / "velorinth-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the launcher's state");
        folder_ = name;
        setenv("LOCALAPPDATA", name.c_str(), 1);
    }
    ~PrivateState() {
        unsetenv("LOCALAPPDATA");
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    PrivateState(const PrivateState&) = delete;
    PrivateState& operator=(const PrivateState&) = delete;

private:
    std::filesystem::path folder_;
};
