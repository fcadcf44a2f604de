// What Wine needs before it can run anything: the program itself, a prefix, an environment.
#pragma once

#include "Platform/Linux/Processes/Supervisor/ChildProcesses.h"

#include <filesystem>
#include <string>

namespace Platform {

/// Variable of Wine's processes that names the engine's file, since their command line doesn't.
constexpr const char* engineImageVariable = "VELORINTH_ENGINE_IMAGE";

/// The `wine` that PATH leads to. Throws StartFailure with ERROR_FILE_NOT_FOUND.
std::string FindWine();

/// Sets this process's environment up for Wine and the engine in one prefix: UTF-8 names whatever the caller's locale,
/// no debug output unless the caller asked for some, no questions to the player. Call it once.
void PrepareEnvironment(const std::filesystem::path& prefix, const std::string& engineImage);

/// The folder of the prefix that a program with this working directory runs in: the one that holds the directory, else
/// the user's own. Throws StartFailure when there is no home folder to have one in.
std::filesystem::path ChoosePrefix(const std::string& workingDirectory);

/// A prefix's folder, on its way to being usable. PrepareEnvironment must have been called for it.
class PrefixSetup {
public:
    PrefixSetup(ChildProcesses& children, std::string wine, std::filesystem::path folder);

    /// Makes the prefix where there is none, asking the player nothing: several seconds. Processes that want the same
    /// prefix at the same time take turns. Throws StartFailure.
    void MakeIfMissing();

    /// Whether the prefix is one for 64-bit and 32-bit programs.
    bool Is64Bit() const;

    /// Fills in the 32-bit libraries of a 64-bit prefix that was made when Wine had none. False when they are there
    /// already, or the prefix has no place for them: then it isn't the prefix that keeps 32-bit programs from running.
    bool AddMissing32BitHalf();

private:
    void Boot(const char* option);

    ChildProcesses& children_;
    std::string wine_;
    std::filesystem::path folder_;
};

}  // namespace Platform
