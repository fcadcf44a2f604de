#pragma once

#include <mutex>
#include <type_traits>

namespace Tamborel {

/// A small record that one thread writes and another reads, always whole. The lock is held for the copy alone.
template <class T>
class SharedValue {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    T Load() const {
        const std::lock_guard lock(mutex_);
        return value_;
    }

    void Store(const T& value) {
        const std::lock_guard lock(mutex_);
        value_ = value;
    }

private:
    mutable std::mutex mutex_;
    T value_{};  // guarded by mutex_
};

}  // namespace Tamborel
