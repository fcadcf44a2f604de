#include <windows.h>

#include <ostream>

#include "launcher/GameLaunch/CommandLine.h"
#include "launcher/GameLaunch/DriverInstall.h"
#include "launcher/GameLaunch/Start.h"
#include "launcher/GameLaunch/StateFolder.h"
#include "Platform/Interface/Paths.h"
#include "tools/launch_console/Calls.h"
#include "tools/launch_console/Output.h"

namespace LaunchConsole {

namespace {

constexpr std::uint32_t DefaultDisplayMode = 4;

void ReportEnd(HANDLE process, Output& output, std::ostream& err) {
    DWORD exitCode = 0;
    if (WaitForSingleObject(process, INFINITE) != WAIT_OBJECT_0 || !GetExitCodeProcess(process, &exitCode)) {
        err << "The game's exit code could not be had (error " << std::uint32_t{GetLastError()} << ").\n";
        return;
    }
    const std::uint32_t code{exitCode};
    output.Write(Record{{"exitCode", code}, {"message", Text(GameLaunch::EndMessage(code))}});
}

}  // namespace

Status RuntimePath(const Arguments& arguments, Output& output, std::ostream&) {
    const std::filesystem::path path = GameLaunch::RuntimePathFor(Platform::PathFromText(arguments.Positional(0)));
    output.Write(Record{{"runtimePath", Text(Platform::TextFromPath(path))}});
    return Status::Positive;
}

Status Install(const Arguments& arguments, Output& output, std::ostream&) {
    try {
        GameLaunch::InstallDriver(Platform::PathFromText(arguments.Positional(0)),
                                  Platform::PathFromText(arguments.Positional(1)));
    } catch (const std::exception& error) {
        output.Write(Record{{"installed", false}, {"error", error.what()}});
        return Status::Negative;
    }
    output.Write(Record{{"installed", true}});
    return Status::Positive;
}

Status Running(const Arguments& arguments, Output& output, std::ostream&) {
    const bool running = GameLaunch::FindRunningProcess(Platform::PathFromText(arguments.Positional(0)), 0) != nullptr;
    output.Write(Record{{"running", running}});
    return StatusOf(running);
}

Status Start(const Arguments& arguments, Output& output, std::ostream& err) {
    const bool modern = ModernDriver(arguments, true);
    const std::uint32_t mode =
        arguments.Has(L"--mode") ? UnsignedNumber(arguments.Value(L"--mode")) : DefaultDisplayMode;
    const GameLaunch::Result result =
        GameLaunch::Start(Platform::PathFromText(arguments.Positional(0)), modern, DWORD{mode},
                          !arguments.Has(L"--windowed"), arguments.Has(L"--smoke"));
    output.Write(Record{
        {"process", result.Process != nullptr}, {"message", Text(result.Message)}, {"folder", Text(result.Folder)}});
    if (result.Process && !arguments.Has(L"--detach")) ReportEnd(result.Process->Process, output, err);
    return StatusOf(result.Process != nullptr);
}

}  // namespace LaunchConsole
