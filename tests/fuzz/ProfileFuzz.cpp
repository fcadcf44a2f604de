// Reads arbitrary bytes as a profile file, edits it, and reads what the edit made.
//
// Input: a byte for the length of the new value, the value in UTF-8, then the file.
#include "Platform/Linux/Profile/ProfileText.h"
#include "Platform/Text/Unicode.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

using Platform::ProfileText;

namespace {

void Require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.empty()) return 0;
    const std::size_t valueSize = static_cast<unsigned char>(input.front());
    input.remove_prefix(1);
    const std::wstring value = Platform::WideFromNative(input.substr(0, valueSize));
    const std::string_view file = input.substr(std::min(valueSize, input.size()));

    ProfileText text(file);
    Require(text.Bytes() == file, "unedited content must come out as it went in");
    const auto other = text.Value(L"Launcher", L"Mode");
    if (!ProfileText::CanHold(L"Launcher", L"Folder", value)) return 0;

    const bool changed = text.SetValue(L"Launcher", L"Folder", value);
    const std::string written = text.Bytes();
    Require(changed || written == file, "no change must be none");

    // What a line with this value reads as, by the simplest file that has one.
    ProfileText simplest("");
    simplest.SetValue(L"Launcher", L"Folder", value);
    const auto expected = ProfileText(simplest.Bytes()).Value(L"Launcher", L"Folder");
    ProfileText again(written);
    Require(expected.has_value(), "a written key must exist");
    Require(again.Value(L"Launcher", L"Folder") == expected, "what was written must come back");
    Require(again.Value(L"Launcher", L"Mode") == other, "other keys must stay");
    Require(!again.SetValue(L"Launcher", L"Folder", value), "writing the same again must change nothing");
    return 0;
}
