#include "Platform/Linux/Processes/Supervisor/ChildProcesses.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace Platform {

namespace {

[[noreturn]] void ThrowErrno(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

std::string NameOf(pid_t id) {
    const FileDescriptor file(open(("/proc/" + std::to_string(id) + "/comm").c_str(), O_RDONLY | O_CLOEXEC));
    std::array<char, 32> text{};
    const ssize_t size = file ? read(file.Get(), text.data(), text.size()) : 0;
    std::string name(text.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    if (name.ends_with('\n')) name.pop_back();
    return name;
}

/// In the new process: from here to the end of the process.
[[noreturn]] void Become(const std::vector<char*>& arguments, int input, int output, OnDeath onDeath, pid_t parent) {
    if (onDeath == OnDeath::Kill) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) _exit(127);  // It died before the line above took effect.
    }
    // Signals that this process ignores or blocks must not stay so in Wine and the program.
    for (const int number : {SIGHUP, SIGINT, SIGPIPE}) signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (dup2(input < 0 ? null : input, STDIN_FILENO) < 0) _exit(127);
    if (dup2(output < 0 ? null : output, STDOUT_FILENO) < 0) _exit(127);
    execv(arguments[0], arguments.data());
    _exit(127);
}

}  // namespace

ChildProcesses::ChildProcesses() {
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    sigset_t ended;
    sigemptyset(&ended);
    sigaddset(&ended, SIGCHLD);
    if (sigprocmask(SIG_BLOCK, &ended, nullptr) != 0) ThrowErrno("sigprocmask");
    signals_.Reset(signalfd(-1, &ended, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!signals_) ThrowErrno("signalfd");
}

pid_t ChildProcesses::Start(const std::vector<std::string>& command, int input, int output, OnDeath onDeath) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const pid_t self = getpid();
    const pid_t child = fork();
    if (child < 0) ThrowErrno("fork");
    if (child == 0) Become(arguments, input, output, onDeath, self);
    return child;
}

std::vector<EndedChild> ChildProcesses::Reap() {
    // One signal may stand for several ends: first the signals are taken, then everything that has ended.
    signalfd_siginfo taken{};
    while (read(signals_.Get(), &taken, sizeof taken) > 0) {}
    std::vector<EndedChild> ended;
    for (;;) {
        siginfo_t found{};
        if (waitid(P_ALL, 0, &found, WEXITED | WNOHANG | WNOWAIT) != 0 || found.si_pid == 0) break;
        EndedChild child{.id = found.si_pid, .name = NameOf(found.si_pid), .status = 0};
        if (waitpid(child.id, &child.status, 0) == child.id) ended.push_back(std::move(child));
    }
    return ended;
}

int ChildProcesses::WaitFor(pid_t id) {
    for (;;) {
        for (const EndedChild& child : Reap()) {
            if (child.id == id) return child.status;
        }
        pollfd wait{.fd = signals_.Get(), .events = POLLIN, .revents = 0};
        poll(&wait, 1, -1);
    }
}

}  // namespace Platform
