// The start of a program with windows: the application writes wWinMain, as on Windows.
#include <windows.h>

int main() {
    wchar_t noArguments[] = L"";
    return wWinMain(nullptr, nullptr, noArguments, SW_SHOWNORMAL);
}
