#include <windows.h>

#include "Platform/Interface/Paths.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

namespace {

/// One argument as a Windows command line holds it: in quotes where it has blanks, quotes escaped.
void Append(std::wstring& line, const std::wstring& argument) {
    if (!line.empty()) line += L' ';
    if (!argument.empty() && argument.find_first_of(L" \t\"") == std::wstring::npos) {
        line += argument;
        return;
    }
    line += L'"';
    std::size_t backslashes = 0;
    for (const wchar_t character : argument) {
        // Backslashes count double before a quote only.
        if (character == L'"') line.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        line += character;
    }
    line.append(backslashes, L'\\');
    line += L'"';
}

std::wstring ReadCommandLine() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::wstring line;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\0', start), bytes.size());
        Append(line, Platform::TextFromPath(bytes.substr(start, end - start)));
        start = end + 1;
    }
    return line;
}

}  // namespace

LPWSTR GetCommandLineW() noexcept {
    static std::wstring line = ReadCommandLine();
    return line.data();
}
