// What every object made by a factory shares.
#pragma once

#include "Platform/Linux/Base/ComObject.h"

#include <d2d1.h>
#include <wrl/client.h>

#include <utility>

namespace Platform::Direct2D {

using Microsoft::WRL::ComPtr;

/// An object that knows, and keeps, the factory it comes from.
template <class Interface, class... Bases>
class Resource : public ComObject<Interface, Bases..., ID2D1Resource> {
public:
    void GetFactory(ID2D1Factory** factory) const override { static_cast<void>(factory_.CopyTo(factory)); }

protected:
    Resource(const char* className, ComPtr<ID2D1Factory> factory)
        : ComObject<Interface, Bases..., ID2D1Resource>(className), factory_(std::move(factory)) {}

    ID2D1Factory* OwnFactory() const noexcept { return factory_.Get(); }

private:
    ComPtr<ID2D1Factory> factory_;
};

}  // namespace Platform::Direct2D
