// The window that a dialog belongs to, watched for its end.
#pragma once

#include "Platform/Linux/Base/FileDescriptor.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>

struct xcb_connection_t;

namespace Platform {

/// Tells when a dialog's owner goes: its handle ends, the X11 window is destroyed (by whomever), or the X server
/// leaves. The X11 window is watched over a connection of its own, so that nothing depends on the thread that made the
/// window. Where there is no X server to ask, the handle alone counts. The desktop, or no window, never goes. One
/// thread only.
class OwnerWatch {
public:
    /// Throws std::system_error when descriptors run out.
    explicit OwnerWatch(HWND owner);
    OwnerWatch(const OwnerWatch&) = delete;
    OwnerWatch& operator=(const OwnerWatch&) = delete;

    /// Readable whenever Gone() may have changed: for poll(2), together with what else the caller waits for.
    int Descriptor() const { return poll_.Get(); }

    /// Whether the owner has gone. Takes in what the X server has sent, so that the descriptor falls silent again.
    bool Gone();

    /// The owner's X11 window, if it has one.
    std::optional<std::uint32_t> XWindow() const { return xid_; }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    void Add(int descriptor);
    void WatchXWindow();

    FileDescriptor poll_;
    std::shared_ptr<const FileDescriptor> unregistered_;
    std::optional<std::uint32_t> xid_;
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    bool gone_ = false;
};

}  // namespace Platform
