// The X server's events, taken to what they mean for their window.
#include "Platform/Linux/Window/Display.h"
#include "Platform/Linux/Window/Manager.h"
#include "Platform/Linux/Window/Placement.h"
#include "Platform/Linux/Window/SizeMove.h"
#include "Platform/Linux/Window/UiThread.h"

#include <cmath>

namespace Platform {

namespace {

constexpr std::uint8_t kEventKind = 0x7F;
constexpr std::uint8_t kSentByClient = 0x80;

template <class Event>
const Event& As(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

/// Where the window lies on the screen, as the server has it at this moment.
POINT PlaceOnScreen(const Window& window) {
    const Connection& x = window.x->Input();
    const auto cookie = xcb_translate_coordinates(x.Get(), window.x->Id(), x.Screen().root, 0, 0);
    const XOwned<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(x.Get(), cookie, nullptr));
    if (!reply) return {window.View().window.left, window.View().window.top};
    return {reply->dst_x, reply->dst_y};
}

/// The window manager's place for the window. Its own messages (ICCCM 4.1.5) tell it in screen coordinates; the
/// server's in those of the frame that the window may have been put into.
POINT PlaceOf(const Window& window, const xcb_configure_notify_event_t& event) {
    if ((event.response_type & kSentByClient) || !window.reparented) return {event.x, event.y};
    return PlaceOnScreen(window);
}

void HandleConfigure(Window& window, const xcb_configure_notify_event_t& event) {
    // What the server did before it read our last request is past: that request's own answer follows.
    const auto& whole = reinterpret_cast<const xcb_generic_event_t&>(event);
    if (static_cast<std::int32_t>(whole.full_sequence - window.lastConfigure) < 0) return;
    const POINT place = PlaceOf(window, event);
    RectangleArrived(window, {place.x, place.y, place.x + event.width, place.y + event.height});
}

/// A manager that has moved the window ahead of framing it, and shows it where it was to be all along, sees nothing in
/// that to tell: the last that was heard is a place that has passed.
void HandleMapped(Window& window) {
    if (!window.reparented) return;
    const RECT known = window.View().window;
    const POINT place = PlaceOnScreen(window);
    if (place.x == known.left && place.y == known.top) return;
    RectangleArrived(window,
                     {place.x, place.y, place.x + known.right - known.left, place.y + known.bottom - known.top});
}

void HandleProperty(UiThread& thread, const xcb_property_notify_event_t& event) {
    const Connection& x = *thread.connection;
    if (event.window == x.Screen().root && event.atom == XCB_ATOM_RESOURCE_MANAGER) {
        const UINT dpi = ReadDpi(x);
        const auto windows = thread.windows;
        for (const auto& window : windows) {
            const WindowView view = window->View();
            if (dpi == view.dpi) continue;
            window->Change([&](WindowView& changed) { changed.dpi = dpi; });
            const auto scaled = [&](LONG length) {
                return static_cast<LONG>(std::lround(length * static_cast<double>(dpi) / view.dpi));
            };
            RECT wish = view.window;
            wish.right = wish.left + scaled(view.window.right - view.window.left);
            wish.bottom = wish.top + scaled(view.window.bottom - view.window.top);
            CallProcedure(window->handle, WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                          reinterpret_cast<LPARAM>(&wish));
            PublishSizeLimits(*window);
        }
        return;
    }
    if (event.atom != x[Atom::NetWmState] && event.atom != x[Atom::WmState]) return;
    if (const auto window = thread.WindowOfX(event.window)) RefreshState(*window);
}

void HandleMessage(UiThread& thread, Window& window, const xcb_client_message_event_t& event) {
    const Connection& x = *thread.connection;
    if (event.type != x[Atom::WmProtocols] || event.format != 32) return;
    const xcb_atom_t protocol = event.data.data32[0];
    if (protocol == x[Atom::WmDeleteWindow]) {
        PostInput(thread, window.handle, WM_SYSCOMMAND, SC_CLOSE, 0);
    } else if (protocol == x[Atom::NetWmPing]) {
        xcb_client_message_event_t answer = event;
        answer.window = x.Screen().root;
        xcb_send_event(x.Get(), 0, answer.window,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&answer));
        x.Flush();
    } else if (protocol == x[Atom::NetWmSyncRequest]) {
        window.AskForFrame(std::uint64_t{event.data.data32[3]} << 32U | event.data.data32[2]);
    }
}

void HandleKey(UiThread& thread, const Window& window, const xcb_key_press_event_t& event, bool down) {
    thread.time = event.time;
    KeyEvent key =
        down ? thread.keyboard->Press(event.detail, event.state) : thread.keyboard->Release(event.detail, event.state);
    if (down) thread.keyText = std::move(key.text);
    if (key.virtualKey == 0) return;
    PostInput(thread, window.handle, key.message, static_cast<WPARAM>(key.virtualKey), key.details);
}

void HandleFocus(UiThread& thread, const Window& window, const xcb_focus_in_event_t& event, bool in) {
    // Grabs of the keyboard, and the pointer's being in a window, are no change of the focus.
    if (event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB) return;
    if (event.detail == XCB_NOTIFY_DETAIL_POINTER || event.detail == XCB_NOTIFY_DETAIL_INFERIOR) return;
    thread.keyboard->Forget();
    CallProcedure(window.handle, WM_ACTIVATE, in ? WA_ACTIVE : WA_INACTIVE, 0);
    CallProcedure(window.handle, in ? WM_SETFOCUS : WM_KILLFOCUS, 0, 0);
}

void TakeFocus(UiThread& thread, const Window& window) {
    if (thread.connection->HasManager()) return;
    xcb_set_input_focus(thread.connection->Get(), XCB_INPUT_FOCUS_PARENT, window.x->Id(), XCB_CURRENT_TIME);
    thread.connection->Flush();
}

void HandleExpose(UiThread& thread, Window& window, const xcb_expose_event_t& event) {
    if (event.count > 0) return;
    window.exposedListeners.Tell();
    if (window.painting) return;
    window.painting = true;
    PostInput(thread, window.handle, WM_PAINT, 0, 0);
}

/// The window that an event is about; the server tells it at different places.
xcb_window_t Subject(const xcb_generic_event_t& event) {
    switch (event.response_type & kEventKind) {
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE:
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE:
        case XCB_MOTION_NOTIFY:
        case XCB_ENTER_NOTIFY:
        case XCB_LEAVE_NOTIFY:
            return As<xcb_key_press_event_t>(event).event;
        case XCB_CLIENT_MESSAGE:
            return As<xcb_client_message_event_t>(event).window;
        case XCB_CONFIGURE_NOTIFY:
        case XCB_MAP_NOTIFY:
        case XCB_UNMAP_NOTIFY:
        case XCB_REPARENT_NOTIFY:
            return As<xcb_map_notify_event_t>(event).window;
        case XCB_FOCUS_IN:
        case XCB_FOCUS_OUT:
        case XCB_EXPOSE:
        case XCB_VISIBILITY_NOTIFY:
            return As<xcb_focus_in_event_t>(event).event;
        default:
            return XCB_NONE;
    }
}

void HandlePointer(UiThread& thread, const std::shared_ptr<Window>& window, const xcb_generic_event_t& event) {
    const auto& pointer = As<xcb_button_press_event_t>(event);
    thread.time = pointer.time;
    const int kind = event.response_type & kEventKind;
    if (kind == XCB_BUTTON_PRESS) TakeFocus(thread, *window);
    if (kind == XCB_BUTTON_PRESS || kind == XCB_BUTTON_RELEASE) {
        HandleButton(thread, window, pointer, kind == XCB_BUTTON_PRESS);
    } else {
        HandleMotion(thread, window, {pointer.root_x, pointer.root_y}, pointer.state);
    }
}

void HandleCrossing(UiThread& thread, const std::shared_ptr<Window>& window, const xcb_enter_notify_event_t& event,
                    bool in) {
    thread.time = event.time;
    // A manager's move ends with the pointer's return to us.
    if (in && (event.state & XCB_BUTTON_MASK_1) == 0) EndSizeMove(thread);
    if (thread.capture || thread.sizeMove) return;  // the pointer is ours wherever it is
    if (in) {
        HandleMotion(thread, window, {event.root_x, event.root_y}, event.state);
    } else {
        HandlePointerGone(thread, *window);
    }
}

}  // namespace

void HandleEvent(UiThread& thread, const xcb_generic_event_t& event) {
    const int kind = event.response_type & kEventKind;
    if (kind == XCB_PROPERTY_NOTIFY) return HandleProperty(thread, As<xcb_property_notify_event_t>(event));
    if (thread.keyboard->Handle(event)) return;
    const std::shared_ptr<Window> window = thread.WindowOfX(Subject(event));
    if (!window) return;
    switch (kind) {
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE:
            return HandleKey(thread, *window, As<xcb_key_press_event_t>(event), kind == XCB_KEY_PRESS);
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE:
        case XCB_MOTION_NOTIFY:
            return HandlePointer(thread, window, event);
        case XCB_ENTER_NOTIFY:
        case XCB_LEAVE_NOTIFY:
            return HandleCrossing(thread, window, As<xcb_enter_notify_event_t>(event), kind == XCB_ENTER_NOTIFY);
        case XCB_CONFIGURE_NOTIFY:
            return HandleConfigure(*window, As<xcb_configure_notify_event_t>(event));
        case XCB_REPARENT_NOTIFY:
            window->reparented = As<xcb_reparent_notify_event_t>(event).parent != thread.connection->Screen().root;
            return;
        case XCB_MAP_NOTIFY:
            HandleMapped(*window);
            return TakeFocus(thread, *window);
        case XCB_VISIBILITY_NOTIFY: {
            const bool covered = As<xcb_visibility_notify_event_t>(event).state == XCB_VISIBILITY_FULLY_OBSCURED;
            return window->Change([&](WindowView& view) { view.covered = covered; });
        }
        case XCB_FOCUS_IN:
        case XCB_FOCUS_OUT:
            return HandleFocus(thread, *window, As<xcb_focus_in_event_t>(event), kind == XCB_FOCUS_IN);
        case XCB_EXPOSE:
            return HandleExpose(thread, *window, As<xcb_expose_event_t>(event));
        case XCB_CLIENT_MESSAGE:
            return HandleMessage(thread, *window, As<xcb_client_message_event_t>(event));
        default:
            return;
    }
}

}  // namespace Platform
