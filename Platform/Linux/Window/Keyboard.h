// The keyboard of a display: what its keys mean and which of them are down.
#pragma once

#include "Platform/Linux/Window/Connection.h"

#include <windows.h>

#include <array>
#include <string>

struct xkb_context;
struct xkb_keymap;
struct xkb_state;
struct xkb_compose_table;
struct xkb_compose_state;

namespace Platform {

/// What one press or release of a key comes to.
struct KeyEvent {
    UINT message = 0;     // WM_KEYDOWN and its three companions
    int virtualKey = 0;   // 0: the key means nothing here
    LPARAM details = 0;   // as in the message's lParam
    std::u16string text;  // what the press types
};

/// Follows the layout and the modifiers of the server's keyboard by the XKB extension; without that an American layout
/// and the modifiers that each event tells. One thread.
class Keyboard {
public:
    explicit Keyboard(const Connection& connection);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    KeyEvent Press(std::uint8_t keycode, std::uint16_t state);
    KeyEvent Release(std::uint8_t keycode, std::uint16_t state);

    /// Takes one of the extension's events. False for an event of another kind.
    bool Handle(const xcb_generic_event_t& event);

    /// The window has lost or got the keyboard: keys that are down go up unseen.
    void Forget();

    /// As GetKeyState.
    SHORT State(int virtualKey) const;

private:
    void LoadLayout();
    void LoadComposing();
    void FollowChanges();
    void TakeModifiers();
    void WithoutExtension(std::uint16_t state);
    int VirtualKey(std::uint8_t keycode) const;
    KeyEvent Describe(std::uint8_t keycode, bool down);
    std::u16string Typed(std::uint8_t keycode);

    const Connection& connection_;
    xkb_context* context_ = nullptr;
    xkb_keymap* keymap_ = nullptr;
    xkb_state* state_ = nullptr;
    xkb_compose_table* composeTable_ = nullptr;
    xkb_compose_state* compose_ = nullptr;
    bool composingLoaded_ = false;
    std::int32_t device_ = -1;      // the extension's number of the keyboard; -1 without it
    std::uint8_t firstEvent_ = 0;   // the extension's event code
    std::array<bool, 256> down_{};  // by virtual key
    std::array<bool, 256> keys_{};  // by keycode
};

}  // namespace Platform
