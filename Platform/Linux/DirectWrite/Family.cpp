#include "Platform/Linux/DirectWrite/Family.h"

#include <array>
#include <memory>
#include <string_view>

namespace Platform::DirectWrite {

namespace {

struct PatternDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;

// Stand-ins for "Segoe UI" and the size at which their text is as wide: docs/fonts.md has the measurements.
struct StandIn {
    const char* family;
    float sizeFactor;
};
constexpr std::array standIns{StandIn{"Open Sans", 0.95F}, StandIn{"Noto Sans Display", 0.993F},
                              StandIn{"Noto Sans", 0.93F}, StandIn{"DejaVu Sans", 0.877F}};

// 2210 and 514 of 2048 units.
constexpr FamilyChoice::Line segoeLine{1.0791F, 0.2510F};

// A family of which no configuration has heard.
constexpr const char* unheardOf = "velorinth-no-such-family";

const FcChar8* Text(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

bool SameFamily(const FcChar8* a, const char* b) {
    return FcStrCmpIgnoreCase(a, Text(b)) == 0;
}

bool IsInstalled(FcConfig* config, const char* family) {
    for (const FcSetName set : {FcSetSystem, FcSetApplication}) {
        const FcFontSet* const fonts = FcConfigGetFonts(config, set);
        for (int i = 0; fonts && i < fonts->nfont; ++i) {
            FcChar8* name = nullptr;
            for (int n = 0; FcPatternGetString(fonts->fonts[i], FC_FAMILY, n, &name) == FcResultMatch; ++n) {
                if (SameFamily(name, family)) return true;
            }
        }
    }
    return false;
}

// The family that the system's configuration puts in place of another.
std::string Substitute(FcConfig* config, const char* family) {
    const Pattern pattern(FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, family, nullptr));
    if (!pattern || !FcConfigSubstitute(config, pattern.get(), FcMatchPattern)) return {};
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    const Pattern match(FcFontMatch(config, pattern.get(), &result));
    FcChar8* name = nullptr;
    if (!match || FcPatternGetString(match.get(), FC_FAMILY, 0, &name) != FcResultMatch) return {};
    return reinterpret_cast<const char*>(name);
}

}  // namespace

FamilyChoice ChooseFamily(FcConfig* config, const std::string& family) {
    if (IsInstalled(config, family.c_str())) return {family, 1.0F, std::nullopt};
    constexpr std::string_view segoe = "Segoe UI";
    const bool isSegoe = FcStrCmpIgnoreCase(Text(family.substr(0, segoe.size()).c_str()), Text(segoe.data())) == 0;
    if (!isSegoe && Substitute(config, family.c_str()) != Substitute(config, unheardOf)) {
        return {family, 1.0F, std::nullopt};
    }
    for (const StandIn& standIn : standIns) {
        if (IsInstalled(config, standIn.family)) return {standIn.family, standIn.sizeFactor, segoeLine};
    }
    return {"sans-serif", 1.0F, std::nullopt};
}

}  // namespace Platform::DirectWrite
