#include "Platform/Linux/Window/Keyboard.h"

#include "Platform/Linux/Window/KeyTable.h"
#include "Platform/Linux/Window/UiThread.h"
#include "Platform/Text/Unicode.h"

// The header names a field of a record `explicit`.
#define explicit explicitMembers
#include <xcb/xkb.h>
#undef explicit
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>
#include <string>
#include <utility>

namespace Platform {

namespace {

constexpr LPARAM kExtended = LPARAM{1} << 24;
constexpr LPARAM kAltHeld = LPARAM{1} << 29;
constexpr LPARAM kWasDown = LPARAM{1} << 30;
constexpr LPARAM kReleased = LPARAM{1} << 31;
constexpr int kScanShift = 16;
constexpr std::uint8_t kEventKind = 0x7F;

/// The locale that text is typed in, by the variables' order of precedence.
const char* TypingLocale() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value && *value) return value;
    }
    return "C";
}

}  // namespace

Keyboard::Keyboard(const Connection& connection)
    : connection_(connection), context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    const int found =
        xkb_x11_setup_xkb_extension(connection.Get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent_, nullptr);
    if (found) device_ = xkb_x11_get_core_keyboard_device_id(connection.Get());
    LoadLayout();
    FollowChanges();
}

Keyboard::~Keyboard() {
    xkb_compose_state_unref(compose_);
    xkb_compose_table_unref(composeTable_);
    xkb_state_unref(state_);
    xkb_keymap_unref(keymap_);
    xkb_context_unref(context_);
}

/// Reads how the locale composes characters, at the first press: the table is a large file, and a window's start
/// needn't wait for it.
void Keyboard::LoadComposing() {
    if (std::exchange(composingLoaded_, true)) return;
    composeTable_ = xkb_compose_table_new_from_locale(context_, TypingLocale(), XKB_COMPOSE_COMPILE_NO_FLAGS);
    if (composeTable_) compose_ = xkb_compose_state_new(composeTable_, XKB_COMPOSE_STATE_NO_FLAGS);
}

void Keyboard::LoadLayout() {
    xkb_state_unref(state_);
    xkb_keymap_unref(keymap_);
    state_ = nullptr;
    keymap_ = nullptr;
    if (device_ >= 0) {
        keymap_ = xkb_x11_keymap_new_from_device(context_, connection_.Get(), device_, XKB_KEYMAP_COMPILE_NO_FLAGS);
        if (keymap_) state_ = xkb_x11_state_new_from_device(keymap_, connection_.Get(), device_);
    }
    if (state_) return;
    xkb_keymap_unref(keymap_);
    device_ = -1;
    const xkb_rule_names american{nullptr, nullptr, "us", nullptr, nullptr};
    keymap_ = xkb_keymap_new_from_names(context_, &american, XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (keymap_) state_ = xkb_state_new(keymap_);
}

void Keyboard::FollowChanges() {
    if (device_ < 0) return;
    constexpr std::uint16_t events =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t map = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                  XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_KEY_ACTIONS |
                                  XCB_XKB_MAP_PART_VIRTUAL_MODS | XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    constexpr std::uint16_t state = XCB_XKB_STATE_PART_MODIFIER_BASE | XCB_XKB_STATE_PART_MODIFIER_LATCH |
                                    XCB_XKB_STATE_PART_MODIFIER_LOCK | XCB_XKB_STATE_PART_GROUP_BASE |
                                    XCB_XKB_STATE_PART_GROUP_LATCH | XCB_XKB_STATE_PART_GROUP_LOCK;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.affectState = details.stateDetails = state;
    const auto device = static_cast<xcb_xkb_device_spec_t>(device_);
    xcb_xkb_select_events_aux(connection_.Get(), device, events, 0, 0, map, map, &details);
    // A held key then comes as presses alone, and so can be told from one that is struck again.
    constexpr std::uint32_t repeats = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie = xcb_xkb_per_client_flags(connection_.Get(), device, repeats, repeats, 0, 0, 0);
    xcb_discard_reply(connection_.Get(), cookie.sequence);
}

bool Keyboard::Handle(const xcb_generic_event_t& event) {
    if (device_ < 0 || (event.response_type & kEventKind) != firstEvent_) return false;
    // All events of the extension share one code; which one it is stands in the byte behind it.
    if (event.pad0 != XCB_XKB_STATE_NOTIFY) {
        LoadLayout();
        return true;
    }
    const auto& change = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    if (!state_) return true;
    xkb_state_update_mask(state_, change.baseMods, change.latchedMods, change.lockedMods,
                          static_cast<xkb_layout_index_t>(change.baseGroup),
                          static_cast<xkb_layout_index_t>(change.latchedGroup), change.lockedGroup);
    TakeModifiers();
    return true;
}

void Keyboard::TakeModifiers() {
    const auto held = [&](const char* name) {
        return xkb_state_mod_name_is_active(state_, name, XKB_STATE_MODS_DEPRESSED) > 0;
    };
    down_[VK_SHIFT] = held(XKB_MOD_NAME_SHIFT);
    down_[VK_CONTROL] = held(XKB_MOD_NAME_CTRL);
    down_[VK_MENU] = held(XKB_MOD_NAME_ALT);
}

void Keyboard::WithoutExtension(std::uint16_t state) {
    if (device_ >= 0 || !state_) return;
    xkb_state_update_mask(state_, state & 0xFFU, 0, 0, 0, 0, 0);
    TakeModifiers();
}

int Keyboard::VirtualKey(std::uint8_t keycode) const {
    if (!keymap_) return VirtualKeyOfPlace(keycode);
    const xkb_layout_index_t layout = xkb_state_key_get_layout(state_, keycode);
    const xkb_keysym_t* symbols = nullptr;
    int key = 0;
    if (xkb_keymap_key_get_syms_by_level(keymap_, keycode, layout, 0, &symbols) == 1) {
        key = VirtualKeyOfSymbol(symbols[0]);
    }
    // The digits of the number pad stand on its second level.
    const int locked = VirtualKeyOfSymbol(xkb_state_key_get_one_sym(state_, keycode));
    if (locked >= VK_NUMPAD0 && locked < VK_DIVIDE) key = locked;
    return key != 0 ? key : VirtualKeyOfPlace(keycode);
}

KeyEvent Keyboard::Describe(std::uint8_t keycode, bool down) {
    KeyEvent described;
    described.virtualKey = VirtualKey(keycode);
    const bool alt = down_[VK_MENU] && !down_[VK_CONTROL];
    const bool system = alt || described.virtualKey == VK_F10;
    described.message = down ? (system ? WM_SYSKEYDOWN : WM_KEYDOWN) : (system ? WM_SYSKEYUP : WM_KEYUP);
    const ScanCode scan = ScanCodeOf(keycode);
    described.details = 1 | LPARAM{scan.code} << kScanShift;
    if (scan.extended) described.details |= kExtended;
    if (alt) described.details |= kAltHeld;
    if (keys_[keycode]) described.details |= kWasDown;
    if (!down) described.details |= kReleased | kWasDown;
    return described;
}

KeyEvent Keyboard::Press(std::uint8_t keycode, std::uint16_t state) {
    WithoutExtension(state);
    const int key = VirtualKey(keycode);
    down_[static_cast<std::uint8_t>(key)] = key != 0;
    KeyEvent described = Describe(keycode, true);
    keys_[keycode] = true;
    described.text = Typed(keycode);
    return described;
}

KeyEvent Keyboard::Release(std::uint8_t keycode, std::uint16_t state) {
    WithoutExtension(state);
    // Alt's own release still is one of the system's.
    KeyEvent described = Describe(keycode, false);
    keys_[keycode] = false;
    down_[static_cast<std::uint8_t>(described.virtualKey)] = false;
    return described;
}

std::u16string Keyboard::Typed(std::uint8_t keycode) {
    if (!state_) return {};
    std::array<char, 64> text{};
    const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state_, keycode);
    LoadComposing();
    if (compose_ && xkb_compose_state_feed(compose_, symbol) == XKB_COMPOSE_FEED_ACCEPTED) {
        const xkb_compose_status status = xkb_compose_state_get_status(compose_);
        if (status == XKB_COMPOSE_COMPOSED) xkb_compose_state_get_utf8(compose_, text.data(), text.size());
        if (status == XKB_COMPOSE_COMPOSED || status == XKB_COMPOSE_CANCELLED) xkb_compose_state_reset(compose_);
        if (status == XKB_COMPOSE_COMPOSING || status == XKB_COMPOSE_CANCELLED) return {};
    }
    if (!text[0]) xkb_state_key_get_utf8(state_, keycode, text.data(), text.size());
    // Delete types nothing on Windows, though it does here.
    static constexpr char deleteCharacter = 0x7F;
    if (!text[0] || text[0] == deleteCharacter) return {};
    try {
        return Utf16FromWide(WideFromUtf8(text.data()));
    } catch (const InvalidText&) {
        return {};
    }
}

void Keyboard::Forget() {
    down_.fill(false);
    keys_.fill(false);
    if (compose_) xkb_compose_state_reset(compose_);
    if (state_) TakeModifiers();
}

SHORT Keyboard::State(int virtualKey) const {
    if (virtualKey <= 0 || virtualKey > 0xFF) return 0;
    unsigned result = down_[static_cast<std::uint8_t>(virtualKey)] ? 0x8000U : 0U;
    const auto locked = [&](const char* name) {
        return state_ && xkb_state_mod_name_is_active(state_, name, XKB_STATE_MODS_LOCKED) > 0;
    };
    if (virtualKey == VK_CAPITAL && locked(XKB_MOD_NAME_CAPS)) result |= 1U;
    if (virtualKey == VK_NUMLOCK && locked(XKB_MOD_NAME_NUM)) result |= 1U;
    return static_cast<SHORT>(result);
}

}  // namespace Platform

SHORT GetKeyState(int virtualKey) noexcept {
    const Platform::UiThread* thread = Platform::UiThread::OfThisThreadIfAny();
    return thread && thread->keyboard ? thread->keyboard->State(virtualKey) : SHORT{0};
}
