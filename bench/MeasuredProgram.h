// A program that start_bench starts, and what it tells.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// Names and numbers, as StartReport::Say writes them.
using Report = std::map<std::string, double>;

/// One run of a program of the folder in which this one lies.
class MeasuredProgram {
public:
    /// Throws std::runtime_error when it can't be started.
    explicit MeasuredProgram(const std::vector<std::string>& words);
    ~MeasuredProgram();
    MeasuredProgram(const MeasuredProgram&) = delete;
    MeasuredProgram& operator=(const MeasuredProgram&) = delete;

    /// Just before it was started: CLOCK_MONOTONIC, nanoseconds.
    std::int64_t Started() const { return started_; }

    /// Ends its standard input, which lets it go on, and reads what it says until it ends. Throws std::runtime_error
    /// when it failed.
    Report Finish();

private:
    std::string name_;
    std::int64_t started_ = 0;
    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
};
