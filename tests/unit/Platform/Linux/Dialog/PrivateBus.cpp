#include "PrivateBus.h"

#include "Platform/Linux/Base/FileDescriptor.h"
#include "tests/support/GameFiles.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace {

std::string Configuration(const std::filesystem::path& socket) {
    return R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=)" +
           socket.native() + R"(</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";
}

}  // namespace

PrivateBus::PrivateBus() {
    WriteBytes(folder_ / "bus.conf", Configuration(folder_ / "bus"));
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    const Platform::FileDescriptor ready(ends[0]);
    Platform::FileDescriptor announce(ends[1]);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, announce.Get(), STDOUT_FILENO);
    const std::string configuration = "--config-file=" + (folder_ / "bus.conf").native();
    char* const arguments[] = {const_cast<char*>("dbus-daemon"),     const_cast<char*>(configuration.c_str()),
                               const_cast<char*>("--nofork"),        const_cast<char*>("--nopidfile"),
                               const_cast<char*>("--print-address"), nullptr};
    const int error = posix_spawnp(&process_, "dbus-daemon", &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error("no dbus-daemon: is the package dbus-daemon installed?");
    announce.Reset();
    // It prints its address once it listens, or leaves the pipe's other end.
    char buffer[256];
    if (::read(ready.Get(), buffer, sizeof buffer) <= 0) {
        Kill();
        throw std::runtime_error("dbus-daemon did not start");
    }
}

PrivateBus::~PrivateBus() {
    Kill();
}

std::string PrivateBus::Address() const {
    return "unix:path=" + (folder_ / "bus").native();
}

void PrivateBus::Kill() {
    if (process_ <= 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
    process_ = -1;
}
