// wine_supervisor: holds what belongs to a program that runs under Wine, for exactly as long as it runs. It is started
// by CreateProcessW with the control socket as descriptor 3 and is of no use by hand.

#include "Platform/Linux/Base/FileDescriptor.h"
#include "Platform/Linux/Processes/Supervisor/Supervisor.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <filesystem>

namespace {

constexpr int controlDescriptor = 3;

bool IsSocket(int descriptor) {
    int type = 0;
    socklen_t size = sizeof type;
    return getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_SEQPACKET;
}

}  // namespace

int main() try {
    if (!IsSocket(controlDescriptor)) {
        std::fputs("wine_supervisor is started by the launcher.\n", stderr);
        return 2;
    }
    fcntl(controlDescriptor, F_SETFD, FD_CLOEXEC);

    // Detached from the caller, which needs to reap only this short-lived process. Not the leader of its session, so
    // that no terminal can become its own.
    setsid();
    const pid_t child = fork();
    if (child != 0) _exit(child > 0 ? 0 : 1);
    // What ends the caller from its terminal isn't meant for the game. SIGTERM is: it is sent to this process alone.
    for (const int number : {SIGHUP, SIGINT, SIGPIPE}) signal(number, SIG_IGN);

    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe");
    if (chdir("/") != 0) return 1;
    {
        Platform::Supervisor supervisor(Platform::FileDescriptor(controlDescriptor), self.parent_path());
        supervisor.Run();
        // Ends from within: the program has ended, and what is held for it must go now.
        _exit(0);
    }
} catch (const std::exception& failure) {
    std::fprintf(stderr, "wine_supervisor: %s\n", failure.what());
    _exit(1);
}
