// The list of running processes and their handles, on native programs.

#include "LaunchedProgram.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <tlhelp32.h>

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

namespace fs = std::filesystem;

namespace {

/// A copy of /bin/sleep under another name, running.
class RunningCopy {
public:
    explicit RunningCopy(fs::path file) : file_(std::move(file)) {
        fs::create_directories(file_.parent_path());
        fs::copy_file(fs::canonical("/bin/sleep"), file_, fs::copy_options::skip_existing);
        char* const arguments[] = {const_cast<char*>("sleep"), const_cast<char*>("1000"), nullptr};
        EXPECT_EQ(posix_spawn(&id_, file_.c_str(), nullptr, nullptr, arguments, environ), 0);
    }
    ~RunningCopy() {
        Kill();
        Reap();
    }

    void Kill() const { kill(id_, SIGKILL); }
    void Reap() {
        if (id_ > 0) waitpid(id_, nullptr, 0);
        id_ = 0;
    }
    DWORD Id() const { return static_cast<DWORD>(id_); }
    const fs::path& File() const { return file_; }

private:
    fs::path file_;
    pid_t id_ = 0;
};

constexpr DWORD access = SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION;

class ProcessList : public testing::Test {
protected:
    TemporaryFolder temporary_;
};

TEST_F(ProcessList, ARunningProgramIsFoundByItsFile) {
    const RunningCopy program(temporary_ / "Quake II ü" / "quake2.exe");
    EXPECT_EQ(ProcessesRunning(program.File()), std::vector<DWORD>{program.Id()});
}

TEST_F(ProcessList, AProgramOfTheSameNameElsewhereIsNotFound) {
    const RunningCopy program(temporary_ / "elsewhere" / "quake2.exe");
    EXPECT_TRUE(ProcessesRunning(temporary_ / "here" / "quake2.exe").empty());
}

TEST_F(ProcessList, AProgramWhoseFileNameIsNotUtf8IsFound) {
    const RunningCopy program(temporary_ / "game\xFF" / "quake2.exe");
    EXPECT_EQ(ProcessesRunning(program.File()), std::vector<DWORD>{program.Id()});
}

TEST_F(ProcessList, AnEndedProgramThatNobodyReapedIsNotFoundAndItsHandleIsSignalled) {
    const RunningCopy program(temporary_ / "quake2.exe");
    const TestHandle process(OpenProcess(access, FALSE, program.Id()));
    ASSERT_TRUE(process.Get());
    EXPECT_EQ(WaitForSingleObject(process.Get(), 0), WAIT_TIMEOUT);
    program.Kill();
    EXPECT_EQ(WaitForSingleObject(process.Get(), 10000), WAIT_OBJECT_0);
    EXPECT_TRUE(ProcessesRunning(program.File()).empty());
    std::wstring path(1000, L'\0');
    auto size = static_cast<DWORD>(path.size());
    EXPECT_FALSE(QueryFullProcessImageNameW(process.Get(), 0, path.data(), &size));
}

TEST_F(ProcessList, OpeningAnEndedProcessFails) {
    DWORD id = 0;
    {
        const RunningCopy program(temporary_ / "quake2.exe");
        id = program.Id();
    }
    EXPECT_EQ(OpenProcess(access, FALSE, id), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(ProcessList, AProcessThatWasOnlyOpenedTellsNoExitCode) {
    const RunningCopy program(temporary_ / "quake2.exe");
    const TestHandle process(OpenProcess(access, FALSE, program.Id()));
    DWORD code = 0;
    EXPECT_FALSE(GetExitCodeProcess(process.Get(), &code));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
}

TEST_F(ProcessList, TheImageNameNeedsRoomForItsTerminator) {
    const RunningCopy program(temporary_ / "quake2.exe");
    const TestHandle process(OpenProcess(access, FALSE, program.Id()));
    const std::wstring expected = program.File().wstring();
    std::wstring path(expected.size() + 1, L'#');
    auto size = static_cast<DWORD>(expected.size());
    EXPECT_FALSE(QueryFullProcessImageNameW(process.Get(), 0, path.data(), &size));
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    ++size;
    EXPECT_TRUE(QueryFullProcessImageNameW(process.Get(), 0, path.data(), &size));
    EXPECT_EQ(size, expected.size());
    EXPECT_EQ(path.substr(0, path.find(L'\0')), expected);
}

TEST_F(ProcessList, TheSnapshotListsThisProcessOnceAndEndsWithNoMoreFiles) {
    const TestHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    std::vector<DWORD> ids;
    for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more; more = Process32NextW(snapshot.Get(), &entry)) {
        ids.push_back(entry.th32ProcessID);
        if (entry.th32ProcessID != GetCurrentProcessId()) continue;
        EXPECT_EQ(std::wstring(entry.szExeFile), fs::read_symlink("/proc/self/exe").filename().wstring());
        EXPECT_EQ(entry.th32ParentProcessID, static_cast<DWORD>(getppid()));
        EXPECT_GE(entry.cntThreads, 1U);
    }
    EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
    EXPECT_EQ(std::count(ids.begin(), ids.end(), GetCurrentProcessId()), 1);
    EXPECT_TRUE(Process32FirstW(snapshot.Get(), &entry));
    EXPECT_EQ(entry.th32ProcessID, ids.front());
}

TEST_F(ProcessList, WrongArgumentsAreRefused) {
    EXPECT_EQ(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS | 1, 0), INVALID_HANDLE_VALUE);
    EXPECT_EQ(OpenProcess(access, FALSE, 0), nullptr);
    EXPECT_EQ(OpenProcess(access, TRUE, GetCurrentProcessId()), nullptr);
    EXPECT_EQ(OpenProcess(access | 1, FALSE, GetCurrentProcessId()), nullptr);
    EXPECT_EQ(OpenProcess(access, FALSE, 0xFFFFFFFF), nullptr);
    const TestHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    EXPECT_FALSE(Process32FirstW(snapshot.Get(), &entry));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    DWORD code = 0;
    EXPECT_FALSE(GetExitCodeProcess(snapshot.Get(), &code));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

}  // namespace
