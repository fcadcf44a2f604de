// Programs under Wine in the list of processes, however they were started.

#include "WineTest.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// A player's own `wine PROGRAM` in a folder.
class WineByHand {
public:
    WineByHand(const fs::path& folder, std::string program) {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        for (int stream = 0; stream < 3; ++stream) {
            posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
        }
        posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
        posix_spawn_file_actions_addclosefrom_np(&actions, 3);
        char* const arguments[] = {const_cast<char*>("wine"), program.data(), nullptr};
        EXPECT_EQ(posix_spawnp(&id_, "wine", &actions, nullptr, arguments, environ), 0);
        posix_spawn_file_actions_destroy(&actions);
    }
    ~WineByHand() {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    WineByHand(const WineByHand&) = delete;
    WineByHand& operator=(const WineByHand&) = delete;

private:
    pid_t id_ = 0;
};

class WineList : public WineTest {
protected:
    WineList() { fs::create_directories(engine_.parent_path() / "sub"); }

    std::string WindowsPath() const {
        std::string path = engine_.native();
        std::replace(path.begin(), path.end(), '/', '\\');
        return "Z:" + path;
    }
};

TEST_F(WineList, StartedHereTheEngineIsFoundOnceByItsFullPath) {
    const LaunchedProgram program = Launch(Options());
    ASSERT_TRUE(program.started) << program.error;
    // At once: its helpers, which know its name too, must not be taken for it.
    EXPECT_EQ(ProcessesRunning(engine_).size(), 1U);
    EXPECT_TRUE(ProcessesRunning(game_ / "quake2.exe").empty());
}

TEST_F(WineList, StartedByItsPlainNameInItsFolder) {
    const WineByHand program(engine_.parent_path(), "quake2.exe");
    EXPECT_NE(EngineProcess(), 0U);
}

TEST_F(WineList, StartedByAPathOfThisSystem) {
    const WineByHand program("/", engine_.native());
    EXPECT_NE(EngineProcess(), 0U);
}

TEST_F(WineList, StartedByARelativePath) {
    const WineByHand program(temporary_.Path(), "Engine/quake2.exe");
    EXPECT_NE(EngineProcess(), 0U);
}

TEST_F(WineList, StartedByAWindowsPath) {
    const WineByHand program("/", WindowsPath());
    EXPECT_NE(EngineProcess(), 0U);
}

TEST_F(WineList, StartedByAnotherWindowsProgramUnderAPlainName) {
    const fs::path starter = temporary_ / "starter.exe";
    fs::copy_file(TEST_PROBE, starter);
    const std::string path = WindowsPath();
    Tell(game_, u"start " + std::u16string(path.begin(), path.end()));
    const WineByHand program(game_, starter.native());
    EXPECT_NE(EngineProcess(), 0U);
    for (const DWORD id : ProcessesRunning(starter)) kill(static_cast<pid_t>(id), SIGKILL);
}

TEST_F(WineList, WhatElseWineRunsIsNotTakenForIt) {
    const LaunchedProgram program = Launch(Options());
    ASSERT_TRUE(program.started) << program.error;
    kill(static_cast<pid_t>(EngineProcess()), SIGKILL);
    program.ExitCode();
    EXPECT_TRUE(ProcessesRunning(engine_).empty());
}

}  // namespace
