// What /proc tells about processes, with those under Wine told as the Windows programs they are.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// A process in a list of processes.
struct ProcessFacts {
    int id = 0;
    int parent = 0;
    unsigned threads = 0;
    std::string
        fileName;  ///< Of the program, without folder; as the kernel names the process where that can't be told.
};

/// Reads a folder of the form of /proc. It holds no more than the folder's path. Const calls are safe on any thread;
/// what has ended meanwhile, or isn't this user's to read, counts as missing.
class ProcFs {
public:
    explicit ProcFs(std::filesystem::path root = "/proc") : root_(std::move(root)) {}

    /// All running processes by identifier; those that have ended and wait to be reaped are none.
    std::vector<ProcessFacts> Processes() const;

    /// The file of a process's program. For a process under Wine that is the Windows program's file as its command line
    /// names it: a Windows path is taken back through the drives of the process's prefix, a plain name is looked up in
    /// what the process says and maps of itself, and last in its working directory.
    std::optional<std::filesystem::path> ProgramFile(int id) const;

private:
    class Process;

    std::filesystem::path root_;
};

}  // namespace Platform
