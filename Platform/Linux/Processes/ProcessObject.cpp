#include "Platform/Linux/Processes/ProcessObject.h"

#include "Platform/Linux/Processes/Supervisor/ControlSocket.h"
#include "Platform/Linux/Processes/Supervisor/Messages.h"

#include <poll.h>

#include <cerrno>
#include <exception>

namespace Platform {

bool ProcessObject::Ended() const noexcept {
    pollfd wait{.fd = descriptor_.Get(), .events = POLLIN, .revents = 0};
    int ready = 0;
    do ready = poll(&wait, 1, 0);
    while (ready < 0 && errno == EINTR);
    return ready > 0;
}

std::optional<DWORD> StartedProcess::ExitCode() noexcept {
    const std::lock_guard lock(mutex_);
    if (code_) return code_;
    // In this order: what an ended supervisor had to say has been said.
    if (!Ended()) return STILL_ACTIVE;
    code_ = lostExitCode;
    try {
        const std::optional<ControlMessage> message = ReceiveControlMessage(control_.Get(), Wait::No);
        const auto report = message ? DecodeSupervisorReport(message->bytes) : std::nullopt;
        if (report && report->kind == SupervisorReport::Kind::Ended) code_ = report->code;
    } catch (const std::exception&) {
        code_.reset();  // No memory now; perhaps the next time.
        return lostExitCode;
    }
    return code_;
}

}  // namespace Platform
