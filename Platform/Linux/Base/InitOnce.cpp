#include <windows.h>

#include <atomic>
#include <cstdint>

namespace {

// The guard's one word: a state in the two lowest bits, 0 at first, and the context above them once it is done.
constexpr std::uintptr_t kRunning = 1;
constexpr std::uintptr_t kDone = 2;
constexpr std::uintptr_t kStateBits = 3;

// The word is declared as a pointer; it is only ever read and written through this.
std::atomic_ref<std::uintptr_t> WordOf(LPINIT_ONCE once) noexcept {
    static_assert(sizeof(PVOID) == sizeof(std::uintptr_t));
    using Word [[gnu::may_alias]] = std::uintptr_t;
    return std::atomic_ref<std::uintptr_t>(*reinterpret_cast<Word*>(&once->Ptr));
}

}  // namespace

BOOL InitOnceBeginInitialize(LPINIT_ONCE once, DWORD flags, BOOL* pending, LPVOID* context) noexcept {
    if (!once || !pending || flags != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const auto word = WordOf(once);
    std::uintptr_t value = word.load(std::memory_order_acquire);  // pairs with the release in InitOnceComplete
    while ((value & kStateBits) != kDone) {
        if (value == kRunning) {
            word.wait(kRunning, std::memory_order_acquire);
            value = word.load(std::memory_order_acquire);
        } else if (word.compare_exchange_weak(value, kRunning, std::memory_order_acquire)) {
            *pending = TRUE;
            return TRUE;
        }
    }
    *pending = FALSE;
    if (context) *context = reinterpret_cast<LPVOID>(value & ~kStateBits);
    return TRUE;
}

BOOL InitOnceComplete(LPINIT_ONCE once, DWORD flags, LPVOID context) noexcept {
    const auto value = reinterpret_cast<std::uintptr_t>(context);
    if (!once || flags != 0 || (value & kStateBits) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const auto word = WordOf(once);
    std::uintptr_t running = kRunning;
    if (!word.compare_exchange_strong(running, value | kDone, std::memory_order_release)) {
        SetLastError(ERROR_GEN_FAILURE);  // Nobody began, or somebody has ended it already.
        return FALSE;
    }
    word.notify_all();
    return TRUE;
}
