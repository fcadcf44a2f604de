#include "Platform/Linux/Base/ComObject.h"

#include <shlwapi.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

namespace Platform {

namespace {

/// Reads from bytes of its own. One thread at a time.
class MemoryStream final : public ComObject<IStream, ISequentialStream> {
public:
    MemoryStream(const BYTE* bytes, UINT size) : ComObject("IStream"), bytes_(bytes, bytes + size) {}

    HRESULT Read(void* bytes, ULONG size, ULONG* read) override {
        const std::size_t count = std::min<std::size_t>(size, bytes_.size() - position_);
        if (count > 0) std::memcpy(bytes, bytes_.data() + position_, count);
        position_ += count;
        if (read) *read = static_cast<ULONG>(count);
        return count == size ? S_OK : S_FALSE;
    }

private:
    ~MemoryStream() override = default;

    std::vector<BYTE> bytes_;
    std::size_t position_ = 0;
};

}  // namespace

}  // namespace Platform

IStream* WINAPI SHCreateMemStream(const BYTE* bytes, UINT size) noexcept try {
    return new Platform::MemoryStream(bytes, bytes ? size : 0);
} catch (const std::bad_alloc&) {
    return nullptr;
}
