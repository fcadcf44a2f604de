#include "User.h"

#include <xcb/res.h>
#include <xcb/xcb_cursor.h>
#include <xcb/xcb_icccm.h>
#include <xcb/xfixes.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace {

constexpr auto kPatience = std::chrono::seconds(20);

template <class T>
Reply<T> Needed(T* reply, const char* what) {
    if (!reply) throw std::runtime_error(what);
    return Reply<T>(reply);
}

}  // namespace

User::User() : x_(xcb_connect(nullptr, nullptr), xcb_disconnect), screen_(nullptr) {
    if (xcb_connection_has_error(x_.get()) != 0) throw std::runtime_error("no connection to the display");
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(x_.get())).data;
    // The extension answers nothing before it has been asked for its version.
    Needed(xcb_xfixes_query_version_reply(x_.get(), xcb_xfixes_query_version(x_.get(), 5, 0), nullptr), "XFixes");
}

void User::Settle() {
    Needed(xcb_get_input_focus_reply(x_.get(), xcb_get_input_focus(x_.get()), nullptr), "the display is gone");
}

// A manager that looks at a press before its window gets it holds all later input up for that time. Of what piles up
// the server then hands out every event with the place of the last move: a press and a release in different places
// would come as ones in the same. So each movement of the hand is over before the next one begins.
void User::MovePointer(int x, int y) {
    xcb_test_fake_input(x_.get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, screen_->root, static_cast<std::int16_t>(x),
                        static_cast<std::int16_t>(y), 0);
    WaitForPointer([&](const xcb_query_pointer_reply_t& now) { return now.root_x == x && now.root_y == y; },
                   "the pointer is held up on its way to " + std::to_string(x) + ", " + std::to_string(y));
}

void User::Button(int button, bool down) {
    if (down) WaitForFreePointer();
    xcb_test_fake_input(x_.get(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button),
                        XCB_CURRENT_TIME, screen_->root, 0, 0, 0);
    const int bit = XCB_BUTTON_MASK_1 << (button - 1);
    WaitForPointer(
        [&](const xcb_query_pointer_reply_t& now) { return ((now.mask & bit) != 0) == down; },
        std::string(down ? "a press" : "a release") + " of button " + std::to_string(button) + " is held up");
}

void User::WaitForPointer(const std::function<bool(const xcb_query_pointer_reply_t&)>& condition,
                          const std::string& failure) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    const auto ask = [&] {
        return Needed(xcb_query_pointer_reply(x_.get(), xcb_query_pointer(x_.get(), screen_->root), nullptr),
                      "no pointer");
    };
    while (!condition(*ask())) {
        if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error(failure);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

// A manager that is late still has the pointer of the last drag and would take a press for itself. No hand is so fast.
void User::WaitForFreePointer() {
    constexpr std::uint16_t anyButton = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    WaitForPointer(
        [&](const xcb_query_pointer_reply_t& now) {
            if (now.mask & anyButton) return true;
            const auto cookie = xcb_grab_pointer(x_.get(), 0, screen_->root, 0, XCB_GRAB_MODE_ASYNC,
                                                 XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
            const auto taken = Needed(xcb_grab_pointer_reply(x_.get(), cookie, nullptr), "no answer to a grab");
            if (taken->status != XCB_GRAB_STATUS_SUCCESS) return false;
            xcb_ungrab_pointer(x_.get(), XCB_CURRENT_TIME);
            return true;
        },
        "somebody keeps the pointer");
}

void User::Key(int keycode, bool down) {
    xcb_test_fake_input(x_.get(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, static_cast<std::uint8_t>(keycode),
                        XCB_CURRENT_TIME, screen_->root, 0, 0, 0);
    Settle();
}

Place User::Where(xcb_window_t window) {
    const auto size = xcb_get_geometry(x_.get(), window);
    const auto origin = xcb_translate_coordinates(x_.get(), window, screen_->root, 0, 0);
    const auto sizeReply = Needed(xcb_get_geometry_reply(x_.get(), size, nullptr), "no such window");
    const auto originReply = Needed(xcb_translate_coordinates_reply(x_.get(), origin, nullptr), "no such window");
    return {originReply->dst_x, originReply->dst_y, sizeReply->width, sizeReply->height};
}

bool User::Exists(xcb_window_t window) {
    return Reply<xcb_get_geometry_reply_t>(
               xcb_get_geometry_reply(x_.get(), xcb_get_geometry(x_.get(), window), nullptr)) != nullptr;
}

Place User::Screen() const {
    return {0, 0, screen_->width_in_pixels, screen_->height_in_pixels};
}

void User::Arrange(xcb_window_t window, Place place) {
    const std::array<std::uint32_t, 4> values{static_cast<std::uint32_t>(place.x), static_cast<std::uint32_t>(place.y),
                                              static_cast<std::uint32_t>(place.width),
                                              static_cast<std::uint32_t>(place.height)};
    xcb_configure_window(x_.get(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    Settle();
}

Picture User::See(Place part) {
    const int left = std::max(0, part.x);
    const int top = std::max(0, part.y);
    Picture picture{std::min<int>(screen_->width_in_pixels, part.x + part.width) - left,
                    std::min<int>(screen_->height_in_pixels, part.y + part.height) - top,
                    {}};
    if (picture.width <= 0 || picture.height <= 0) return {};
    const auto cookie =
        xcb_get_image(x_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root, static_cast<std::int16_t>(left),
                      static_cast<std::int16_t>(top), static_cast<std::uint16_t>(picture.width),
                      static_cast<std::uint16_t>(picture.height), ~0U);
    const auto reply = Needed(xcb_get_image_reply(x_.get(), cookie, nullptr), "no picture of the screen");
    picture.pixels.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    if (static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) != picture.pixels.size() * 4) {
        throw std::runtime_error("the screen has no pixels of 32 bits");
    }
    std::memcpy(picture.pixels.data(), xcb_get_image_data(reply.get()), picture.pixels.size() * 4);
    for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFFU;
    return picture;
}

std::string User::CursorShape() {
    const auto reply = Needed(
        xcb_xfixes_get_cursor_image_reply(x_.get(), xcb_xfixes_get_cursor_image(x_.get()), nullptr), "no cursor");
    const auto* pixels = reinterpret_cast<const char*>(xcb_xfixes_get_cursor_image_cursor_image(reply.get()));
    const std::string bytes(pixels, std::size_t{reply->width} * reply->height * 4);
    return std::to_string(reply->width) + "x" + std::to_string(reply->height) + "+" + std::to_string(reply->xhot) +
           "+" + std::to_string(reply->yhot) + ":" + std::to_string(std::hash<std::string>{}(bytes));
}

std::string User::ShapeNamed(const std::string& name) {
    xcb_cursor_context_t* context = nullptr;
    if (xcb_cursor_context_new(x_.get(), screen_, &context) < 0) throw std::runtime_error("no cursors");
    const xcb_cursor_t cursor = xcb_cursor_load_cursor(context, name.c_str());
    // A grab shows its cursor at once, wherever the pointer is.
    const auto grab = xcb_grab_pointer(x_.get(), 0, screen_->root, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                       XCB_NONE, cursor, XCB_CURRENT_TIME);
    Needed(xcb_grab_pointer_reply(x_.get(), grab, nullptr), "no grab");
    std::string shape = CursorShape();
    xcb_ungrab_pointer(x_.get(), XCB_CURRENT_TIME);
    xcb_free_cursor(x_.get(), cursor);
    xcb_cursor_context_free(context);
    Settle();
    return shape;
}

xcb_window_t User::Cover(Place place) {
    const xcb_window_t window = xcb_generate_id(x_.get());
    const std::array<std::uint32_t, 2> values{0x808080, 1};
    xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, window, screen_->root, static_cast<std::int16_t>(place.x),
                      static_cast<std::int16_t>(place.y), static_cast<std::uint16_t>(place.width),
                      static_cast<std::uint16_t>(place.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    xcb_map_window(x_.get(), window);
    Settle();
    return window;
}

void User::Destroy(xcb_window_t window) {
    xcb_destroy_window(x_.get(), window);
    Settle();
}

void User::SetResources(const std::string& text) {
    xcb_change_property(x_.get(), XCB_PROP_MODE_REPLACE, screen_->root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
    Settle();
}

std::vector<std::string> User::StatesOf(xcb_window_t window) {
    std::vector<std::string> states;
    for (const xcb_atom_t state : Values(window, "_NET_WM_STATE")) states.push_back(AtomName(state));
    const auto kept = Values(window, "WM_STATE");
    if (!kept.empty() && kept.front() == XCB_ICCCM_WM_STATE_ICONIC) states.emplace_back("Iconic");
    return states;
}

Place User::MinimumSizeOf(xcb_window_t window) {
    xcb_size_hints_t hints{};
    if (!xcb_icccm_get_wm_normal_hints_reply(x_.get(), xcb_icccm_get_wm_normal_hints(x_.get(), window), &hints,
                                             nullptr)) {
        throw std::runtime_error("no size hints");
    }
    return {0, 0, hints.min_width, hints.min_height};
}

std::size_t User::Clients() {
    const auto reply =
        Needed(xcb_res_query_clients_reply(x_.get(), xcb_res_query_clients(x_.get()), nullptr), "X-Resource");
    return reply->num_clients;
}

std::size_t User::Windows() {
    return WindowsBelow(screen_->root);
}

std::size_t User::WindowsBelow(xcb_window_t window) {
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(x_.get(), xcb_query_tree(x_.get(), window), nullptr));
    if (!tree) return 0;  // gone since its parent named it
    std::size_t count = 0;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) count += 1 + WindowsBelow(children[i]);
    return count;
}

// A manager that is starting loses windows that are shown in the meantime. So one is shown again and again until it is
// taken in.
bool User::WaitForManager() {
    const xcb_window_t probe = xcb_generate_id(x_.get());
    xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, probe, screen_->root, 0, 0, 50, 50, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    bool taken = false;
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!taken && std::chrono::steady_clock::now() < deadline) {
        xcb_unmap_window(x_.get(), probe);
        xcb_map_window(x_.get(), probe);
        Settle();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        taken = !Values(probe, "WM_STATE").empty();
    }
    Destroy(probe);
    return taken;
}

xcb_atom_t User::Atom(const char* name) {
    const auto cookie = xcb_intern_atom(x_.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    return Needed(xcb_intern_atom_reply(x_.get(), cookie, nullptr), "no atom")->atom;
}

std::string User::AtomName(xcb_atom_t atom) {
    const auto reply = Needed(xcb_get_atom_name_reply(x_.get(), xcb_get_atom_name(x_.get(), atom), nullptr), "no atom");
    return {xcb_get_atom_name_name(reply.get()), static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

std::vector<std::uint32_t> User::Values(xcb_window_t window, const char* property) {
    const auto cookie = xcb_get_property(x_.get(), 0, window, Atom(property), XCB_ATOM_ANY, 0, 64);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(x_.get(), cookie, nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}
