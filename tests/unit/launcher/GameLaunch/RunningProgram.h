#pragma once

#include <windows.h>

#include <filesystem>

/// A process that runs from `file`, which is made for it: a copy of the idle program. Ends with this object.
class RunningProgram {
public:
    explicit RunningProgram(const std::filesystem::path& file);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    DWORD Id() const { return id_; }
    /// Ends the process and returns when it has ended. The system still remembers it until this object goes.
    void End();

private:
    DWORD id_ = 0;
    HANDLE process_ = nullptr;  // Windows only.
};
