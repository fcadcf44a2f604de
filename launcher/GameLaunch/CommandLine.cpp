#include "launcher/GameLaunch/CommandLine.h"

namespace GameLaunch {

std::wstring DriverFileName(bool modern) {
    return modern ? L"KVR2.dll" : L"KVR.dll";
}

std::wstring BuildCommandLine(bool modern, std::uint32_t displayMode, bool fullscreen, bool smoke) {
    std::wstring line = L"quake2.exe +set vid_ref gl +set gl_driver ";
    line += DriverFileName(modern);
    line += L" +set gl_mode ";
    line += std::to_wstring(displayMode);
    line += L" +set vid_fullscreen ";
    line += fullscreen ? L"1" : L"0";
    line += L" +set logfile 1";
    if (smoke) {
        // Loads a map at a fixed frame time, lets twenty frames pass, takes a screenshot and quits.
        line += L" +set fixedtime 100 +map base1";
        for (int frame = 0; frame < 20; ++frame) line += L" +wait";
        line += L" +screenshot +wait +quit";
    }
    return line;
}

std::wstring EndMessage(std::uint32_t exitCode) {
    if (exitCode == 0) return L"Quake II closed.";
    return L"Quake II exited with error " + std::to_wstring(exitCode) +
           L". See baseq2/qconsole.log in the game folder.";
}

}  // namespace GameLaunch
