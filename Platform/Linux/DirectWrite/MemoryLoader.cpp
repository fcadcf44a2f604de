#include "Platform/Linux/DirectWrite/MemoryLoader.h"

#include "Platform/Linux/DirectWrite/Factory.h"
#include "Platform/Linux/DirectWrite/FontFile.h"

#include <new>

namespace Platform::DirectWrite {

HRESULT MemoryLoader::CreateInMemoryFontFileReference(IDWriteFactory* factory, const void* data, UINT32 size,
                                                      IUnknown* owner, IDWriteFontFile** file) try {
    if (!file) return E_POINTER;
    *file = nullptr;
    const auto* const own = dynamic_cast<const Factory*>(factory);
    if (!own || !own->IsRegistered(this) || !data || size == 0) return E_INVALIDARG;
    const std::span bytes(static_cast<const std::byte*>(data), size);
    *file = owner ? new FontFile(bytes, owner) : new FontFile(std::vector<std::byte>(bytes.begin(), bytes.end()));
    count_.fetch_add(1, std::memory_order_relaxed);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

}  // namespace Platform::DirectWrite
