#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace Platform {

/// Why a program can't be started: the system error code, and in what() one line for the player.
class StartFailure : public std::runtime_error {
public:
    StartFailure(DWORD code, const std::string& explanation) : std::runtime_error(explanation), code_(code) {}

    DWORD Code() const { return code_; }

private:
    DWORD code_;
};

}  // namespace Platform
