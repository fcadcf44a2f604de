#include "Platform/Linux/Window/SizeMove.h"

#include "Platform/Linux/Window/Manager.h"
#include "Platform/Linux/Window/Placement.h"

#include <algorithm>

namespace Platform {

namespace {

bool GripsLeft(int grip) {
    return grip == HTLEFT || grip == HTTOPLEFT || grip == HTBOTTOMLEFT;
}
bool GripsRight(int grip) {
    return grip == HTRIGHT || grip == HTTOPRIGHT || grip == HTBOTTOMRIGHT;
}
bool GripsTop(int grip) {
    return grip == HTTOP || grip == HTTOPLEFT || grip == HTTOPRIGHT;
}
bool GripsBottom(int grip) {
    return grip == HTBOTTOM || grip == HTBOTTOMLEFT || grip == HTBOTTOMRIGHT;
}

/// The direction of _NET_WM_MOVERESIZE: clockwise from the top left corner, then the move.
std::uint32_t Direction(int grip) {
    switch (grip) {
        case HTTOPLEFT:
            return 0;
        case HTTOP:
            return 1;
        case HTTOPRIGHT:
            return 2;
        case HTRIGHT:
            return 3;
        case HTBOTTOMRIGHT:
            return 4;
        case HTBOTTOM:
            return 5;
        case HTBOTTOMLEFT:
            return 6;
        case HTLEFT:
            return 7;
        default:
            return 8;
    }
}

/// The rectangle with its gripped edges moved by the pointer, none beyond where the window would get too small.
RECT Dragged(const SizeMove& move, POINT place) {
    const LONG right = place.x - move.start.x;
    const LONG down = place.y - move.start.y;
    RECT moved = move.startRectangle;
    if (move.grip == HTCAPTION) {
        return {moved.left + right, moved.top + down, moved.right + right, moved.bottom + down};
    }
    const SIZE least = MinimumSize(*move.window);
    if (GripsLeft(move.grip)) moved.left = std::min(moved.left + right, moved.right - least.cx);
    if (GripsRight(move.grip)) moved.right = std::max(moved.right + right, moved.left + least.cx);
    if (GripsTop(move.grip)) moved.top = std::min(moved.top + down, moved.bottom - least.cy);
    if (GripsBottom(move.grip)) moved.bottom = std::max(moved.bottom + down, moved.top + least.cy);
    return moved;
}

bool LeftPressPlace(POINT start, POINT place) {
    static constexpr LONG tolerance = 4;  // pixels
    return std::abs(place.x - start.x) > tolerance || std::abs(place.y - start.y) > tolerance;
}

/// What else a request of _NET_WM_MOVERESIZE says.
constexpr std::uint32_t kCancel = 11;  // in place of a direction
constexpr std::uint32_t kLeftButton = 1;
constexpr std::uint32_t kApplication = 1;

void Start(SizeMove& move) {
    const Window& window = *move.window;
    const Connection& x = window.x->Input();
    const HWND handle = window.handle;
    PublishSizeLimits(window);
    const bool managed = x.ManagerSupports(Atom::NetWmMoveResize);
    move.driver = managed ? SizeMove::Driver::Manager : SizeMove::Driver::Own;
    if (managed) {
        // The press gave the pointer to us; the manager can't take it before we let go.
        xcb_ungrab_pointer(x.Get(), XCB_CURRENT_TIME);
        x.TellManager(window.x->Id(), x[Atom::NetWmMoveResize],
                      {static_cast<std::uint32_t>(move.start.x), static_cast<std::uint32_t>(move.start.y),
                       Direction(move.grip), kLeftButton, kApplication});
    }
    CallProcedure(handle, WM_ENTERSIZEMOVE, 0, 0);
}

}  // namespace

void BeginSizeMove(UiThread& thread, const std::shared_ptr<Window>& window, int grip) {
    if (thread.sizeMove) EndSizeMove(thread);
    const WindowView view = window->View();
    const bool move = grip == HTCAPTION;
    if (!move && (!window->Resizable() || view.zoomed)) return;
    thread.sizeMove = SizeMove{window, SizeMove::Driver::Waiting, grip, thread.pointer, view.window};
    if (!move) Start(*thread.sizeMove);
}

bool DriveSizeMove(UiThread& thread, POINT place) {
    if (!thread.sizeMove) return false;
    SizeMove& move = *thread.sizeMove;
    if (move.driver == SizeMove::Driver::Waiting) {
        if (!LeftPressPlace(move.start, place)) return true;
        Start(move);
    }
    // A maximised window moves only by a manager, which knows how to take it out of that state.
    if (thread.sizeMove && move.driver == SizeMove::Driver::Own && !move.window->View().zoomed) {
        const std::shared_ptr<Window> window = move.window;
        MoveWindowTo(*window, Dragged(move, place));
    }
    return true;
}

void EndSizeMove(UiThread& thread) {
    if (!thread.sizeMove) return;
    const SizeMove ended = *std::exchange(thread.sizeMove, std::nullopt);
    if (ended.driver == SizeMove::Driver::Manager) {
        // A manager that took the pointer after the button was up would wait for a release that is past, and the window
        // would hang on the pointer. One that has seen the release has nothing left to cancel.
        const Connection& x = ended.window->x->Input();
        x.TellManager(ended.window->x->Id(), x[Atom::NetWmMoveResize],
                      {static_cast<std::uint32_t>(thread.pointer.x), static_cast<std::uint32_t>(thread.pointer.y),
                       kCancel, kLeftButton, kApplication});
    }
    if (ended.driver != SizeMove::Driver::Waiting) CallProcedure(ended.window->handle, WM_EXITSIZEMOVE, 0, 0);
}

void WatchSizeMove(UiThread& thread) {
    if (!thread.sizeMove || thread.sizeMove->driver != SizeMove::Driver::Manager) return;
    xcb_connection_t* x = thread.connection->Get();
    const auto cookie = xcb_query_pointer(x, thread.connection->Screen().root);
    const XOwned<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(x, cookie, nullptr));
    if (pointer && (pointer->mask & XCB_BUTTON_MASK_1) == 0) EndSizeMove(thread);
}

}  // namespace Platform
