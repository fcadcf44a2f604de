#include <windows.h>

#include "launcher/GameDiscovery/FolderPicker.h"
#include "launcher/GameDiscovery/QuotedValues.h"
#include "launcher/GameDiscovery/Search.h"
#include "launcher/GameDiscovery/Validation.h"
#include "Platform/Interface/Paths.h"
#include "Platform/Text/Unicode.h"
#include "tools/launch_console/Calls.h"
#include "tools/launch_console/Output.h"

namespace LaunchConsole {

namespace {

Status Report(const GameDiscovery::Result& result, Output& output) {
    output.Write(Record{{"folder", Text(result.Folder)},
                        {"message", Text(result.Message)},
                        {"cancelled", result.Cancelled},
                        {"selectedFolder", Text(result.SelectedFolder)}});
    return StatusOf(!result.Folder.empty());
}

std::filesystem::path OptionalFolder(const Arguments& arguments, const std::wstring& option) {
    return arguments.Has(option) ? Platform::PathFromText(arguments.Value(option)) : std::filesystem::path();
}

Status ReportValidity(bool valid, Output& output) {
    output.Write(Record{{"valid", valid}});
    return StatusOf(valid);
}

}  // namespace

Status Validate(const Arguments& arguments, Output& output, std::ostream&) {
    GameDiscovery::Result result;
    try {
        result = GameDiscovery::ValidateFolder(Platform::PathFromText(arguments.Positional(0)));
    } catch (const std::exception&) {
        // The sentence with which the discovery task reports what it can't look into.
        result.Message = L"Could not inspect the installation. Try another folder.";
    }
    return Report(result, output);
}

Status Find(const Arguments& arguments, Output& output, std::ostream&) {
    return Report(GameDiscovery::Discover(false, nullptr, OptionalFolder(arguments, L"--preferred")), output);
}

Status Candidates(const Arguments&, Output& output, std::ostream&) {
    Record folders = Record::array();
    for (const std::filesystem::path& folder : GameDiscovery::Candidates()) {
        folders.push_back(Text(Platform::TextFromPath(folder)));
    }
    output.Write(Record{{"candidates", folders}});
    return Status::Positive;
}

Status Browse(const Arguments& arguments, Output& output, std::ostream&) {
    return Report(GameDiscovery::Discover(true, GetDesktopWindow(), OptionalFolder(arguments, L"--folder")), output);
}

Status Values(const Arguments& arguments, Output& output, std::ostream&) {
    const std::string key = Platform::NativeFromWide(arguments.Positional(1));
    if (key.find_first_of("\"\\") != std::string::npos) throw WrongUsage("KEY must hold no quote and no backslash.");
    Record values = Record::array();
    for (const std::string& value :
         GameDiscovery::ReadQuotedValues(Platform::PathFromText(arguments.Positional(0)), key)) {
        values.push_back(value);
    }
    output.Write(Record{{"values", values}});
    return Status::Positive;
}

Status Pe(const Arguments& arguments, Output& output, std::ostream&) {
    return ReportValidity(GameDiscovery::IsClassicPe(Platform::PathFromText(arguments.Positional(0))), output);
}

Status Pak(const Arguments& arguments, Output& output, std::ostream&) {
    return ReportValidity(GameDiscovery::IsValidPak(Platform::PathFromText(arguments.Positional(0))), output);
}

}  // namespace LaunchConsole
