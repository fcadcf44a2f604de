// A program that a benchmark starts, looks at from outside, and ends.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

/// The folder in which the running program lies, with a slash at its end.
std::string OwnFolder();

/// One run of a program that tells nothing itself.
class StartedProgram {
public:
    /// `words` begin with the program's path. Its output goes nowhere. Throws std::runtime_error when it can't be
    /// started.
    explicit StartedProgram(const std::vector<std::string>& words);
    /// Ends the program.
    ~StartedProgram();
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;

    /// Just before it was started: CLOCK_MONOTONIC, nanoseconds.
    std::int64_t Started() const { return started_; }

    pid_t Process() const { return process_; }

    /// One of the sizes that /proc/PID/status tells, such as "VmHWM", in MiB. Throws std::runtime_error when the
    /// program has ended.
    double Mebibytes(const std::string& name) const;

    /// Processor time of all its threads so far, in milliseconds, in steps of the system's tick.
    double ProcessorMilliseconds() const;

private:
    std::int64_t started_ = 0;
    pid_t process_ = -1;
};
