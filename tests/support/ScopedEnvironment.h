#pragma once

#include <optional>
#include <string>

/// Sets an environment variable, or removes it when no value is given, and puts the old state back at the end.
class ScopedEnvironment {
public:
    ScopedEnvironment(std::wstring name, std::optional<std::wstring> value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::wstring name_;
    std::optional<std::wstring> before_;
};
