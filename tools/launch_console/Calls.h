// The table of calls, and the functions behind it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "tools/launch_console/Arguments.h"

namespace LaunchConsole {

class Output;

/// The exit status of the program.
enum class Status { Positive = 0, Negative = 1, WrongUsage = 2 };

inline Status StatusOf(bool positive) {
    return positive ? Status::Positive : Status::Negative;
}

struct Call {
    std::wstring name;
    Syntax syntax;
    /// What a call throws ends it with its text on standard error: WrongUsage with status 2, others with 1.
    Status (*run)(const Arguments& arguments, Output& output, std::ostream& err);
};

/// The call that the first word names. Throws WrongUsage.
const Call& FindCall(const std::vector<std::wstring>& words);

// DiscoveryCalls.cpp
Status Validate(const Arguments& arguments, Output& output, std::ostream& err);
Status Find(const Arguments& arguments, Output& output, std::ostream& err);
Status Candidates(const Arguments& arguments, Output& output, std::ostream& err);
Status Browse(const Arguments& arguments, Output& output, std::ostream& err);
Status Values(const Arguments& arguments, Output& output, std::ostream& err);
Status Pe(const Arguments& arguments, Output& output, std::ostream& err);
Status Pak(const Arguments& arguments, Output& output, std::ostream& err);

// LaunchCalls.cpp
Status RuntimePath(const Arguments& arguments, Output& output, std::ostream& err);
Status Install(const Arguments& arguments, Output& output, std::ostream& err);
Status Running(const Arguments& arguments, Output& output, std::ostream& err);
Status Start(const Arguments& arguments, Output& output, std::ostream& err);

// SettingsCall.cpp
Status Settings(const Arguments& arguments, Output& output, std::ostream& err);

/// Whether the value of --driver asks for KVR2; `otherwise` when it isn't given. Throws WrongUsage for another name.
bool ModernDriver(const Arguments& arguments, bool otherwise);

}  // namespace LaunchConsole
