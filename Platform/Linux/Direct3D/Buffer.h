#pragma once

#include "Platform/Linux/Direct3D/DeviceChild.h"

#include <span>
#include <vector>

namespace Platform::Direct3D {

/// A vertex or constant buffer. Its bytes live in the program's memory, since all buffers here are a few hundred bytes
/// that are read a few times per frame; each batch that reads them gets a copy of its own.
class Buffer final : public DeviceChild<ID3D11Buffer, ID3D11Resource> {
public:
    Buffer(IGraphicsObject& owner, const D3D11_BUFFER_DESC& desc, const void* initialData);

    void GetType(D3D11_RESOURCE_DIMENSION* dimension) override { *dimension = D3D11_RESOURCE_DIMENSION_BUFFER; }
    void GetDesc(D3D11_BUFFER_DESC* desc) override { *desc = desc_; }

    bool IsDynamic() const { return desc_.Usage == D3D11_USAGE_DYNAMIC; }
    UINT Size() const { return desc_.ByteWidth; }

    /// The bytes as they will be for the commands recorded from now on. With the device locked.
    std::byte* Rewrite();
    void Write(std::span<const std::byte> bytes);
    std::span<const std::byte> Bytes() const { return bytes_; }

    /// The bytes in memory that the open batch can read. With the device locked.
    HostSlice Slice();

private:
    const D3D11_BUFFER_DESC desc_;
    std::vector<std::byte> bytes_;
    std::uint64_t sliceBatch_ = 0;  ///< The batch that `slice_` is for; 0 when it is out of date.
    HostSlice slice_{};
};

/// S_OK for a buffer that can be made.
HRESULT CheckBuffer(const D3D11_BUFFER_DESC* desc, const D3D11_SUBRESOURCE_DATA* initialData);

}  // namespace Platform::Direct3D
