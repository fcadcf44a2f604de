// The Velorinth Launcher for Quake II.

#include "launcher/Entry/Entry.h"
#include "launcher/Entry/ToolkitSystem.h"
#include "launcher/LauncherScene/LauncherScene.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    return static_cast<int>(RunLauncher<ToolkitSystem<LauncherScene>>(instance, showCommand));
}
