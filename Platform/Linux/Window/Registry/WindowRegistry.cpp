#include "Platform/Linux/Window/Registry/WindowRegistry.h"

#include <sys/eventfd.h>

#include <cerrno>
#include <map>
#include <mutex>
#include <system_error>
#include <vector>

namespace Platform {

namespace {

struct RegisteredWindow {
    std::uint32_t xid;
    std::vector<std::weak_ptr<const FileDescriptor>> watchers;
};

class Registry {
public:
    HWND Add(std::uint32_t xid) {
        const std::lock_guard lock(mutex_);
        const std::uintptr_t value = next_;
        next_ += 2;
        windows_.emplace(value, RegisteredWindow{xid, {}});
        return reinterpret_cast<HWND>(value);
    }

    void Remove(HWND window) {
        const std::lock_guard lock(mutex_);
        const auto found = windows_.find(Key(window));
        if (found == windows_.end()) return;
        for (const auto& watcher : found->second.watchers) {
            if (const auto event = watcher.lock()) ::eventfd_write(event->Get(), 1);
        }
        windows_.erase(found);
    }

    std::optional<std::uint32_t> Find(HWND window) {
        const std::lock_guard lock(mutex_);
        const auto found = windows_.find(Key(window));
        if (found == windows_.end()) return std::nullopt;
        return found->second.xid;
    }

    std::shared_ptr<const FileDescriptor> Watch(HWND window) {
        const std::lock_guard lock(mutex_);
        const auto found = windows_.find(Key(window));
        const unsigned int already = found == windows_.end() ? 1 : 0;
        auto event = std::make_shared<const FileDescriptor>(::eventfd(already, EFD_CLOEXEC | EFD_NONBLOCK));
        if (!*event) throw std::system_error(errno, std::generic_category(), "eventfd");
        if (found != windows_.end()) {
            auto& watchers = found->second.watchers;
            std::erase_if(watchers, [](const auto& watcher) { return watcher.expired(); });
            watchers.push_back(event);
        }
        return event;
    }

private:
    static std::uintptr_t Key(HWND window) { return reinterpret_cast<std::uintptr_t>(window); }

    std::mutex mutex_;
    std::map<std::uintptr_t, RegisteredWindow> windows_;  // guarded by mutex_
    std::uintptr_t next_ = 0x20000;                       // guarded by mutex_; above the desktop's value
};

Registry& Windows() {
    static Registry registry;
    return registry;
}

}  // namespace

HWND RegisterNativeWindow(std::uint32_t xid) {
    return Windows().Add(xid);
}
void UnregisterNativeWindow(HWND window) {
    Windows().Remove(window);
}
std::optional<std::uint32_t> NativeWindow(HWND window) {
    return Windows().Find(window);
}
std::shared_ptr<const FileDescriptor> WatchUnregistration(HWND window) {
    return Windows().Watch(window);
}

}  // namespace Platform
