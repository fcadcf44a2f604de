// Who is told when something happens to a window.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace Platform {

/// Any thread.
template <class... Arguments>
class Listeners {
public:
    using Listener = std::function<void(Arguments...)>;

    /// An identifier for Remove; never 0.
    std::uint64_t Add(Listener listener) {
        const std::lock_guard lock(mutex_);
        listeners_[next_] = std::move(listener);
        return next_++;
    }

    void Remove(std::uint64_t identifier) {
        const std::lock_guard lock(mutex_);
        listeners_.erase(identifier);
    }

    /// Calls those that are there at this moment, with no lock held: they may add and remove listeners.
    void Tell(Arguments... arguments) {
        std::vector<Listener> told;
        {
            const std::lock_guard lock(mutex_);
            for (const auto& [identifier, listener] : listeners_) told.push_back(listener);
        }
        for (const Listener& listener : told) listener(arguments...);
    }

private:
    std::mutex mutex_;
    std::map<std::uint64_t, Listener> listeners_;  // guarded by mutex_, as all below
    std::uint64_t next_ = 1;
};

}  // namespace Platform
