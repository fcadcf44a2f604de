#pragma once

#include "Scene/UiEvent.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace Tamborel {

/// Application events waiting for a window's UI thread, and who listens to them. No lock is held while a listener runs,
/// so it may post, add and remove.
class UiEventBus {
public:
    using Listener = std::function<void(const UiEvent&)>;

    /// Any thread. The listener's id, never used twice; 0 for an empty name or function.
    std::uint64_t AddListener(std::wstring name, Listener listener);

    /// Any thread. An event that is being dispatched may still reach the listener once.
    void RemoveListener(std::uint64_t id);

    /// Any thread.
    void Append(UiEvent event);

    /// UI thread: calls, for each waiting event in order of posting, all listeners to its name.
    void Dispatch();

private:
    struct Entry {
        std::wstring name;
        Listener listener;
    };

    /// FNV-1a, 64 bits, over the id's bytes from the lowest on.
    struct IdHash {
        std::size_t operator()(std::uint64_t id) const noexcept;
    };

    std::vector<Listener> ListenersTo(const std::wstring& name);

    std::mutex eventsMutex_;
    std::vector<UiEvent> events_;  // guarded by eventsMutex_
    std::mutex listenersMutex_;
    std::unordered_map<std::uint64_t, Entry, IdHash> listeners_;  // guarded by listenersMutex_
    std::atomic<std::uint64_t> nextId_{1};
};

}  // namespace Tamborel
