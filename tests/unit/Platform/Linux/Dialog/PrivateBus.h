#pragma once

#include "tests/support/TemporaryFolder.h"

#include <sys/types.h>

#include <string>

/// A message bus with nothing on it, on which nothing can be started. It ends with this object.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    std::string Address() const;
    /// Ends it early, as a crash does.
    void Kill();

private:
    TemporaryFolder folder_;
    pid_t process_ = -1;
};
