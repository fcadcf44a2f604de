#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>

#include "tools/launch_console/Console.h"

extern "C" int wmain(int count, wchar_t** words) {
    // Lines end as they do on Linux, whoever reads them.
    _setmode(_fileno(stdout), _O_BINARY);
    const std::vector<std::wstring> arguments(words + (count > 0 ? 1 : 0), words + count);
    return LaunchConsole::RunConsole(arguments, std::cout, std::cerr);
}
