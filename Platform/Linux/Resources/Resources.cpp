#include "Platform/Linux/Resources/ResourceEntry.h"

namespace Platform {

namespace {

// Set to null before any constructor runs, so the order in which resources register does not matter.
constinit const ResourceEntry* newest = nullptr;

wchar_t Lower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool Matches(const wchar_t* a, const wchar_t* b) {
    while (*a && Lower(*a) == Lower(*b)) {
        ++a;
        ++b;
    }
    return Lower(*a) == Lower(*b);
}

// The handles are the entry itself, seen through the interface's types.
const ResourceEntry* EntryOf(const void* handle) {
    return static_cast<const ResourceEntry*>(handle);
}

}  // namespace

ResourceEntry::ResourceEntry(const wchar_t* name, const wchar_t* type, const std::uint8_t* bytes,
                             const std::uint8_t* end) noexcept
    : name_(name), type_(type), bytes_(bytes), end_(end), next_(newest) {
    newest = this;
}

const ResourceEntry* ResourceEntry::Find(const wchar_t* name, const wchar_t* type) noexcept {
    for (const ResourceEntry* entry = newest; entry; entry = entry->next_) {
        if (Matches(entry->name_, name) && Matches(entry->type_, type)) return entry;
    }
    return nullptr;
}

}  // namespace Platform

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type) noexcept {
    const Platform::ResourceEntry* const found =
        !module && name && type ? Platform::ResourceEntry::Find(name, type) : nullptr;
    if (!found) SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return reinterpret_cast<HRSRC>(const_cast<Platform::ResourceEntry*>(found));
}

HGLOBAL LoadResource(HMODULE, HRSRC resource) noexcept {
    return resource;
}

DWORD SizeofResource(HMODULE, HRSRC resource) noexcept {
    return resource ? Platform::EntryOf(resource)->Size() : 0;
}

LPVOID LockResource(HGLOBAL data) noexcept {
    return data ? const_cast<std::uint8_t*>(Platform::EntryOf(data)->Bytes()) : nullptr;
}
