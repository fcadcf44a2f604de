// Stands in for the engine: writes its command line to probe.txt in its working directory and lives for a minute.
#include <windows.h>

#include <cstdio>

int main() {
    std::FILE* const file = std::fopen("probe.tmp", "w");
    if (!file) return 1;
    std::fputs(GetCommandLineA(), file);
    std::fclose(file);
    if (!MoveFileA("probe.tmp", "probe.txt")) return 1;
    Sleep(60000);
}
