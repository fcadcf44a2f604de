// install_once SOURCE TARGET: installs a driver between two system calls that a trace can be cut at. Exit status 1 and
// the reason on standard error when the installation fails.
#include "launcher/GameLaunch/DriverInstall.h"

#include <unistd.h>

#include <exception>
#include <iostream>

namespace {

void Mark(const char* place) {
    static_cast<void>(!access(place, F_OK));
}

int Install(const char* source, const char* target) {
    try {
        GameLaunch::InstallDriver(source, target);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) return 2;
    Mark("/installation-begins");
    const int status = Install(arguments[1], arguments[2]);
    Mark("/installation-ends");
    return status;
}
