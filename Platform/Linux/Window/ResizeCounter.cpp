#include "Platform/Linux/Window/ResizeCounter.h"

#include <xcb/sync.h>

#include <limits>
#include <string>
#include <string_view>

namespace Platform {

namespace {

/// Where the name begins in a system counter's description (SYNC protocol, LISTofSYSTEMCOUNTER). The library's own
/// function takes it for two bytes later, since its structure is padded and the protocol's is not.
constexpr std::size_t kNameOffset = 14;

/// How long a frame stays: one period of the display and a half, in milliseconds as the server counts them. The
/// manager's next size then comes shortly before the next frame but one can begin. Half a period less would show no
/// more sizes, and each of them for a shorter time.
constexpr std::uint32_t kStay = 24;

xcb_sync_int64_t Wide(std::uint64_t value) {
    return {static_cast<std::int32_t>(value >> 32U), static_cast<std::uint32_t>(value)};
}

/// Whether a compositing manager draws the screen: it owns a selection of the screen's.
bool IsComposited(const Connection& connection) {
    xcb_connection_t* const x = connection.Get();
    const std::string name = "_NET_WM_CM_S" + std::to_string(connection.ScreenNumber());
    const auto atomCookie = xcb_intern_atom(x, 1, static_cast<std::uint16_t>(name.size()), name.data());
    const XOwned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(x, atomCookie, nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE) return false;
    const auto ownerCookie = xcb_get_selection_owner(x, atom->atom);
    const XOwned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(x, ownerCookie, nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

/// Has the server leave the connection's next requests for as long as a frame stays.
void Rest(xcb_connection_t* x, std::uint32_t clock) {
    xcb_sync_waitcondition_t until{};
    until.trigger.counter = clock;
    until.trigger.wait_type = XCB_SYNC_VALUETYPE_RELATIVE;
    until.trigger.wait_value = Wide(kStay);
    until.trigger.test_type = XCB_SYNC_TESTTYPE_POSITIVE_COMPARISON;
    until.event_threshold = Wide(std::numeric_limits<std::int64_t>::max());  // no event: nobody looks for one
    xcb_sync_await(x, 1, &until);
}

}  // namespace

std::uint32_t FrameClock(const Connection& connection) {
    if (IsComposited(connection)) return 0;
    xcb_connection_t* const x = connection.Get();
    const XOwned<xcb_sync_list_system_counters_reply_t> all(
        xcb_sync_list_system_counters_reply(x, xcb_sync_list_system_counters(x), nullptr));
    if (!all) return 0;
    for (auto each = xcb_sync_list_system_counters_counters_iterator(all.get()); each.rem > 0;
         xcb_sync_systemcounter_next(&each)) {
        const std::string_view name(reinterpret_cast<const char*>(each.data) + kNameOffset,
                                    static_cast<std::size_t>(xcb_sync_systemcounter_name_length(each.data)));
        if (name == "SERVERTIME") return each.data->counter;
    }
    return 0;
}

ResizeCounter::ResizeCounter(const Connection& connection) : id_(xcb_generate_id(connection.Get())) {
    xcb_sync_create_counter(connection.Get(), id_, Wide(0));
}

void ResizeCounter::Ask(std::uint64_t value, std::uint32_t clock) {
    asked_ = value;
    clock_ = clock;
}

// Sizes come unasked too, and several times over: they say nothing of the frame that is owed.
void ResizeCounter::SizeArrived(bool changed, xcb_connection_t* rendering) {
    if (!asked_) return;
    owed_ = std::exchange(asked_, std::nullopt);
    if (!changed) Raise(rendering);
}

// Over the connection that the frame went: the server takes all in that order.
void ResizeCounter::FrameShown(xcb_connection_t* rendering) {
    if (owed_ && clock_ != 0) Rest(rendering, clock_);
    Raise(rendering);
}

void ResizeCounter::Raise(xcb_connection_t* rendering) {
    if (!owed_) return;
    xcb_sync_set_counter(rendering, id_, Wide(*std::exchange(owed_, std::nullopt)));
    xcb_flush(rendering);
}

}  // namespace Platform
