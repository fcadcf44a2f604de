#include "Platform/Linux/Direct3D/Buffer.h"

#include <algorithm>
#include <cstring>

namespace Platform::Direct3D {

Buffer::Buffer(IGraphicsObject& owner, const D3D11_BUFFER_DESC& desc, const void* initialData)
    : DeviceChild("ID3D11Buffer", owner), desc_(desc), bytes_(desc.ByteWidth) {
    if (initialData) std::memcpy(bytes_.data(), initialData, bytes_.size());
}

std::byte* Buffer::Rewrite() {
    sliceBatch_ = 0;
    return bytes_.data();
}

void Buffer::Write(std::span<const std::byte> bytes) {
    std::ranges::copy(bytes.first(std::min(bytes.size(), bytes_.size())), Rewrite());
}

HostSlice Buffer::Slice() {
    GraphicsDevice& device = Graphics();
    if (sliceBatch_ != device.BatchNumber()) {
        const VkDeviceSize alignment = std::max<VkDeviceSize>(device.Limits().minUniformBufferOffsetAlignment, 16);
        slice_ = device.Reserve(bytes_.size(), alignment);
        std::memcpy(slice_.data, bytes_.data(), bytes_.size());
        sliceBatch_ = device.BatchNumber();
    }
    return slice_;
}

HRESULT CheckBuffer(const D3D11_BUFFER_DESC* desc, const D3D11_SUBRESOURCE_DATA* initialData) {
    constexpr UINT supported = D3D11_BIND_VERTEX_BUFFER | D3D11_BIND_CONSTANT_BUFFER;
    if (!desc || desc->ByteWidth == 0) return E_INVALIDARG;
    if (desc->BindFlags == 0 || desc->BindFlags & ~supported || desc->MiscFlags != 0) return E_INVALIDARG;
    if (desc->BindFlags & D3D11_BIND_CONSTANT_BUFFER && (desc->ByteWidth % 16 != 0 || desc->ByteWidth > 65536))
        return E_INVALIDARG;
    if (initialData && !initialData->pSysMem) return E_INVALIDARG;
    switch (desc->Usage) {
        case D3D11_USAGE_DEFAULT:
            return desc->CPUAccessFlags == 0 ? S_OK : E_INVALIDARG;
        case D3D11_USAGE_IMMUTABLE:
            return desc->CPUAccessFlags == 0 && initialData ? S_OK : E_INVALIDARG;
        case D3D11_USAGE_DYNAMIC:
            return desc->CPUAccessFlags == D3D11_CPU_ACCESS_WRITE ? S_OK : E_INVALIDARG;
        default:
            return E_INVALIDARG;
    }
}

}  // namespace Platform::Direct3D
