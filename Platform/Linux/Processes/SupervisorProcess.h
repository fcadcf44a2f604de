// Starting a program's supervisor.
#pragma once

#include "Platform/Linux/Base/Handle.h"
#include "Platform/Linux/Processes/ProcessObject.h"
#include "Platform/Linux/Processes/Supervisor/Messages.h"

#include <memory>
#include <string>
#include <vector>

namespace Platform {

/// How a start went: a running process, or a failure's code and what to tell the player (UTF-8, may be empty).
struct StartOutcome {
    std::shared_ptr<ProcessObject> process;
    DWORD error = 0;
    std::string explanation;
};

/// Starts a supervisor, gives it the order and copies of `descriptors`, and waits for what becomes of it. The
/// supervisor is no child of this process once this returns: it leaves nothing to reap. Any thread.
StartOutcome StartUnderSupervisor(const StartRequest& request, const std::vector<int>& descriptors);

}  // namespace Platform
