#include "Platform/Linux/DirectComposition/SharedImage.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace Platform::DirectComposition {

namespace {

std::size_t Bytes(const Pixels& view) {
    return view.stride * static_cast<std::size_t>(view.height) * sizeof(std::uint32_t);
}

bool ServerShares(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(connection, &xcb_shm_id);
    if (!extension || !extension->present) return false;
    xcb_shm_query_version_reply_t* const version =
        xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr);
    // Segments by file descriptor came with 1.2. Over a network there is no passing of descriptors, and attaching
    // fails.
    const bool known = version && (version->major_version > 1 || version->minor_version >= 2);
    std::free(version);
    return known;
}

}  // namespace

std::unique_ptr<SharedImage> SharedImage::Make(xcb_connection_t* connection, int width, int height) {
    const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * sizeof(std::uint32_t);
    const int file = memfd_create("velorinth-picture", MFD_CLOEXEC);
    if (file < 0) return nullptr;
    void* const memory = ftruncate(file, static_cast<off_t>(size)) == 0
                             ? mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0)
                             : MAP_FAILED;
    if (memory == MAP_FAILED) {
        close(file);
        return nullptr;
    }
    xcb_shm_seg_t segment = 0;
    if (ServerShares(connection)) {
        segment = xcb_generate_id(connection);
        // The connection takes the descriptor and closes it.
        xcb_generic_error_t* const error =
            xcb_request_check(connection, xcb_shm_attach_fd_checked(connection, segment, file, 1));
        if (error) segment = 0;
        std::free(error);
    } else {
        close(file);
    }
    return std::unique_ptr<SharedImage>(
        new SharedImage(connection, static_cast<std::uint32_t*>(memory), width, height, segment));
}

SharedImage::SharedImage(xcb_connection_t* connection, std::uint32_t* memory, int width, int height,
                         xcb_shm_seg_t segment)
    : connection_(connection), view_{memory, static_cast<std::size_t>(width), width, height}, segment_(segment) {}

SharedImage::~SharedImage() {
    WaitUntilRead();
    if (segment_ != 0) xcb_shm_detach(connection_, segment_);
    munmap(view_.data, Bytes(view_));
}

void SharedImage::Put(xcb_window_t window, xcb_gcontext_t context, std::uint8_t depth) {
    WaitUntilRead();
    if (segment_ == 0) {
        PutInPieces(window, context, depth);
    } else {
        const auto width = static_cast<std::uint16_t>(view_.width);
        const auto height = static_cast<std::uint16_t>(view_.height);
        xcb_shm_put_image(connection_, window, context, width, height, 0, 0, width, height, 0, 0, depth,
                          XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment_, 0);
        // Requests are answered in order, so this answer says that the picture has been read.
        read_ = xcb_get_input_focus(connection_);
        underWay_ = true;
    }
    xcb_flush(connection_);
}

void SharedImage::PutInPieces(xcb_window_t window, xcb_gcontext_t context, std::uint8_t depth) {
    constexpr std::size_t header = 64;
    const std::size_t row = view_.stride * sizeof(std::uint32_t);
    const std::size_t limit = static_cast<std::size_t>(xcb_get_maximum_request_length(connection_)) * 4 - header;
    const int rows = static_cast<int>(std::max<std::size_t>(limit / row, 1));
    for (int y = 0; y < view_.height; y += rows) {
        const int count = std::min(rows, view_.height - y);
        xcb_put_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context, static_cast<std::uint16_t>(view_.width),
                      static_cast<std::uint16_t>(count), 0, static_cast<std::int16_t>(y), 0, depth,
                      static_cast<std::uint32_t>(row * static_cast<std::size_t>(count)),
                      reinterpret_cast<const std::uint8_t*>(view_.Row(y)));
    }
}

void SharedImage::WaitUntilRead() {
    if (!underWay_) return;
    underWay_ = false;
    std::free(xcb_get_input_focus_reply(connection_, read_, nullptr));
}

}  // namespace Platform::DirectComposition
