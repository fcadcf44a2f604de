#include "Platform/Linux/Direct3D/Vulkan.h"

#include <new>

namespace Platform::Direct3D {

HRESULT CurrentFailure() noexcept {
    try {
        throw;
    } catch (const VulkanError& error) {
        switch (error.Result()) {
            case VK_ERROR_OUT_OF_HOST_MEMORY:
            case VK_ERROR_OUT_OF_DEVICE_MEMORY:
                return E_OUTOFMEMORY;
            case VK_ERROR_DEVICE_LOST:
                return DXGI_ERROR_DEVICE_REMOVED;
            case VK_ERROR_INCOMPATIBLE_DRIVER:
            case VK_ERROR_INITIALIZATION_FAILED:
                return DXGI_ERROR_UNSUPPORTED;
            default:
                return E_FAIL;
        }
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

}  // namespace Platform::Direct3D
