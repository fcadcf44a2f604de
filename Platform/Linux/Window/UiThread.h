// What a thread that makes windows has: its connection, its input state and its windows.
#pragma once

#include "Platform/Linux/Window/Cursors.h"
#include "Platform/Linux/Window/Keyboard.h"
#include "Platform/Linux/Window/Window.h"

#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace Platform {

/// A move or a resize by the pointer that is under way.
struct SizeMove {
    enum class Driver {
        Waiting,  // the caption is pressed; it begins when the pointer moves
        Manager,  // the window manager moves the pointer's grip
        Own,      // nobody else does it, so we do
    };
    std::shared_ptr<Window> window;
    Driver driver = Driver::Waiting;
    int grip = HTCAPTION;  // a hit-test code: the caption, an edge or a corner
    POINT start{};         // of the pointer
    RECT startRectangle{};
};

/// The last press, for telling a double click.
struct Press {
    HWND window = nullptr;
    std::uint8_t button = 0;
    int hit = HTNOWHERE;
    xcb_timestamp_t time = 0;
    POINT place{};
};

/// A wish for one message when the pointer leaves.
struct LeaveTracking {
    HWND window = nullptr;
    bool nonClient = false;
};

class UiThread {
public:
    static UiThread& OfThisThread();
    /// Null where no window has been made.
    static UiThread* OfThisThreadIfAny();

    UiThread();
    ~UiThread();
    UiThread(const UiThread&) = delete;
    UiThread& operator=(const UiThread&) = delete;

    /// The connection, opened at the first call; null when there is no X server.
    const std::shared_ptr<Connection>& Connect();

    /// The next message for GetMessageW; waits for it.
    MSG Next();

    std::shared_ptr<Window> WindowOfX(xcb_window_t id) const;

    const std::shared_ptr<MessageQueue> queue;
    std::shared_ptr<Connection> connection;
    std::optional<Cursors> cursors;
    std::optional<Keyboard> keyboard;
    std::vector<std::shared_ptr<Window>> windows;

    HWND capture = nullptr;
    LeaveTracking tracking;
    int hit = HTNOWHERE;       // where in its window the pointer was last seen
    POINT pointer{};           // in screen coordinates, when last told
    xcb_timestamp_t time = 0;  // of the last input event
    Press lastPress;
    std::optional<SizeMove> sizeMove;
    std::u16string keyText;  // what the last key that went down types

private:
    XOwned<xcb_generic_event_t> NextEvent();
    bool IsSuperseded(const xcb_generic_event_t& event) const;
    void Wait();

    std::deque<XOwned<xcb_generic_event_t>> ahead_;  // read already, to see whether an event is the last of its kind
};

/// Posts an input message, with the time and place of the event that it stems from.
void PostInput(UiThread& thread, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Takes one event of the X server to what it means for its window. Events.cpp.
void HandleEvent(UiThread& thread, const xcb_generic_event_t& event);

// Pointer.cpp
void HandleMotion(UiThread& thread, const std::shared_ptr<Window>& window, POINT place, std::uint16_t state);
void HandleButton(UiThread& thread, const std::shared_ptr<Window>& window, const xcb_button_press_event_t& event,
                  bool down);
void HandlePointerGone(UiThread& thread, Window& window);

}  // namespace Platform
