#include "Platform/Linux/Processes/Supervisor/ControlSocket.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace Platform {

namespace {

// More than two paths and the longest command line of Windows (32,767 16-bit units) take.
constexpr std::size_t maximumMessage = std::size_t{128} << 10;

constexpr std::size_t controlSpace = CMSG_SPACE(maximumPassedDescriptors * sizeof(int));

std::vector<FileDescriptor> TakeDescriptors(msghdr& header) {
    std::vector<FileDescriptor> taken;
    for (cmsghdr* part = CMSG_FIRSTHDR(&header); part; part = CMSG_NXTHDR(&header, part)) {
        if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_RIGHTS) continue;
        const std::size_t count = (part->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        for (std::size_t i = 0; i < count; ++i) {
            int descriptor = -1;
            std::memcpy(&descriptor, CMSG_DATA(part) + i * sizeof(int), sizeof descriptor);
            taken.emplace_back(descriptor);
        }
    }
    return taken;
}

}  // namespace

std::pair<FileDescriptor, FileDescriptor> MakeControlSocket() noexcept {
    int ends[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return {};
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

bool SendControlMessage(int socket, std::string_view bytes, const std::vector<int>& descriptors) {
    if (bytes.empty() || bytes.size() > maximumMessage || descriptors.size() > maximumPassedDescriptors) {
        errno = EMSGSIZE;
        return false;
    }
    iovec data{.iov_base = const_cast<char*>(bytes.data()), .iov_len = bytes.size()};
    msghdr header{};
    header.msg_iov = &data;
    header.msg_iovlen = 1;
    alignas(cmsghdr) std::array<char, controlSpace> control{};
    if (!descriptors.empty()) {
        const std::size_t size = descriptors.size() * sizeof(int);
        header.msg_control = control.data();
        header.msg_controllen = CMSG_SPACE(size);
        cmsghdr* const part = CMSG_FIRSTHDR(&header);
        part->cmsg_level = SOL_SOCKET;
        part->cmsg_type = SCM_RIGHTS;
        part->cmsg_len = CMSG_LEN(size);
        std::memcpy(CMSG_DATA(part), descriptors.data(), size);
    }
    ssize_t sent = 0;
    do sent = sendmsg(socket, &header, MSG_NOSIGNAL);
    while (sent < 0 && errno == EINTR);
    return sent >= 0;
}

std::optional<ControlMessage> ReceiveControlMessage(int socket, Wait wait) {
    ControlMessage message;
    message.bytes.resize(maximumMessage);
    iovec data{.iov_base = message.bytes.data(), .iov_len = message.bytes.size()};
    alignas(cmsghdr) std::array<char, controlSpace> control{};
    msghdr header{};
    header.msg_iov = &data;
    header.msg_iovlen = 1;
    header.msg_control = control.data();
    header.msg_controllen = control.size();
    ssize_t received = 0;
    do received = recvmsg(socket, &header, MSG_CMSG_CLOEXEC | (wait == Wait::No ? MSG_DONTWAIT : 0));
    while (received < 0 && errno == EINTR);
    if (received < 0) return std::nullopt;
    message.descriptors = TakeDescriptors(header);
    if (received == 0 || (header.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) != 0) return std::nullopt;
    message.bytes.resize(static_cast<std::size_t>(received));
    return message;
}

}  // namespace Platform
