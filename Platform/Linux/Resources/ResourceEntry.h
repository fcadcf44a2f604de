// The resources that are linked into the program: each is an object of static life that adds itself to a list.
#pragma once

#include <windows.h>

#include <cstdint>

namespace Platform {

/// One file within the program. Only as an object of static life. A name and type that are there twice: either is
/// found.
class ResourceEntry {
public:
    /// `bytes` up to `end` and both texts live as long as the program.
    ResourceEntry(const wchar_t* name, const wchar_t* type, const std::uint8_t* bytes,
                  const std::uint8_t* end) noexcept;
    ResourceEntry(const ResourceEntry&) = delete;
    ResourceEntry& operator=(const ResourceEntry&) = delete;

    /// Null for one that is not there. Any thread, from the start of main on.
    static const ResourceEntry* Find(const wchar_t* name, const wchar_t* type) noexcept;

    const std::uint8_t* Bytes() const noexcept { return bytes_; }
    DWORD Size() const noexcept { return static_cast<DWORD>(end_ - bytes_); }

private:
    const wchar_t* name_;
    const wchar_t* type_;
    const std::uint8_t* bytes_;
    const std::uint8_t* end_;
    const ResourceEntry* next_;
};

}  // namespace Platform
