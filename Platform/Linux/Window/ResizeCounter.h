// What the window manager waits for while it resizes a window.
#pragma once

#include "Platform/Linux/Window/Connection.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace Platform {

/// The counter of _NET_WM_SYNC_REQUEST (EWMH). The manager asks with a value and then sends a size; the counter takes
/// the value when a frame of that size has been shown, and the manager goes on to the next.
///
/// Where nobody composes the screen the server resizes a window at once, with the picture of its former size in it
/// until the next frame is drawn. So that each size is seen whole too, its frame stays for more than a period of the
/// display before the counter rises. A compositing manager shows no size ahead of its frame, and waits for nothing
/// more.
///
/// Not safe for threads by itself.
class ResizeCounter {
public:
    /// Makes the counter on the server.
    explicit ResizeCounter(const Connection& connection);

    /// The counter's name for the manager.
    std::uint32_t Id() const { return id_; }

    /// What the manager asks with; the size follows. `clock` is FrameClock's.
    void Ask(std::uint64_t value, std::uint32_t clock);
    /// A size has arrived. Where it is the one that the window had there will be no frame for it, and the counter
    /// rises.
    void SizeArrived(bool changed, xcb_connection_t* rendering);
    /// A frame of the size that has arrived has been shown over the connection.
    void FrameShown(xcb_connection_t* rendering);

private:
    void Raise(xcb_connection_t* rendering);

    std::uint32_t id_;
    std::uint32_t clock_ = 0;
    std::optional<std::uint64_t> asked_;  // the value whose size has not arrived
    std::optional<std::uint64_t> owed_;   // the value whose frame has not been shown
};

/// The server's own counter, of milliseconds, by which frames stay on the screen; 0 where a compositing manager makes
/// that superfluous, or where the server has none. Asks the server.
std::uint32_t FrameClock(const Connection& connection);

}  // namespace Platform
