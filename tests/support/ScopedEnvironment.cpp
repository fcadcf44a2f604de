#include "tests/support/ScopedEnvironment.h"

#include "tests/support/CurrentVariable.h"

#include <windows.h>

#include <stdexcept>
#include <utility>

ScopedEnvironment::ScopedEnvironment(std::wstring name, std::optional<std::wstring> value)
    : name_(std::move(name)), before_(CurrentVariable(name_)) {
    if (!SetEnvironmentVariableW(name_.c_str(), value ? value->c_str() : nullptr) && value) {
        throw std::runtime_error("cannot set an environment variable");
    }
}

ScopedEnvironment::~ScopedEnvironment() {
    SetEnvironmentVariableW(name_.c_str(), before_ ? before_->c_str() : nullptr);
}
