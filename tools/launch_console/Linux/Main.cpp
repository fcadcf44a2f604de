#include <iostream>

#include "Platform/Text/Unicode.h"
#include "tools/launch_console/Console.h"

int main(int count, char** words) {
    std::vector<std::wstring> arguments;
    // Arguments are bytes here; names that are not UTF-8 come through whole.
    for (int i = 1; i < count; ++i) arguments.push_back(Platform::WideFromNative(words[i]));
    return LaunchConsole::RunConsole(arguments, std::cout, std::cerr);
}
