#include "ScreenWatch.h"

#include "StartReport.h"

#include <poll.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace {

constexpr std::int64_t patience = 10'000'000'000;  // nanoseconds

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

}  // namespace

ScreenWatch::ScreenWatch()
    : connection_(xcb_connect(nullptr, nullptr), xcb_disconnect), eyes_(xcb_connect(nullptr, nullptr), xcb_disconnect) {
    xcb_connection_t* const x = connection_.get();
    if (xcb_connection_has_error(x) || xcb_connection_has_error(eyes_.get())) {
        throw std::runtime_error("There is no display (DISPLAY).");
    }
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
    return AwaitPicture(pixels, StartReport::Nanoseconds() + patience);
}

std::optional<std::int64_t> ScreenWatch::AwaitPicture(std::int64_t pixels, std::int64_t limit) {
    xcb_connection_t* const x = connection_.get();
    pollfd source{xcb_get_file_descriptor(x), POLLIN, 0};
    for (;;) {
        while (xcb_generic_event_t* const raw = xcb_poll_for_event(x)) {
            const Owned<xcb_generic_event_t> event(raw, std::free);
            if ((event->response_type & 0x7F) != damageEvent_) continue;
            const auto& damage = reinterpret_cast<const xcb_damage_notify_event_t&>(*event);
            if (std::int64_t{damage.area.width} * damage.area.height >= pixels) return StartReport::Nanoseconds();
        }
        const std::int64_t left = limit - StartReport::Nanoseconds();
        if (left <= 0 || xcb_connection_has_error(x)) return std::nullopt;
        poll(&source, 1, static_cast<int>((left + 999'999) / 1'000'000));
    }
}

std::vector<std::uint32_t> ScreenWatch::Look(const std::vector<ScreenPoint>& points) {
    xcb_connection_t* const x = eyes_.get();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    std::vector<xcb_get_image_cookie_t> asked;
    asked.reserve(points.size());
    for (const ScreenPoint& point : points) {
        asked.push_back(xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, root, static_cast<std::int16_t>(point.x),
                                      static_cast<std::int16_t>(point.y), 1, 1, ~0U));
    }
    std::vector<std::uint32_t> colours;
    for (const xcb_get_image_cookie_t& cookie : asked) {
        const Owned<xcb_get_image_reply_t> reply(xcb_get_image_reply(x, cookie, nullptr), std::free);
        std::uint32_t colour = 0;
        if (reply && xcb_get_image_data_length(reply.get()) >= 4) {
            std::memcpy(&colour, xcb_get_image_data(reply.get()), 4);
        }
        colours.push_back(colour & 0xFFFFFFU);
    }
    return colours;
}

ScreenPicture ScreenWatch::LookAtAll() {
    xcb_connection_t* const x = eyes_.get();
    const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const Owned<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(x,
                            xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, 0, 0, screen->width_in_pixels,
                                          screen->height_in_pixels, ~0U),
                            nullptr),
        std::free);
    if (!reply) throw std::runtime_error("The display gives no picture of its screen.");
    ScreenPicture picture{screen->width_in_pixels, screen->height_in_pixels, {}};
    picture.pixels.resize(std::size_t{screen->width_in_pixels} * screen->height_in_pixels);
    if (static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) != picture.pixels.size() * 4) {
        throw std::runtime_error("The screen has no pixels of 32 bits.");
    }
    std::memcpy(picture.pixels.data(), xcb_get_image_data(reply.get()), picture.pixels.size() * 4);
    for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFFU;
    return picture;
}
