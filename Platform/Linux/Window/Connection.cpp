#include "Platform/Linux/Window/Connection.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string_view>
#include <utility>

namespace Platform {

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Atom::Count)> kNames{
    "UTF8_STRING",
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "WM_STATE",
    "WM_CHANGE_STATE",
    "_MOTIF_WM_HINTS",
    "_NET_WM_NAME",
    "_NET_WM_ICON",
    "_NET_WM_PID",
    "_NET_WM_PING",
    "_NET_WM_STATE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_MAXIMIZED_HORZ",
    "_NET_WM_STATE_MAXIMIZED_VERT",
    "_NET_WM_MOVERESIZE",
    "_NET_WM_SYNC_REQUEST",
    "_NET_WM_SYNC_REQUEST_COUNTER",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_ACTIVE_WINDOW",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_WORKAREA",
    "_NET_CURRENT_DESKTOP",
};

constexpr std::uint32_t kLongestProperty = 1U << 20U;  // in units of four bytes

}  // namespace

std::shared_ptr<Connection> Connection::Open() {
    int screenNumber = 0;
    std::shared_ptr<xcb_connection_t> connection(xcb_connect(nullptr, &screenNumber), xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    return std::make_shared<Connection>(std::move(connection), screenNumber);
}

Connection::Connection(std::shared_ptr<xcb_connection_t> connection, int screenNumber)
    : connection_(std::move(connection)), screenNumber_(screenNumber) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(Get()));
    for (int i = 0; i < screenNumber; ++i) xcb_screen_next(&screens);
    screen_ = screens.data;

    std::array<xcb_intern_atom_cookie_t, kNames.size()> cookies{};
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        cookies[i] = xcb_intern_atom(Get(), 0, static_cast<std::uint16_t>(kNames[i].size()), kNames[i].data());
    }
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        const XOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(Get(), cookies[i], nullptr));
        atoms_[i] = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
}

std::string Connection::Text(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const {
    const auto cookie = xcb_get_property(Get(), 0, window, property, type, 0, kLongestProperty);
    const XOwned<xcb_get_property_reply_t> reply(xcb_get_property_reply(Get(), cookie, nullptr));
    if (!reply || reply->type != type) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::vector<std::uint32_t> Connection::Values(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const {
    const std::string bytes = Text(window, property, type);
    std::vector<std::uint32_t> values(bytes.size() / sizeof(std::uint32_t));
    if (!values.empty()) std::memcpy(values.data(), bytes.data(), values.size() * sizeof(std::uint32_t));
    return values;
}

void Connection::SetValues(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                           const std::vector<std::uint32_t>& values) const {
    xcb_change_property(Get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

void Connection::SetText(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& text) const {
    xcb_change_property(Get(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

void Connection::TellManager(xcb_window_t window, xcb_atom_t type, const std::array<std::uint32_t, 5>& data) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(data.begin(), data.end(), message.data.data32);
    const std::uint32_t takers = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(Get(), 0, Screen().root, takers, reinterpret_cast<const char*>(&message));
    Flush();
}

bool Connection::HasManager() const {
    // The root's property may outlive its manager; then the window that it names is gone, or names another.
    const xcb_atom_t check = (*this)[Atom::NetSupportingWmCheck];
    const auto named = Values(Screen().root, check, XCB_ATOM_WINDOW);
    if (named.empty()) return false;
    return Values(named.front(), check, XCB_ATOM_WINDOW) == std::vector{named.front()};
}

bool Connection::ManagerSupports(Atom feature) const {
    if (!HasManager()) return false;
    const auto supported = Values(Screen().root, (*this)[Atom::NetSupported], XCB_ATOM_ATOM);
    return std::ranges::find(supported, (*this)[feature]) != supported.end();
}

void EndIfLost(xcb_connection_t* connection) {
    if (xcb_connection_has_error(connection) == 0) return;
    // Every thread with windows notices; one of them says so, and the others wait for the end.
    static std::atomic_flag said = ATOMIC_FLAG_INIT;
    while (said.test_and_set()) ::pause();
    static constexpr std::string_view line = "The connection to the X server is lost; the program ends.\n";
    static_cast<void>(!::write(STDERR_FILENO, line.data(), line.size()));
    ::_exit(1);
}

}  // namespace Platform
