// A picture in memory that the X server can read.
#pragma once

#include "Platform/Linux/Pixels/Blend.h"

#include <xcb/shm.h>

#include <cstdint>
#include <memory>

namespace Platform::DirectComposition {

/// Pixels in memory shared with the X server, or in plain memory, sent over the connection, where the server can't
/// share (a display over a network). Move-only by way of its owner's pointer. One thread at a time.
class SharedImage {
public:
    /// Null when there is no memory. `connection` outlives the image.
    static std::unique_ptr<SharedImage> Make(xcb_connection_t* connection, int width, int height);
    ~SharedImage();
    SharedImage(const SharedImage&) = delete;
    SharedImage& operator=(const SharedImage&) = delete;

    const Pixels& View() const { return view_; }

    /// Draws the picture into the window, top left on top left. The pixels must stay as they are until WaitUntilRead.
    void Put(xcb_window_t window, xcb_gcontext_t context, std::uint8_t depth);

    /// Returns once the server has read the last Put's pixels. At once when there is none under way.
    void WaitUntilRead();

private:
    SharedImage(xcb_connection_t* connection, std::uint32_t* memory, int width, int height, xcb_shm_seg_t segment);
    void PutInPieces(xcb_window_t window, xcb_gcontext_t context, std::uint8_t depth);

    xcb_connection_t* connection_;
    Pixels view_;
    xcb_shm_seg_t segment_;  ///< 0 without shared memory.
    bool underWay_ = false;
    xcb_get_input_focus_cookie_t read_{};
};

}  // namespace Platform::DirectComposition
