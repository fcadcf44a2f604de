#include "Platform/Linux/Base/Handle.h"

#include <cstdint>
#include <new>
#include <unordered_map>
#include <utility>

namespace Platform {

namespace {

struct Entry {
    std::shared_ptr<HandleObject> object;
    Inherit inherit = Inherit::No;
};

class HandleTable {
public:
    HANDLE Add(std::shared_ptr<HandleObject> object, Inherit inherit) {
        const std::lock_guard lock(mutex_);
        const std::uintptr_t value = last_ + step;
        entries_.emplace(value, Entry{std::move(object), inherit});
        last_ = value;
        return reinterpret_cast<HANDLE>(value);
    }

    Entry Find(HANDLE handle) {
        const std::lock_guard lock(mutex_);
        const auto found = entries_.find(reinterpret_cast<std::uintptr_t>(handle));
        return found == entries_.end() ? Entry{} : found->second;
    }

    /// Takes the entry out, so that the caller lets go of the object outside the lock.
    Entry Remove(HANDLE handle) {
        const std::lock_guard lock(mutex_);
        auto node = entries_.extract(reinterpret_cast<std::uintptr_t>(handle));
        return node.empty() ? Entry{} : std::move(node.mapped());
    }

private:
    // The two low bits are free for callers to tag, as they are on Windows.
    static constexpr std::uintptr_t step = 4;

    std::mutex mutex_;
    std::uintptr_t last_ = 0;                            // guarded by mutex_
    std::unordered_map<std::uintptr_t, Entry> entries_;  // guarded by mutex_
};

HandleTable& Table() {
    // Never destroyed: detached threads and destructors of static objects may still close handles at the very end.
    static HandleTable* const table = new HandleTable;
    return *table;
}

}  // namespace

std::unique_lock<std::mutex> LockSignals() {
    static std::mutex* const mutex = new std::mutex;  // never destroyed, like the table
    return std::unique_lock(*mutex);
}

HANDLE AddHandle(std::shared_ptr<HandleObject> object, Inherit inherit) noexcept try {
    return Table().Add(std::move(object), inherit);
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

std::shared_ptr<HandleObject> FindHandleObject(HANDLE handle) noexcept {
    Entry entry = Table().Find(handle);
    if (!entry.object) SetLastError(ERROR_INVALID_HANDLE);
    return std::move(entry.object);
}

bool IsInheritable(HANDLE handle) noexcept {
    return Table().Find(handle).inherit == Inherit::Yes;
}

}  // namespace Platform

BOOL CloseHandle(HANDLE object) noexcept {
    if (Platform::Table().Remove(object).object) return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}
