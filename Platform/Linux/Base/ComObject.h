// What every object here shares: the reference count and the way from one of its interfaces to another.
#pragma once

#include "Platform/Linux/Base/Trace.h"

#include <unknwn.h>

#include <atomic>

namespace Platform {

/// Implements IUnknown for an object whose interfaces are `Interface` and its bases `Bases...`, one below the other in
/// a single chain. A new object has one reference, which belongs to whoever made it.
template <class Interface, class... Bases>
class ComObject : public Interface {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (iid == __uuidof(IUnknown) || iid == __uuidof(Interface) || (... || (iid == __uuidof(Bases)))) {
            *object = static_cast<Interface*>(this);
            AddRef();
            return S_OK;
        }
        return NoInterface(className_, iid);
    }

    ULONG AddRef() override { return references_.fetch_add(1, std::memory_order_relaxed) + 1; }

    ULONG Release() override {
        const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) delete this;
        return left;
    }

protected:
    explicit ComObject(const char* className) : className_(className) {}
    virtual ~ComObject() = default;

private:
    const char* className_;
    std::atomic<ULONG> references_{1};
};

}  // namespace Platform
