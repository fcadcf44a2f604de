// A connection to the X server, and the names that are asked of it.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace Platform {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

/// What the C library of X hands out: replies, events, errors.
template <class T>
using XOwned = std::unique_ptr<T, FreeMemory>;

enum class Atom : unsigned {
    Utf8String,
    WmProtocols,
    WmDeleteWindow,
    WmState,
    WmChangeState,
    MotifWmHints,
    NetWmName,
    NetWmIcon,
    NetWmPid,
    NetWmPing,
    NetWmState,
    NetWmStateHidden,
    NetWmStateMaximizedHorz,
    NetWmStateMaximizedVert,
    NetWmMoveResize,
    NetWmSyncRequest,
    NetWmSyncRequestCounter,
    NetWmWindowType,
    NetWmWindowTypeNormal,
    NetActiveWindow,
    NetSupported,
    NetSupportingWmCheck,
    NetWorkArea,
    NetCurrentDesktop,
    Count
};

/// Move-only owner of a connection. Functions that only write may be called on any thread.
class Connection {
public:
    /// Null when there is no X server.
    static std::shared_ptr<Connection> Open();
    explicit Connection(std::shared_ptr<xcb_connection_t> connection, int screenNumber);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    xcb_connection_t* Get() const { return connection_.get(); }
    const std::shared_ptr<xcb_connection_t>& Share() const { return connection_; }
    const xcb_screen_t& Screen() const { return *screen_; }
    int ScreenNumber() const { return screenNumber_; }
    xcb_atom_t operator[](Atom atom) const { return atoms_[static_cast<std::size_t>(atom)]; }

    void Flush() const { xcb_flush(connection_.get()); }

    /// A property's values of 32 bits; empty when there is none of the type.
    std::vector<std::uint32_t> Values(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const;
    /// A property's bytes.
    std::string Text(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const;
    void SetValues(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                   const std::vector<std::uint32_t>& values) const;
    void SetText(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& text) const;

    /// Sends a message about `window` to the root window, where the window manager takes it.
    void TellManager(xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data) const;

    /// Whether a window manager runs that knows `feature`.
    bool ManagerSupports(Atom feature) const;
    bool HasManager() const;

private:
    std::shared_ptr<xcb_connection_t> connection_;
    int screenNumber_;
    const xcb_screen_t* screen_ = nullptr;
    std::array<xcb_atom_t, static_cast<std::size_t>(Atom::Count)> atoms_{};
};

/// Ends the program, with a line on standard error and code 1, if the X server is gone. Nothing can be shown or asked
/// any more, and there is nothing to save: what the launcher keeps is on disk already.
void EndIfLost(xcb_connection_t* connection);

}  // namespace Platform
