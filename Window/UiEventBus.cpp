#include "Window/UiEventBus.h"

#include <utility>

namespace Tamborel {

std::size_t UiEventBus::IdHash::operator()(std::uint64_t id) const noexcept {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (int shift = 0; shift < 64; shift += 8) {
        hash ^= (id >> shift) & 0xFF;
        hash *= 0x100000001B3;
    }
    return static_cast<std::size_t>(hash);
}

std::uint64_t UiEventBus::AddListener(std::wstring name, Listener listener) {
    if (name.empty() || !listener) return 0;
    const std::uint64_t id = nextId_.fetch_add(1);
    const std::lock_guard lock(listenersMutex_);
    listeners_.emplace(id, Entry{std::move(name), std::move(listener)});
    return id;
}

void UiEventBus::RemoveListener(std::uint64_t id) {
    Entry removed;  // destroyed after the lock: what a function object owns may well call back here
    const std::lock_guard lock(listenersMutex_);
    if (const auto found = listeners_.find(id); found != listeners_.end()) {
        removed = std::move(found->second);
        listeners_.erase(found);
    }
}

void UiEventBus::Append(UiEvent event) {
    const std::lock_guard lock(eventsMutex_);
    events_.push_back(std::move(event));
}

void UiEventBus::Dispatch() {
    std::vector<UiEvent> events;
    {
        const std::lock_guard lock(eventsMutex_);
        events.swap(events_);
    }
    for (const UiEvent& event : events) {
        for (const Listener& listener : ListenersTo(event.name)) listener(event);
    }
}

std::vector<UiEventBus::Listener> UiEventBus::ListenersTo(const std::wstring& name) {
    std::vector<Listener> found;
    const std::lock_guard lock(listenersMutex_);
    for (const auto& [id, entry] : listeners_) {
        if (entry.name == name) found.push_back(entry.listener);
    }
    return found;
}

}  // namespace Tamborel
