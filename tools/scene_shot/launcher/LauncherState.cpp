#include "tools/scene_shot/launcher/LauncherState.h"

#include "launcher/LauncherScene/DisplayModes.h"
#include "Platform/Text/Unicode.h"
#include "tools/scene_shot/Options.h"

#include <charconv>
#include <map>

namespace SceneShot {

namespace {

using Kind = LauncherState::Kind;

/// Of a player with the usual place for games.
constexpr const wchar_t* kUsualFolder = L"/home/player/Games/Quake II";

Kind KindNamed(const std::string& name) {
    static const std::map<std::string, Kind> kinds = {
        {"none", Kind::None}, {"invalid", Kind::Invalid}, {"checking", Kind::Checking},   {"ready", Kind::Ready},
        {"menu", Kind::Menu}, {"running", Kind::Running}, {"launching", Kind::Launching},
    };
    const auto found = kinds.find(name);
    if (found == kinds.end()) throw WrongUsage("no such state: \"" + name + "\"");
    return found->second;
}

std::int32_t ModeFrom(const std::string& text) {
    std::int32_t mode = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), mode);
    if (error != std::errc{} || end != text.data() + text.size() || mode < 0 || mode >= kDisplayModeCount) {
        throw WrongUsage("not a display mode from 0 to 9: \"" + text + "\"");
    }
    return mode;
}

bool IsModern(const std::string& driver) {
    if (driver != "KVR" && driver != "KVR2") throw WrongUsage("no such driver: \"" + driver + "\"");
    return driver == "KVR2";
}

/// Of the workflow, in that state.
std::wstring MessageOf(Kind kind) {
    switch (kind) {
        case Kind::None:
        case Kind::Invalid:
            return {};  // At the start, nothing has been searched yet.
        case Kind::Checking:
            return L"Checking Steam libraries and common folders…";
        default:
            return L"Quake II installation verified.";
    }
}

std::wstring StatusOf(Kind kind) {
    switch (kind) {
        case Kind::Launching:
            return L"Installing the selected driver and starting Quake II…";
        case Kind::Running:
            return L"Quake II launched. Its settings will be saved normally.";
        default:
            return {};
    }
}

}  // namespace

std::vector<SceneOption> LauncherOptions(const std::shared_ptr<LauncherState>& state) {
    const auto wide = [](const std::string& text) { return Platform::WideFromUtf8(text); };
    return {
        {"--state", "NAME", "none, invalid, checking, ready, launching, running or menu; none if not told",
         [state](const std::string& v) { state->kind = KindNamed(v); }},
        {"--folder", "PATH", "the game folder; a check that has one began with a valid installation",
         [state, wide](const std::string& v) { state->folder = wide(v); }},
        {"--message", "TEXT", "in place of the state's own message in the installation panel",
         [state, wide](const std::string& v) { state->message = wide(v); }},
        {"--status", "TEXT", "in place of the state's own line below the panel",
         [state, wide](const std::string& v) { state->status = wide(v); }},
        {"--driver", "NAME", "KVR or KVR2", [state](const std::string& v) { state->modern = IsModern(v); }},
        {"--windowed", "", "play in a window", [state](const std::string&) { state->fullscreen = false; }},
        {"--mode", "N", "display mode, 0 to 9", [state](const std::string& v) { state->mode = ModeFrom(v); }},
        {"--developer", "", "with the developer panel, the game simulated",
         [state](const std::string&) { state->developer = true; }},
    };
}

void Assume(LauncherScene& screen, const LauncherState& state) {
    const Kind kind = state.kind;
    const bool hasFolder = state.folder && !state.folder->empty();
    screen.installationValid = kind == Kind::Checking ? hasFolder : kind != Kind::None && kind != Kind::Invalid;
    screen.checking = kind == Kind::Checking;
    screen.launching = kind == Kind::Launching;
    screen.gameRunning = kind == Kind::Running;
    screen.modeMenuOpen = kind == Kind::Menu;
    screen.modernRenderer = state.modern;
    screen.fullscreen = state.fullscreen;
    screen.displayMode = state.mode;
    if (kind != Kind::None) screen.folder = state.folder.value_or(kind == Kind::Checking ? L"" : kUsualFolder);
    screen.installationText = state.message.value_or(state.developer ? L"" : MessageOf(kind));
    screen.statusText = state.status.value_or(state.developer ? L"" : StatusOf(kind));
}

}  // namespace SceneShot
