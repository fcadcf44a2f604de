#include "Platform/Linux/Dialog/ChooserProgram.h"

#include "Platform/Linux/Base/Trace.h"
#include "Platform/Linux/Dialog/ChooserProcess.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <system_error>

namespace Platform {

namespace {

std::string_view Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

// Calls `visit` with each part of a list that colons separate, until it returns true.
template <class Visit>
void ForEachPart(std::string_view list, Visit visit) {
    while (!list.empty()) {
        const std::string_view part = list.substr(0, list.find(':'));
        list.remove_prefix(part.size() < list.size() ? part.size() + 1 : part.size());
        if (visit(part)) return;
    }
}

std::optional<std::string> FindOnPath(std::string_view name) {
    std::optional<std::string> found;
    ForEachPart(Variable("PATH"), [&](std::string_view folder) {
        if (!folder.starts_with('/')) return false;  // Never what happens to lie in the working directory.
        const std::string path = std::string(folder) + '/' + std::string(name);
        struct stat status {};
        if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
        if (::access(path.c_str(), X_OK) != 0) return false;
        found = path;
        return true;
    });
    return found;
}

bool IsKde() {
    bool kde = false;
    ForEachPart(Variable("XDG_CURRENT_DESKTOP"), [&](std::string_view desktop) { return kde = desktop == "KDE"; });
    return kde;
}

std::string WithSlash(const std::string& folder) {
    return folder.ends_with('/') ? folder : folder + '/';
}

}  // namespace

std::optional<ChooserProgram> FindChooserProgram() {
    // Both programs exit with 1 when they find no display, which would pass for a cancel.
    if (Variable("DISPLAY").empty() && Variable("WAYLAND_DISPLAY").empty()) return std::nullopt;
    auto zenity = FindOnPath("zenity");
    auto kdialog = FindOnPath("kdialog");
    if (kdialog && (IsKde() || !zenity)) return ChooserProgram{ChooserProgram::Kind::KDialog, std::move(*kdialog)};
    if (zenity) return ChooserProgram{ChooserProgram::Kind::Zenity, std::move(*zenity)};
    return std::nullopt;
}

std::vector<std::string> ChooserArguments(ChooserProgram::Kind kind, const FolderRequest& request) {
    std::vector<std::string> arguments;
    const std::string owner = request.ownerXWindow ? std::to_string(*request.ownerXWindow) : "";
    if (kind == ChooserProgram::Kind::Zenity) {
        // Its option for a button's label is not for this dialog: it would refuse to show one.
        arguments = {"--file-selection", "--directory", "--modal", "--title=" + request.title};
        if (!request.startFolder.empty()) arguments.push_back("--filename=" + WithSlash(request.startFolder));
        if (!owner.empty()) arguments.push_back("--attach=" + owner);
    } else {
        // It has no option for the button's label.
        arguments = {"--title", request.title};
        if (!owner.empty()) arguments.insert(arguments.end(), {"--attach", owner});
        arguments.push_back("--getexistingdirectory");
        if (!request.startFolder.empty()) arguments.push_back(request.startFolder);
    }
    return arguments;
}

FolderAnswer RunChooserProgram(const ChooserProgram& program, const FolderRequest& request, OwnerWatch& owner) try {
    ChooserProcess process(program.path, ChooserArguments(program.kind, request));
    switch (process.Wait(owner)) {
        case ChooserProcess::End::OwnerGone:
            return {kCancelled, {}};
        case ChooserProcess::End::Died:
            TraceFailure(program.path, "it died");
            return {E_FAIL, {}};
        case ChooserProcess::End::Exited:
            break;
    }
    if (process.ExitStatus() == 1) return {kCancelled, {}};
    std::string path = process.Output();
    if (path.ends_with('\n')) path.pop_back();  // One only: a folder's name may end in another.
    if (process.ExitStatus() != 0 || !path.starts_with('/')) {
        TraceFailure(program.path, "exit status " + std::to_string(process.ExitStatus()));
        return {E_FAIL, {}};
    }
    return {S_OK, std::move(path)};
} catch (const std::system_error& error) {
    TraceFailure(program.path, error.what());
    return {E_FAIL, {}};
}

}  // namespace Platform
