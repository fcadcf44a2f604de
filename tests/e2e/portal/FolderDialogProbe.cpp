// Picks a game folder as the launcher does, for an X11 window of another program:
//   folder_dialog_probe [--owner XID] [--folder DIR]
// Prints what comes of it as name=value lines.

#include "launcher/GameDiscovery/FolderPicker.h"
#include "Platform/Linux/Window/Registry/WindowRegistry.h"
#include "Platform/Text/Unicode.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>

namespace {

void Print(const char* name, const std::wstring& value) {
    std::printf("%s=%s\n", name, Platform::NativeFromWide(value).c_str());
}

}  // namespace

int main(int count, char** arguments) {
    HWND owner = GetDesktopWindow();
    std::filesystem::path folder;
    for (int i = 1; i + 1 < count; i += 2) {
        const std::string option = arguments[i];
        if (option == "--owner") {
            owner =
                Platform::RegisterNativeWindow(static_cast<std::uint32_t>(std::stoul(arguments[i + 1], nullptr, 0)));
        } else if (option == "--folder") {
            folder = arguments[i + 1];
        }
    }
    GameDiscovery::Result result;
    // A worker of its own, as the launcher's task is.
    std::thread([&] { result = GameDiscovery::Discover(true, owner, folder); }).join();
    Print("folder", result.Folder);
    Print("message", result.Message);
    Print("selected", result.SelectedFolder);
    std::printf("cancelled=%d\n", result.Cancelled ? 1 : 0);
    return result.Folder.empty() ? 1 : 0;
}
