#include "Platform/Linux/Window/UiThread.h"

#include "Platform/Linux/Window/Registry/WindowRegistry.h"
#include "Platform/Linux/Window/SizeMove.h"

#include <poll.h>

#include <algorithm>

namespace Platform {

namespace {

thread_local std::unique_ptr<UiThread> ownThread;

constexpr std::uint8_t kEventKind = 0x7F;  // The other bit tells that a client sent the event.
constexpr int kSizeMovePoll = 50;          // milliseconds

int KindOf(const xcb_generic_event_t& event) {
    return event.response_type & kEventKind;
}

/// Whether `later` makes `earlier` superfluous: the pointer's path and the steps of a resize are of no interest, only
/// where they have got to.
bool Supersedes(const xcb_generic_event_t& later, const xcb_generic_event_t& earlier) {
    const int kind = KindOf(later);
    if (kind != KindOf(earlier)) return false;
    if (kind == XCB_MOTION_NOTIFY) {
        return reinterpret_cast<const xcb_motion_notify_event_t&>(later).event ==
               reinterpret_cast<const xcb_motion_notify_event_t&>(earlier).event;
    }
    if (kind == XCB_CONFIGURE_NOTIFY && later.response_type == earlier.response_type) {
        return reinterpret_cast<const xcb_configure_notify_event_t&>(later).window ==
               reinterpret_cast<const xcb_configure_notify_event_t&>(earlier).window;
    }
    return false;
}

/// Whether the event only tells what a resize brought with it. A manager that makes a window wider and lower does it in
/// two steps, each with such in its train, and the first is not worth a frame.
bool FollowsResize(const xcb_generic_event_t& event) {
    return KindOf(event) == XCB_EXPOSE || KindOf(event) == XCB_VISIBILITY_NOTIFY;
}

}  // namespace

UiThread& UiThread::OfThisThread() {
    if (!ownThread) ownThread = std::make_unique<UiThread>();
    return *ownThread;
}

UiThread* UiThread::OfThisThreadIfAny() {
    return ownThread.get();
}

UiThread::UiThread() : queue(MessageQueue::OfThisThread()) {}

UiThread::~UiThread() {
    // Windows that a thread leaves behind end with it, without a word to their procedures.
    for (const auto& window : windows) RemoveWindow(window->handle);
}

const std::shared_ptr<Connection>& UiThread::Connect() {
    if (connection) return connection;
    connection = Connection::Open();
    if (connection) {
        cursors.emplace(*connection);
        keyboard.emplace(*connection);
    }
    return connection;
}

std::shared_ptr<Window> UiThread::WindowOfX(xcb_window_t id) const {
    const auto found = std::ranges::find_if(windows, [&](const auto& window) { return window->x->Id() == id; });
    return found == windows.end() ? nullptr : *found;
}

// What an event leads to comes before the next event, which may mean something else then (a press that takes the
// capture). What other threads post has no such claim: a busy one would keep the events away for ever.
MSG UiThread::Next() {
    for (;;) {
        XOwned<xcb_generic_event_t> event;
        if (connection && !queue->HasOwn()) event = NextEvent();
        if (event) HandleEvent(*this, *event);
        if (const std::optional<MSG> message = queue->Take()) return *message;
        if (event) continue;
        if (connection) WatchSizeMove(*this);
        Wait();
    }
}

XOwned<xcb_generic_event_t> UiThread::NextEvent() {
    while (XOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection->Get())}) ahead_.push_back(std::move(event));
    while (!ahead_.empty()) {
        XOwned<xcb_generic_event_t> event = std::move(ahead_.front());
        ahead_.pop_front();
        if (!IsSuperseded(*event)) return event;
    }
    return nullptr;
}

bool UiThread::IsSuperseded(const xcb_generic_event_t& event) const {
    const bool resize = KindOf(event) == XCB_CONFIGURE_NOTIFY;
    const auto other =
        std::ranges::find_if(ahead_, [&](const auto& later) { return !resize || !FollowsResize(*later); });
    return other != ahead_.end() && Supersedes(**other, event);
}

void UiThread::Wait() {
    std::array<pollfd, 2> sources{{{queue->Descriptor(), POLLIN, 0}, {-1, POLLIN, 0}}};
    if (connection) {
        connection->Flush();
        EndIfLost(connection->Get());
        // Whoever waited for an answer since the last look, or flushed, may have read events along with it.
        if (XOwned<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection->Get())}) {
            ahead_.push_back(std::move(event));
        }
        if (!ahead_.empty()) return;
        sources[1].fd = xcb_get_file_descriptor(connection->Get());
    }
    const bool watching = sizeMove && sizeMove->driver == SizeMove::Driver::Manager;
    // Nobody but this thread reads the connection, so nothing can arrive without its descriptor telling.
    ::poll(sources.data(), sources.size(), watching ? kSizeMovePoll : -1);
}

void PostInput(UiThread& thread, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    thread.queue->Post({window, message, wParam, lParam, thread.time, thread.pointer});
}

}  // namespace Platform
