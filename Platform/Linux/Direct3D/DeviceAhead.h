// Making the process's first device while the program does other things.
#pragma once

#include "Platform/Linux/Direct3D/Device.h"

#include <future>
#include <memory>
#include <mutex>

namespace Platform::Direct3D {

/// A device that is being made on a thread of its own. Most of a program's start is the loading of Vulkan's drivers,
/// and a window needs its time too. Whoever starts it keeps it; it ends with its device, unless that has been taken.
class DeviceAhead {
public:
    /// Starts, or gives the one that is under way. Null where the process has had a device already, since the drivers
    /// are loaded then, and where there is no thread to be had.
    static std::shared_ptr<DeviceAhead> Start();

    /// The device made ahead, waiting for it if need be; null when there is none, or when it could not be made: then
    /// making one tells why. Each is taken once. Any thread.
    static std::shared_ptr<GraphicsDevice> Take();

    DeviceAhead();
    DeviceAhead(const DeviceAhead&) = delete;
    DeviceAhead& operator=(const DeviceAhead&) = delete;

private:
    std::mutex mutex_;
    std::future<std::shared_ptr<GraphicsDevice>> device_;  // guarded by mutex_; its end waits for the thread
};

}  // namespace Platform::Direct3D
