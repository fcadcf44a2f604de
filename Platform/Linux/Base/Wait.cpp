#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Base/Handle.h"
#include "Platform/Linux/Base/PutOffWork.h"

#include <poll.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <span>

namespace Platform {

namespace {

using Clock = std::chrono::steady_clock;

/// When a wait ends; nothing for one without an end.
using Deadline = std::optional<Clock::time_point>;

Deadline DeadlineAfter(DWORD milliseconds) {
    if (milliseconds == INFINITE) return std::nullopt;
    return Clock::now() + std::chrono::milliseconds(milliseconds);
}

enum class WaitFor : bool { Any, All };

/// One wait for up to MAXIMUM_WAIT_OBJECTS objects. It keeps the objects alive while it lasts.
class Wait {
public:
    /// False, with the last error set, when one of the handles can't be waited for.
    bool Add(HANDLE handle) {
        std::shared_ptr<HandleObject> object = FindHandleObject(handle);
        if (!object) return false;
        const int descriptor = object->WaitDescriptor();
        if (descriptor < 0) {
            SetLastError(ERROR_INVALID_HANDLE);
            return false;
        }
        descriptors_[count_] = {descriptor, POLLIN, 0};
        objects_[count_] = std::move(object);
        ++count_;
        return true;
    }

    /// `maySleep`: the deadline isn't now.
    DWORD Run(WaitFor mode, const Deadline& deadline, bool maySleep) {
        for (;;) {
            if (const std::optional<DWORD> result = Take(mode)) return *result;
            if (maySleep && DoPutOff(mode)) continue;
            // Objects that are signalled already are left out of a wait for all, which would not sleep otherwise.
            switch (Poll(mode == WaitFor::All ? PendingOnly() : Descriptors(), deadline)) {
                case PollEnd::Woken:
                    break;
                case PollEnd::TimedOut:
                    return WAIT_TIMEOUT;
                case PollEnd::Failed:
                    return Failed();
            }
        }
    }

private:
    enum class PollEnd { Woken, TimedOut, Failed };

    std::span<pollfd> Descriptors() { return {descriptors_.data(), count_}; }

    std::span<pollfd> PendingOnly() {
        std::size_t pending = 0;
        for (const pollfd& each : Descriptors()) {
            if (each.revents == 0) pending_[pending++] = each;
        }
        return {pending_.data(), pending};
    }

    /// False if there was nothing to do. One of the objects of a wait for all doesn't end it.
    bool DoPutOff(WaitFor mode) const {
        return PutOffWork::DoBeforeSleep([&](const HandleObject* object) {
            return mode == WaitFor::Any && std::ranges::any_of(std::span(objects_.data(), count_),
                                                               [&](const auto& each) { return each.get() == object; });
        });
    }

    static DWORD Failed() {
        SetLastErrorFromErrno();
        return WAIT_FAILED;
    }

    /// Looks at all objects and ends the wait with them if that is enough. Nobody can take a signal in between.
    std::optional<DWORD> Take(WaitFor mode) {
        const auto lock = LockSignals();
        static constexpr timespec now{};
        if (ppoll(descriptors_.data(), count_, &now, nullptr) < 0)
            return errno == EINTR ? std::nullopt : std::optional(Failed());

        const auto signalled = [](const pollfd& each) { return each.revents != 0; };
        const std::span<pollfd> all = Descriptors();
        if (mode == WaitFor::All) {
            if (!std::ranges::all_of(all, signalled)) return std::nullopt;
            for (std::size_t i = 0; i < count_; ++i) objects_[i]->OnWaited();
            return WAIT_OBJECT_0;
        }
        const auto first = std::ranges::find_if(all, signalled);
        if (first == all.end()) return std::nullopt;
        const auto index = static_cast<std::size_t>(first - all.begin());
        objects_[index]->OnWaited();
        return WAIT_OBJECT_0 + static_cast<DWORD>(index);
    }

    /// Sleeps until one of the descriptors is ready, a signal handler has run, or the deadline is there.
    static PollEnd Poll(std::span<pollfd> descriptors, const Deadline& deadline) {
        timespec left{};
        if (deadline) {
            const auto nanoseconds = std::max(Clock::duration::zero(), *deadline - Clock::now()).count();
            left.tv_sec = static_cast<time_t>(nanoseconds / 1'000'000'000);
            left.tv_nsec = static_cast<long>(nanoseconds % 1'000'000'000);
        }
        const int ready = ppoll(descriptors.data(), descriptors.size(), deadline ? &left : nullptr, nullptr);
        if (ready == 0) return PollEnd::TimedOut;
        return ready > 0 || errno == EINTR ? PollEnd::Woken : PollEnd::Failed;
    }

    std::array<std::shared_ptr<HandleObject>, MAXIMUM_WAIT_OBJECTS> objects_;
    std::array<pollfd, MAXIMUM_WAIT_OBJECTS> descriptors_;
    std::array<pollfd, MAXIMUM_WAIT_OBJECTS> pending_;
    std::size_t count_ = 0;
};

}  // namespace

}  // namespace Platform

DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds) noexcept {
    return WaitForMultipleObjectsEx(1, &object, FALSE, milliseconds, FALSE);
}

DWORD WaitForSingleObjectEx(HANDLE object, DWORD milliseconds, BOOL alertable) noexcept {
    return WaitForMultipleObjectsEx(1, &object, FALSE, milliseconds, alertable);
}

DWORD WaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL waitAll, DWORD milliseconds) noexcept {
    return WaitForMultipleObjectsEx(count, objects, waitAll, milliseconds, FALSE);
}

DWORD WaitForMultipleObjectsEx(DWORD count, const HANDLE* objects, BOOL waitAll, DWORD milliseconds, BOOL) noexcept {
    if (count == 0 || count > MAXIMUM_WAIT_OBJECTS || !objects) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return WAIT_FAILED;
    }
    const Platform::Deadline deadline = Platform::DeadlineAfter(milliseconds);
    Platform::Wait wait;
    for (const HANDLE& each : std::span(objects, count)) {
        if (!wait.Add(each)) return WAIT_FAILED;
    }
    return wait.Run(waitAll ? Platform::WaitFor::All : Platform::WaitFor::Any, deadline, milliseconds != 0);
}

void Sleep(DWORD milliseconds) noexcept {
    do {
        timespec until{};
        clock_gettime(CLOCK_MONOTONIC, &until);
        until.tv_sec += static_cast<time_t>(milliseconds / 1000);
        until.tv_nsec += static_cast<long>(milliseconds % 1000) * 1'000'000;
        if (until.tv_nsec >= 1'000'000'000) {
            ++until.tv_sec;
            until.tv_nsec -= 1'000'000'000;
        }
        while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) continue;
    } while (milliseconds == INFINITE);
}
