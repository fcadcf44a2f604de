// The start of a program with windows: the application writes wWinMain, as on Windows.
#include <windows.h>

#include <malloc.h>

namespace {

/// Blocks of this size and more, in bytes, go back to the system when they are freed. The pictures of a window are such
/// blocks, of other sizes after each resize. Unless it is told, the C library takes the first ones freed for a sign to
/// keep blocks of up to 32 MiB in its arenas, one for each thread, and the holes between them add up: a window that had
/// been resized a few dozen times stood at twice its memory.
constexpr int kGivenBack = 256 * 1024;

}  // namespace

int main() {
    mallopt(M_MMAP_THRESHOLD, kGivenBack);
    wchar_t noArguments[] = L"";
    return wWinMain(nullptr, nullptr, noArguments, SW_SHOWNORMAL);
}
