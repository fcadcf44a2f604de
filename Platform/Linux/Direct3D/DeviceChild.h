// What every object that a Direct3D device makes has in common.
#pragma once

#include "Platform/Linux/Base/ComObject.h"
#include "Platform/Linux/Direct3D/Device.h"

#include <d3d11_4.h>
#include <wrl/client.h>

namespace Platform::Direct3D {

using Microsoft::WRL::ComPtr;

/// A private interface of our devices and of what they make: the way to the Vulkan device behind.
struct IGraphicsObject : public IUnknown {
    virtual const std::shared_ptr<GraphicsDevice>& Graphics() = 0;
    virtual ID3D11Device5* AsDirect3D() = 0;  ///< No reference is added.
};

/// An object of a device, which it keeps alive.
template <class Interface, class... Bases>
class DeviceChild : public ComObject<Interface, Bases..., ID3D11DeviceChild> {
    using Base = ComObject<Interface, Bases..., ID3D11DeviceChild>;

public:
    HRESULT QueryInterface(REFIID iid, void** object) override;
    void GetDevice(ID3D11Device** device) override {
        *device = owner_->AsDirect3D();
        (*device)->AddRef();
    }
    GraphicsDevice& Graphics() const { return *owner_->Graphics(); }

protected:
    DeviceChild(const char* className, IGraphicsObject& owner) : Base(className), owner_(&owner) {}

private:
    ComPtr<IGraphicsObject> owner_;
};

/// Stores a new object in an interface's out pointer, or lets it go when the caller only asked whether it could be
/// made.
template <class Object, class Interface>
HRESULT HandOut(ComPtr<Object> made, Interface** out) {
    if (!out) return S_FALSE;
    *out = made.Detach();
    return S_OK;
}

/// A new object's first reference.
template <class Object, class... Arguments>
ComPtr<Object> MakeObject(Arguments&&... arguments) {
    ComPtr<Object> made;
    made.Attach(new Object(std::forward<Arguments>(arguments)...));
    return made;
}

}  // namespace Platform::Direct3D
VELORINTH_DECLARE_IID(Platform::Direct3D::IGraphicsObject, 0x7d3e3e0c, 0x9b1f, 0x4b52, 0x8f, 0x1c, 0x51, 0x3a, 0x9e,
                      0x60, 0x22, 0x8b);

namespace Platform::Direct3D {

template <class Interface, class... Bases>
HRESULT DeviceChild<Interface, Bases...>::QueryInterface(REFIID iid, void** object) {
    if (iid == __uuidof(IGraphicsObject)) return owner_->QueryInterface(iid, object);
    return Base::QueryInterface(iid, object);
}

}  // namespace Platform::Direct3D
