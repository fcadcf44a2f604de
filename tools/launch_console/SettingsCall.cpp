#include "launcher/Settings/Settings.h"
#include "tools/launch_console/Calls.h"
#include "tools/launch_console/Output.h"

namespace LaunchConsole {

Status Settings(const Arguments& arguments, Output& output, std::ostream&) {
    if (arguments.Has(L"--windowed") && arguments.Has(L"--fullscreen")) {
        throw WrongUsage("--windowed and --fullscreen exclude each other.");
    }
    // All that can be wrong usage comes before the first look at the file, which makes its folder.
    const bool modern = ModernDriver(arguments, true);
    const std::int32_t mode = arguments.Has(L"--mode") ? SignedNumber(arguments.Value(L"--mode")) : 0;

    LauncherSettings settings = LoadSettings();
    if (arguments.Has(L"--folder")) settings.Folder = arguments.Value(L"--folder");
    if (arguments.Has(L"--driver")) settings.Modern = modern;
    if (arguments.Has(L"--mode")) settings.Mode = mode;
    if (arguments.Has(L"--windowed")) settings.Fullscreen = false;
    if (arguments.Has(L"--fullscreen")) settings.Fullscreen = true;
    if (!arguments.Plain()) SaveSettings(settings);

    output.Write(Record{{"folder", Text(settings.Folder)},
                        {"modern", settings.Modern},
                        {"fullscreen", settings.Fullscreen},
                        {"mode", settings.Mode}});
    return Status::Positive;
}

}  // namespace LaunchConsole
