// The reference-counting pointer to an interface.
#pragma once

#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace Microsoft::WRL {

/// Owns one reference to an object. Copying adds a reference, moving passes it on.
template <class Interface>
class ComPtr {
public:
    ComPtr() noexcept = default;
    ComPtr(std::nullptr_t) noexcept {}
    ComPtr(Interface* pointer) noexcept : pointer_(pointer) {
        if (pointer_) pointer_->AddRef();
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.pointer_) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    template <class Derived>
    ComPtr(const ComPtr<Derived>& other) noexcept : ComPtr(static_cast<Interface*>(other.Get())) {}
    ~ComPtr() { Reset(); }

    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }

    Interface* Get() const noexcept { return pointer_; }
    Interface* operator->() const noexcept { return pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

    /// The place to store a new reference in; only for a pointer known to be empty.
    Interface** GetAddressOf() noexcept { return &pointer_; }
    Interface* const* GetAddressOf() const noexcept { return &pointer_; }
    /// Lets go of what it holds, then as GetAddressOf.
    Interface** ReleaseAndGetAddressOf() noexcept {
        Reset();
        return &pointer_;
    }
    /// As ReleaseAndGetAddressOf.
    Interface** operator&() noexcept { return ReleaseAndGetAddressOf(); }

    unsigned long Reset() noexcept {
        Interface* const old = std::exchange(pointer_, nullptr);
        return old ? old->Release() : 0;
    }
    /// Takes over a reference that the caller owns.
    void Attach(Interface* pointer) noexcept {
        Reset();
        pointer_ = pointer;
    }
    [[nodiscard]] Interface* Detach() noexcept { return std::exchange(pointer_, nullptr); }
    HRESULT CopyTo(Interface** target) const noexcept {
        if (pointer_) pointer_->AddRef();
        *target = pointer_;
        return S_OK;
    }
    /// Another interface of the object: `pointer.As(&other)`.
    template <class Other>
    HRESULT As(Other** other) const noexcept {
        return pointer_->QueryInterface(__uuidof(Other), reinterpret_cast<void**>(other));
    }

    friend bool operator==(const ComPtr& left, std::nullptr_t) noexcept { return left.pointer_ == nullptr; }

private:
    Interface* pointer_ = nullptr;
};

}  // namespace Microsoft::WRL
