#include "Platform/Linux/Dialog/OwnerWatch.h"

#include "Platform/Linux/Window/Registry/WindowRegistry.h"

#include <poll.h>
#include <sys/epoll.h>
#include <xcb/xcb.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <system_error>
#include <utility>

namespace Platform {

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

constexpr std::uint8_t kEventKind = 0x7F;  // The other bit tells that a client sent the event.

}  // namespace

OwnerWatch::OwnerWatch(HWND owner) : poll_(::epoll_create1(EPOLL_CLOEXEC)) {
    if (!poll_) throw std::system_error(errno, std::generic_category(), "epoll_create1");
    if (!owner || owner == GetDesktopWindow()) return;
    unregistered_ = WatchUnregistration(owner);
    Add(unregistered_->Get());
    xid_ = NativeWindow(owner);
    if (xid_) WatchXWindow();
}

void OwnerWatch::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

void OwnerWatch::Add(int descriptor) {
    epoll_event event{};
    event.events = EPOLLIN;
    if (::epoll_ctl(poll_.Get(), EPOLL_CTL_ADD, descriptor, &event) != 0) {
        throw std::system_error(errno, std::generic_category(), "epoll_ctl");
    }
}

void OwnerWatch::WatchXWindow() {
    std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0) return;
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const auto request = xcb_change_window_attributes_checked(connection.get(), *xid_, XCB_CW_EVENT_MASK, &events);
    const std::unique_ptr<xcb_generic_error_t, Free> error(xcb_request_check(connection.get(), request));
    gone_ = error != nullptr;
    Add(xcb_get_file_descriptor(connection.get()));
    connection_ = std::move(connection);
}

bool OwnerWatch::Gone() {
    if (unregistered_) {
        pollfd event{unregistered_->Get(), POLLIN, 0};
        if (::poll(&event, 1, 0) > 0) gone_ = true;
    }
    if (connection_) {
        while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(connection_.get())}) {
            if ((event->response_type & kEventKind) != XCB_DESTROY_NOTIFY) continue;
            if (reinterpret_cast<const xcb_destroy_notify_event_t*>(event.get())->window == *xid_) gone_ = true;
        }
        if (xcb_connection_has_error(connection_.get()) != 0) gone_ = true;
    }
    return gone_;
}

}  // namespace Platform
