#include "Hand.h"

#include "StartReport.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
Owned<Reply> Own(Reply* reply) {
    return {reply, std::free};
}

}  // namespace

Hand::Hand() : connection_(xcb_connect(nullptr, nullptr), xcb_disconnect) {
    xcb_connection_t* const x = connection_.get();
    if (xcb_connection_has_error(x)) throw std::runtime_error("There is no display (DISPLAY).");
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(x, &xcb_test_id);
    if (!extension || !extension->present) throw std::runtime_error("The display has no XTEST extension.");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    processAtom_ = Atom("_NET_WM_PID");
}

std::int64_t Hand::Move(ScreenPoint point) {
    return Fake(XCB_MOTION_NOTIFY, 0, point);
}

std::int64_t Hand::Button(bool down) {
    return Fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 1, {});
}

std::int64_t Hand::Fake(std::uint8_t type, std::uint8_t detail, ScreenPoint point) {
    xcb_connection_t* const x = connection_.get();
    xcb_test_fake_input(x, type, detail, XCB_CURRENT_TIME, root_, static_cast<std::int16_t>(point.x),
                        static_cast<std::int16_t>(point.y), 0);
    const std::int64_t moment = StartReport::Nanoseconds();
    xcb_flush(x);
    return moment;
}

std::optional<WindowPlace> Hand::WindowOf(pid_t process) {
    xcb_connection_t* const x = connection_.get();
    const std::optional<xcb_window_t> window = FindWindow(root_, process);
    if (!window) return std::nullopt;
    const auto size = xcb_get_geometry(x, *window);
    const auto origin = xcb_translate_coordinates(x, *window, root_, 0, 0);
    const auto sizeReply = Own(xcb_get_geometry_reply(x, size, nullptr));
    const auto originReply = Own(xcb_translate_coordinates_reply(x, origin, nullptr));
    if (!sizeReply || !originReply) return std::nullopt;
    return WindowPlace{originReply->dst_x, originReply->dst_y, sizeReply->width, sizeReply->height};
}

std::optional<std::uint32_t> Hand::FindWindow(std::uint32_t below, pid_t process) {
    xcb_connection_t* const x = connection_.get();
    const auto tree = Own(xcb_query_tree_reply(x, xcb_query_tree(x, below), nullptr));
    if (!tree) return std::nullopt;
    const xcb_window_t* const children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        if (Property(children[i], processAtom_) == static_cast<std::uint32_t>(process) &&
            Property(children[i], XCB_ATOM_WM_NAME) != 0) {
            return children[i];
        }
        if (const auto found = FindWindow(children[i], process)) return found;
    }
    return std::nullopt;
}

// The first word of a property, whatever its type; 0 where there is none.
std::uint32_t Hand::Property(std::uint32_t window, std::uint32_t property) {
    xcb_connection_t* const x = connection_.get();
    const auto reply = Own(
        xcb_get_property_reply(x, xcb_get_property(x, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1), nullptr));
    std::uint32_t word = 0;
    if (reply && xcb_get_property_value_length(reply.get()) >= 4) {
        std::memcpy(&word, xcb_get_property_value(reply.get()), 4);
    }
    return word;
}

std::uint32_t Hand::Atom(const char* name) {
    xcb_connection_t* const x = connection_.get();
    const auto reply = Own(
        xcb_intern_atom_reply(x, xcb_intern_atom(x, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr));
    if (!reply) throw std::runtime_error("The display doesn't answer.");
    return reply->atom;
}
