#include "tools/launch_console/Calls.h"

#include "Platform/Text/Unicode.h"

namespace LaunchConsole {

const Call& FindCall(const std::vector<std::wstring>& words) {
    static const std::vector<Call> calls = {
        {L"validate", {{"DIR"}, {}, {}}, Validate},
        {L"find", {{}, {}, {L"--preferred"}}, Find},
        {L"candidates", {}, Candidates},
        {L"browse", {{}, {}, {L"--folder"}}, Browse},
        {L"values", {{"FILE", "KEY"}, {}, {}}, Values},
        {L"pe", {{"FILE"}, {}, {}}, Pe},
        {L"pak", {{"FILE"}, {}, {}}, Pak},
        {L"runtime-path", {{"DIR"}, {}, {}}, RuntimePath},
        {L"install", {{"SOURCE", "TARGET"}, {}, {}}, Install},
        {L"running", {{"IMAGEPATH"}, {}, {}}, Running},
        {L"start", {{"DIR"}, {L"--windowed", L"--smoke", L"--detach"}, {L"--driver", L"--mode"}}, Start},
        {L"settings", {{}, {L"--windowed", L"--fullscreen"}, {L"--folder", L"--driver", L"--mode"}}, Settings},
    };
    if (words.empty()) throw WrongUsage("What to do is missing.");
    for (const Call& call : calls) {
        if (call.name == words.front()) return call;
    }
    throw WrongUsage("Unknown: " + Platform::Utf8FromWide(words.front()));
}

bool ModernDriver(const Arguments& arguments, bool otherwise) {
    if (!arguments.Has(L"--driver")) return otherwise;
    const std::wstring& name = arguments.Value(L"--driver");
    if (name == L"KVR2") return true;
    if (name == L"KVR") return false;
    throw WrongUsage("There is no driver of this name: \"" + Platform::Utf8FromWide(name) + "\"");
}

}  // namespace LaunchConsole
