#include "PlainPresent.h"

#include <stdlib.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <cstring>
#include <stdexcept>

namespace BackgroundBench {

namespace {

/// Requests of one connection are done in turn: when this is answered, all before it are.
void Await(xcb_connection_t* connection) {
    free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

}  // namespace

PlainPresent::PlainPresent(std::uint32_t width, std::uint32_t height)
    : connection_(xcb_connect(nullptr, nullptr), xcb_disconnect),
      width_(static_cast<std::uint16_t>(width)),
      height_(static_cast<std::uint16_t>(height)),
      picture_(std::size_t{width} * height * 4) {
    xcb_connection_t* const connection = connection_.get();
    if (xcb_connection_has_error(connection)) throw std::runtime_error("no display");
    const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    depth_ = screen->root_depth;
    window_ = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, width_, height_, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    graphics_ = xcb_generate_id(connection);
    xcb_create_gc(connection, graphics_, window_, 0, nullptr);

    const int id = shmget(IPC_PRIVATE, picture_.size(), IPC_CREAT | 0600);
    if (id < 0) throw std::runtime_error("no shared memory");
    void* const memory = shmat(id, nullptr, 0);
    segment_ = xcb_generate_id(connection);
    xcb_shm_attach(connection, segment_, static_cast<std::uint32_t>(id), 0);
    Await(connection);
    shmctl(id, IPC_RMID, nullptr);  // Gone when both have let go of it.
    if (memory == reinterpret_cast<void*>(-1)) throw std::runtime_error("no shared memory");
    shared_ = static_cast<std::byte*>(memory);
    xcb_map_window(connection, window_);
    Await(connection);
}

PlainPresent::~PlainPresent() {
    shmdt(shared_);
}

void PlainPresent::Show() {
    std::memcpy(shared_, picture_.data(), picture_.size());
    xcb_shm_put_image(connection_.get(), window_, graphics_, width_, height_, 0, 0, width_, height_, 0, 0, depth_,
                      XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment_, 0);
    Await(connection_.get());
}

}  // namespace BackgroundBench
