#include "Platform/Linux/Dialog/ChooserProcess.h"

#include "Platform/Linux/Dialog/OwnerWatch.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <system_error>

namespace Platform {

namespace {

constexpr std::size_t kLongestOutput = std::size_t{16} * PATH_MAX;

void Check(int error, const char* what) {
    if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

struct SpawnSettings {
    SpawnSettings() {
        Check(posix_spawn_file_actions_init(&actions), "posix_spawn_file_actions_init");
        Check(posix_spawnattr_init(&attributes), "posix_spawnattr_init");
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

}  // namespace

ChooserProcess::ChooserProcess(const std::string& program, const std::vector<std::string>& arguments) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe2");
    pipe_.Reset(ends[0]);
    const FileDescriptor writeEnd(ends[1]);
    if (::fcntl(pipe_.Get(), F_SETFL, O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "fcntl");
    }

    SpawnSettings settings;
    Check(posix_spawn_file_actions_addopen(&settings.actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0), "open");
    Check(posix_spawn_file_actions_adddup2(&settings.actions, writeEnd.Get(), STDOUT_FILENO), "dup2");
    // The child starts with no signal blocked or ignored, whatever the worker's thread does with its own.
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    Check(posix_spawnattr_setsigmask(&settings.attributes, &none), "posix_spawnattr_setsigmask");
    Check(posix_spawnattr_setsigdefault(&settings.attributes, &all), "posix_spawnattr_setsigdefault");
    Check(posix_spawnattr_setpgroup(&settings.attributes, 0), "posix_spawnattr_setpgroup");
    Check(posix_spawnattr_setflags(&settings.attributes,
                                   POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF),
          "posix_spawnattr_setflags");

    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    Check(posix_spawn(&process_, program.c_str(), &settings.actions, &settings.attributes, argv.data(), environ),
          program.c_str());
    pidfd_.Reset(static_cast<int>(::syscall(SYS_pidfd_open, process_, 0)));
}

ChooserProcess::~ChooserProcess() {
    if (process_ > 0) Kill();
}

ChooserProcess::End ChooserProcess::Wait(OwnerWatch& owner) {
    while (!owner.Gone()) {
        std::array<pollfd, 3> events{
            {{owner.Descriptor(), POLLIN, 0}, {pidfd_.Get(), POLLIN, 0}, {pipe_.Get(), POLLIN, 0}}};
        // Without a pidfd (kernels before 5.3, some sandboxes) the child's end has to be asked for.
        ::poll(events.data(), events.size(), pidfd_ ? -1 : 200);
        const bool ended = Reap(Hang::No);
        if (!ReadOutput()) {
            if (!ended) Kill();
            return End::Died;
        }
        if (ended) return exitStatus_ >= 0 ? End::Exited : End::Died;
    }
    Kill();
    return End::OwnerGone;
}

// Takes what lies in the pipe. False when it is too much.
bool ChooserProcess::ReadOutput() {
    std::array<char, 4096> buffer;
    while (pipe_) {
        const ssize_t count = ::read(pipe_.Get(), buffer.data(), buffer.size());
        if (count > 0) {
            output_.append(buffer.data(), static_cast<std::size_t>(count));
            if (output_.size() > kLongestOutput) return false;
        } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
            pipe_.Reset();  // Its end stays readable for ever: nothing to poll for any more.
        } else if (errno == EAGAIN) {
            break;
        }
    }
    return true;
}

// Whether the child has ended; if so its exit status is known, and it is no zombie any more.
bool ChooserProcess::Reap(Hang hang) {
    int status = 0;
    pid_t reaped = 0;
    do {
        reaped = ::waitpid(process_, &status, hang == Hang::Yes ? 0 : WNOHANG);
    } while (reaped < 0 && errno == EINTR);
    if (reaped == 0) return false;
    process_ = -1;
    if (reaped > 0 && WIFEXITED(status)) exitStatus_ = WEXITSTATUS(status);
    return true;
}

// A dialog has nothing to save, and one that hangs must go as well.
void ChooserProcess::Kill() {
    ::kill(-process_, SIGKILL);
    Reap(Hang::Yes);
}

}  // namespace Platform
