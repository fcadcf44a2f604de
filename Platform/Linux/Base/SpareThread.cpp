#include "Platform/Linux/Base/SpareThread.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace Platform {

namespace {

constexpr std::chrono::seconds patience{5};

struct Place {
    std::mutex mutex;
    std::condition_variable changed;
    bool isKept = false;         // guarded by mutex, as all here
    std::function<void()> work;  ///< Handed over, and not begun yet.
};

/// Never destroyed: the thread may still wait when the process ends.
Place& ThePlace() {
    static Place& place = *new Place;
    return place;
}

void Wait() {
    Place& place = ThePlace();
    std::function<void()> work;
    {
        std::unique_lock lock(place.mutex);
        place.changed.wait_for(lock, patience, [&] { return static_cast<bool>(place.work); });
        work = std::exchange(place.work, nullptr);
        place.isKept = false;
    }
    if (work) work();
}

}  // namespace

void SpareThread::Keep() noexcept try {
    Place& place = ThePlace();
    const std::lock_guard lock(place.mutex);
    if (place.isKept) return;
    std::thread(&Wait).detach();
    place.isKept = true;
} catch (const std::exception&) {}  // Without it work waits for a thread of its own.

bool SpareThread::Hand(std::function<void()>& work) {
    Place& place = ThePlace();
    {
        const std::lock_guard lock(place.mutex);
        if (!place.isKept || place.work) return false;
        place.work = std::move(work);
    }
    place.changed.notify_one();
    return true;
}

}  // namespace Platform
