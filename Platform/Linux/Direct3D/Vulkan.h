// Vulkan as this folder and the ones that draw and compose with it see it: functions loaded at run time, so that a
// program starts on a machine that has no Vulkan.
#pragma once

#include <windows.h>

#include <volk.h>

#include <exception>

namespace Platform::Direct3D {

/// A Vulkan call that failed. Stays inside: functions that callers of the interfaces see turn it into an HRESULT.
class VulkanError : public std::exception {
public:
    explicit VulkanError(VkResult result) : result_(result) {}
    const char* what() const noexcept override { return "a Vulkan call failed"; }
    VkResult Result() const noexcept { return result_; }

private:
    VkResult result_;
};

/// Throws VulkanError for a negative result.
inline void Check(VkResult result) {
    if (result < 0) throw VulkanError(result);
}

/// A structure of Vulkan's of its type, all else zero.
template <class Structure>
Structure Typed(VkStructureType type) {
    Structure made{};
    made.sType = type;
    return made;
}

/// The HRESULT of the exception being handled; for use in a catch block.
HRESULT CurrentFailure() noexcept;

}  // namespace Platform::Direct3D
