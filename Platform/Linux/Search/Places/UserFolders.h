// The user's folders. The environment is read at each call.
#pragma once

#include <filesystem>

namespace Platform {

/// HOME if that is an absolute path, else the home folder of the user database; empty where there is neither.
std::filesystem::path HomeFolder();

/// XDG_DATA_HOME if that is an absolute path, else .local/share in the home folder; empty without a home folder.
std::filesystem::path DataFolder();

/// An environment variable that holds an absolute path, without trailing separators; empty where it doesn't.
std::filesystem::path AbsolutePathVariable(const char* name);

}  // namespace Platform
