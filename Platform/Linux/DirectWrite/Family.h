// From the family that is asked for to the one that is installed.
#pragma once

#include <fontconfig/fontconfig.h>

#include <optional>
#include <string>

namespace Platform::DirectWrite {

struct FamilyChoice {
    std::string name;         ///< UTF-8, as Fontconfig knows it.
    float sizeFactor = 1.0F;  ///< Of the size asked for, so that the widths come close.
    /// In ems of the size asked for: what the family that is stood in for has, so that lines are as high as there.
    struct Line {
        float ascent;
        float descent;
    };
    std::optional<Line> line;
};

/// A family that is installed, or for which the system's configuration names one of like widths, is taken as it is. The
/// Windows system family, and any unknown one in its place, becomes the best stand-in that is installed.
FamilyChoice ChooseFamily(FcConfig* config, const std::string& family);

}  // namespace Platform::DirectWrite
