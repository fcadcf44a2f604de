#include "Platform/Linux/Direct3D/DeviceAhead.h"

#include "Platform/Linux/Base/SpareThread.h"

#include <exception>

namespace Platform::Direct3D {

namespace {

std::mutex currentMutex;
std::weak_ptr<DeviceAhead> current;  // guarded by currentMutex

std::shared_ptr<GraphicsDevice> MakeQuietly() {
    try {
        return GraphicsDevice::Create();
    } catch (const std::exception&) {
        return nullptr;
    }
}

}  // namespace

std::shared_ptr<DeviceAhead> DeviceAhead::Start() try {
    const std::lock_guard lock(currentMutex);
    std::shared_ptr<DeviceAhead> ahead = current.lock();
    if (ahead || GraphicsDevice::WasEverMade()) return ahead;
    SpareThread::Keep();  // Soon the linker loads a driver.
    current = ahead = std::make_shared<DeviceAhead>();
    return ahead;
} catch (const std::exception&) {
    return nullptr;  // No thread to spare: the device is made when it is asked for.
}

std::shared_ptr<GraphicsDevice> DeviceAhead::Take() {
    std::shared_ptr<DeviceAhead> ahead;
    {
        const std::lock_guard lock(currentMutex);
        ahead = current.lock();
    }
    if (!ahead) return nullptr;
    const std::lock_guard lock(ahead->mutex_);
    return ahead->device_.valid() ? ahead->device_.get() : nullptr;
}

DeviceAhead::DeviceAhead() : device_(std::async(std::launch::async, &MakeQuietly)) {}

}  // namespace Platform::Direct3D
