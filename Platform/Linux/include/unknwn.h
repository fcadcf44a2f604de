// IUnknown, and the tie between an interface and its identifier.
#pragma once

#include <winerror.h>

/// Declares the identifier of an interface: `VELORINTH_DECLARE_IID(IShellItem, 0x43826d1e, 0xe718, ...)` after its
/// class.
template <class Interface>
struct InterfaceIdentifier;

#define VELORINTH_DECLARE_IID(type, d1, d2, d3, b0, b1, b2, b3, b4, b5, b6, b7)    \
    template <>                                                                    \
    struct InterfaceIdentifier<type> {                                             \
        static constexpr GUID value{d1, d2, d3, {b0, b1, b2, b3, b4, b5, b6, b7}}; \
    }

#define __uuidof(type) (InterfaceIdentifier<type>::value)

/// Root of every interface: reference counting and the way from one interface of an object to another.
struct IUnknown {
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    ~IUnknown() = default;  // Objects end through Release.
};
VELORINTH_DECLARE_IID(IUnknown, 0x00000000, 0x0000, 0x0000, 0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46);

template <class Interface>
void** IID_PPV_ARGS_Helper(Interface** pointer) {
    static_cast<void>(static_cast<IUnknown*>(*pointer));  // Only interfaces.
    return reinterpret_cast<void**>(pointer);
}
#define IID_PPV_ARGS(pointer) \
    __uuidof(std::remove_pointer_t<std::remove_pointer_t<decltype(pointer)>>), IID_PPV_ARGS_Helper(pointer)

#include <type_traits>
