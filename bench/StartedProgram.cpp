#include "StartedProgram.h"

#include "StartReport.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

std::string OwnFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().string() + "/";
}

StartedProgram::StartedProgram(const std::vector<std::string>& words) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    started_ = StartReport::Nanoseconds();
    const int failure = posix_spawn(&process_, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::runtime_error(words.front() + " doesn't start.");
}

StartedProgram::~StartedProgram() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

double StartedProgram::Mebibytes(const std::string& name) const {
    std::ifstream file("/proc/" + std::to_string(process_) + "/status");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(name + ":")) return std::stod(line.substr(name.size() + 1)) / 1024;
    }
    throw std::runtime_error("The program has ended.");
}

double StartedProgram::ProcessorMilliseconds() const {
    std::ifstream file("/proc/" + std::to_string(process_) + "/stat");
    std::string text;
    std::getline(file, text);
    // The name, in brackets, may have blanks; user and system time are the 12th and 13th word after it.
    std::istringstream words(text.substr(text.rfind(')') + 1));
    std::string skipped;
    for (int i = 0; i < 11; ++i) words >> skipped;
    double user = 0;
    double system = 0;
    words >> user >> system;
    return (user + system) * 1000 / static_cast<double>(sysconf(_SC_CLK_TCK));
}
