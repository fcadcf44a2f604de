// What every fake object shares: its reference count, its name, and the way a call becomes a line of the record.
#pragma once

#include "tests/fakes/Recorder.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <string>
#include <type_traits>
#include <utility>

/// Marks a free function that stands in for the system's. A test program's own stand-in goes before it.
#define FAKE_FUNCTION __attribute__((weak))

namespace Fakes {

/// Flags, which read better in hexadecimal.
struct Hex {
    std::uint64_t value;
};

/// An argument as it appears in a line. Objects appear as their names.
template <class T>
std::string Text(const T& value) {
    if constexpr (std::is_same_v<T, Hex>) {
        char text[24];
        std::snprintf(text, sizeof text, "0x%llx", static_cast<unsigned long long>(value.value));
        return text;
    } else if constexpr (std::is_enum_v<T>) {
        return std::to_string(static_cast<std::underlying_type_t<T>>(value));
    } else if constexpr (std::is_floating_point_v<T>) {
        char text[32];
        std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
        return text;
    } else if constexpr (std::is_integral_v<T>) {
        return std::to_string(value);
    } else if constexpr (std::is_null_pointer_v<T>) {
        return "null";
    } else if constexpr (std::is_convertible_v<T, const wchar_t*>) {
        std::string text = "\"";
        for (const wchar_t* each = value; each && *each; ++each) text += *each < 128 ? static_cast<char>(*each) : '?';
        return text + '"';
    } else if constexpr (std::is_convertible_v<T, const IUnknown*>) {
        return Recorder::Get().NameOf(value);
    } else {
        return value;
    }
}

inline std::string Joined() {
    return {};
}
template <class First, class... Rest>
std::string Joined(const First& first, const Rest&... rest) {
    std::string text = Text(first);
    ((text += ", " + Text(rest)), ...);
    return text;
}

/// Records the call of a free function and tells what it is to return.
template <class... Arguments>
HRESULT FreeCall(const char* function, const Arguments&... arguments) {
    return Recorder::Get().Call({}, function, Joined(arguments...));
}

/// An object whose interfaces are `Interface` and its bases `Bases...`, all of one chain. A new one has one reference.
template <class Interface, class... Bases>
class FakeObject : public Interface {
public:
    explicit FakeObject(const char* kind) : name_(Recorder::Get().Add(kind, this)) {}
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;

    HRESULT QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (const HRESULT result = Recorder::Get().Query(iid); FAILED(result)) return result;
        if (iid == __uuidof(IUnknown) || iid == __uuidof(Interface) || (... || (iid == __uuidof(Bases)))) {
            *object = static_cast<Interface*>(this);
        } else {
            *object = Face(iid);
        }
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG AddRef() override { return references_.fetch_add(1, std::memory_order_relaxed) + 1; }
    ULONG Release() override {
        const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) {
            // Ahead of the destructor, which ends what the object holds: so the record shows who let go of whom.
            Recorder::Get().Remove(name_, this);
            delete this;
        }
        return left;
    }

    const std::string& Name() const { return name_; }
    ULONG References() const { return references_.load(std::memory_order_acquire); }

protected:
    virtual ~FakeObject() = default;

    /// An interface outside the chain, or null. It counts on this object.
    virtual void* Face(REFIID) { return nullptr; }

    template <class... Arguments>
    HRESULT Call(const char* method, const Arguments&... arguments) const {
        return Recorder::Get().Call(name_, method, Joined(arguments...));
    }

private:
    std::string name_;
    std::atomic<ULONG> references_{1};
};

/// Another face of an object: an interface of a chain of its own that counts on the owner.
template <class Owner, class Interface>
class FakeFace : public Interface {
public:
    explicit FakeFace(Owner& owner) : owner_(owner) { Recorder::Get().AddFace(owner.Name(), this); }
    FakeFace(const FakeFace&) = delete;
    FakeFace& operator=(const FakeFace&) = delete;
    virtual ~FakeFace() { Recorder::Get().RemoveFace(this); }

    HRESULT QueryInterface(REFIID iid, void** object) override { return owner_.QueryInterface(iid, object); }
    ULONG AddRef() override { return owner_.AddRef(); }
    ULONG Release() override { return owner_.Release(); }

protected:
    Owner& owner_;
};

/// Ends a creating call: stores a new object, or null when the call is to fail.
template <class Object, class Interface, class... Arguments>
HRESULT Make(HRESULT result, Interface** object, Arguments&&... arguments) {
    if (!object) return FAILED(result) ? result : E_POINTER;
    *object = SUCCEEDED(result) ? new Object(std::forward<Arguments>(arguments)...) : nullptr;
    return result;
}

/// The same for a call that names the interface.
template <class Object, class... Arguments>
HRESULT MakeAs(HRESULT result, REFIID iid, void** object, Arguments&&... arguments) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (FAILED(result)) return result;
    Object* const made = new Object(std::forward<Arguments>(arguments)...);
    const HRESULT queried = made->QueryInterface(iid, object);
    made->Release();
    return queried;
}

}  // namespace Fakes
