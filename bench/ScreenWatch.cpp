#include "ScreenWatch.h"

#include "StartReport.h"

#include <poll.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace {

constexpr int patience = 10'000;  // milliseconds

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

}  // namespace

ScreenWatch::ScreenWatch() : connection_(xcb_connect(nullptr, nullptr), xcb_disconnect) {
    xcb_connection_t* const x = connection_.get();
    if (xcb_connection_has_error(x)) throw std::runtime_error("There is no display (DISPLAY).");
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(x, &xcb_damage_id);
    if (!extension || !extension->present) throw std::runtime_error("The display has no DAMAGE extension.");
    damageEvent_ = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
    const Owned<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(
            x, xcb_damage_query_version(x, XCB_DAMAGE_MAJOR_VERSION, XCB_DAMAGE_MINOR_VERSION), nullptr),
        std::free);
    if (!version) throw std::runtime_error("The display's DAMAGE extension doesn't answer.");
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    xcb_damage_create(x, xcb_generate_id(x), root, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    Clear();
}

void ScreenWatch::Clear() {
    xcb_connection_t* const x = connection_.get();
    std::free(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    while (xcb_generic_event_t* const event = xcb_poll_for_event(x)) std::free(event);
}

std::optional<std::int64_t> ScreenWatch::AwaitPicture(std::int64_t pixels) {
    xcb_connection_t* const x = connection_.get();
    pollfd source{xcb_get_file_descriptor(x), POLLIN, 0};
    do {
        while (xcb_generic_event_t* const raw = xcb_poll_for_event(x)) {
            const Owned<xcb_generic_event_t> event(raw, std::free);
            if ((event->response_type & 0x7F) != damageEvent_) continue;
            const auto& damage = reinterpret_cast<const xcb_damage_notify_event_t&>(*event);
            if (std::int64_t{damage.area.width} * damage.area.height >= pixels) return StartReport::Nanoseconds();
        }
    } while (poll(&source, 1, patience) == 1);
    return std::nullopt;
}
