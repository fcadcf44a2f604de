// The dialog programs of the desktops, for portals that can't open at a given folder.
#pragma once

#include "Platform/Linux/Dialog/FolderRequest.h"

#include <optional>
#include <string>
#include <vector>

namespace Platform {

class OwnerWatch;

struct ChooserProgram {
    enum class Kind { Zenity, KDialog };

    Kind kind;
    std::string path;
};

/// The program on PATH that suits the desktop best; none without a display to show it on.
std::optional<ChooserProgram> FindChooserProgram();

/// The arguments that make the program ask for a folder.
std::vector<std::string> ChooserArguments(ChooserProgram::Kind kind, const FolderRequest& request);

/// Shows the program's dialog and waits for its end, or for the owner's, which counts as a dismissal. Fails where the
/// program can't be started, dies, or ends in another way than by a choice or a dismissal.
FolderAnswer RunChooserProgram(const ChooserProgram& program, const FolderRequest& request, OwnerWatch& owner);

}  // namespace Platform
