// The socket between a process that started a program and the program's supervisor.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Platform {

/// One message: bytes, and descriptors that came with it (closed on exec).
struct ControlMessage {
    std::string bytes;
    std::vector<FileDescriptor> descriptors;
};

/// Both ends of a new socket, closed on exec; empty owners, and errno, on failure. It keeps the bounds of messages.
std::pair<FileDescriptor, FileDescriptor> MakeControlSocket() noexcept;

/// The most descriptors that one message carries.
constexpr std::size_t maximumPassedDescriptors = 16;

/// Sends one message with copies of the descriptors. False, and errno, on failure; a peer that has gone is EPIPE.
bool SendControlMessage(int socket, std::string_view bytes, const std::vector<int>& descriptors = {});

/// Whether to wait for a message that isn't there yet.
enum class Wait : bool { No, Yes };

/// The next message. Nothing when the peer has gone, on an error, and with Wait::No when there is none.
std::optional<ControlMessage> ReceiveControlMessage(int socket, Wait wait);

}  // namespace Platform
