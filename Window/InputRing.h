#pragma once

#include "Scene/InputEvent.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Tamborel {

/// The one path of input from the UI thread to the render thread. One producer, one consumer, no lock.
///
///     tail ─► [oldest][ … ][newest][free][ … ] ◄─ head
///
/// Empty is head equal to tail; one slot always stays free, so that full can be told from empty.
class InputRing {
public:
    static constexpr std::uint32_t Capacity = 511;

    /// UI thread. False when the ring is full: the event is dropped.
    bool Push(const InputEvent& event) noexcept {
        const std::uint32_t head = head_.load(std::memory_order_relaxed);
        const std::uint32_t next = (head + 1) & Mask;
        if (next == tail_.load(std::memory_order_acquire)) return false;
        slots_[head] = event;
        head_.store(next, std::memory_order_release);  // publishes the slot; pairs with the acquire in Pop
        return true;
    }

    /// Render thread. False when there is no event.
    bool Pop(InputEvent& event) noexcept {
        const std::uint32_t tail = tail_.load(std::memory_order_relaxed);
        if (tail == head_.load(std::memory_order_acquire)) return false;
        event = slots_[tail];
        tail_.store((tail + 1) & Mask, std::memory_order_release);  // frees the slot; pairs with the acquire in Push
        return true;
    }

private:
    static constexpr std::uint32_t Mask = Capacity;

    std::array<InputEvent, std::size_t{Capacity} + 1> slots_{};
    std::atomic<std::uint32_t> head_{0};  // next slot to write; UI thread
    std::atomic<std::uint32_t> tail_{0};  // next slot to read; render thread
};

}  // namespace Tamborel
