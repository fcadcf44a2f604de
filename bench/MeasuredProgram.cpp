#include "MeasuredProgram.h"

#include "StartReport.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <sstream>
#include <stdexcept>

MeasuredProgram::MeasuredProgram(const std::vector<std::string>& words) : name_(words.front()) {
    const std::string path = (std::filesystem::read_symlink("/proc/self/exe").parent_path() / name_).string();
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    input_ = in[1];
    output_ = out[0];
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    // The toolkit's log goes there.
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    started_ = StartReport::Nanoseconds();
    setenv(StartReport::startVariable, std::to_string(started_).c_str(), 1);
    const int failure = posix_spawn(&process_, path.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(in[0]);
    close(out[1]);
    if (failure != 0) process_ = -1;
    if (failure != 0) throw std::runtime_error(path + " doesn't start.");
}

MeasuredProgram::~MeasuredProgram() {
    if (input_ >= 0) close(input_);
    if (output_ >= 0) close(output_);
    if (process_ > 0) waitpid(process_, nullptr, 0);
}

Report MeasuredProgram::Finish() {
    close(input_);
    input_ = -1;
    std::string text;
    std::array<char, 4096> piece{};
    for (ssize_t count = 0; (count = read(output_, piece.data(), piece.size())) > 0;)
        text.append(piece.data(), static_cast<std::size_t>(count));
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    if (status != 0) throw std::runtime_error(name_ + " failed; start it by hand to see why.");
    Report report;
    std::istringstream lines(text);
    std::string name;
    double value = 0;
    while (lines >> name >> value) report[name] = value;
    return report;
}
