#include "Platform/Linux/Window/Icon.h"

#include "Platform/Linux/Base/Errors.h"

#include <cstring>
#include <new>

namespace Platform {

namespace {

struct IconImage {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint32_t> pixels;  // 0xAARRGGBB, rows from the top
};

struct Icons {
    std::mutex mutex;
    std::map<HICON, std::shared_ptr<const IconImage>> byHandle;  // guarded by mutex
    std::uintptr_t next = 1;                                     // guarded by mutex
};

Icons& AllIcons() {
    static Icons icons;
    return icons;
}

std::shared_ptr<const IconImage> FindIcon(HICON icon) {
    const std::lock_guard lock(AllIcons().mutex);
    const auto found = AllIcons().byHandle.find(icon);
    return found == AllIcons().byHandle.end() ? nullptr : found->second;
}

std::vector<std::uint32_t> ProgramIcon() {
    const HRSRC resource = FindResourceW(nullptr, L"APPICON", L"ARGB");
    const void* const bytes = resource ? LockResource(LoadResource(nullptr, resource)) : nullptr;
    if (!bytes) return {};
    std::vector<std::uint32_t> values(SizeofResource(nullptr, resource) / sizeof(std::uint32_t));
    std::memcpy(values.data(), bytes, values.size() * sizeof(std::uint32_t));
    return values;
}

}  // namespace

void PublishIcons(const Window& window) {
    std::vector<std::uint32_t> values;
    for (const HICON icon : window.icons) {
        const auto image = FindIcon(icon);
        if (!image) continue;
        values.push_back(image->width);
        values.push_back(image->height);
        values.insert(values.end(), image->pixels.begin(), image->pixels.end());
    }
    if (values.empty()) values = ProgramIcon();
    const Connection& x = window.x->Input();
    x.SetValues(window.x->Id(), x[Atom::NetWmIcon], XCB_ATOM_CARDINAL, values);
    x.Flush();
}

}  // namespace Platform

HICON CreateIcon(HINSTANCE, int width, int height, BYTE planes, BYTE bitsPerPixel, const BYTE*,
                 const BYTE* colorBits) noexcept try {
    static constexpr int largest = 1024;
    const bool valid = width > 0 && height > 0 && width <= largest && height <= largest;
    if (!valid || planes != 1 || bitsPerPixel != 32 || !colorBits) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto image = std::make_shared<Platform::IconImage>();
    image->width = static_cast<std::uint32_t>(width);
    image->height = static_cast<std::uint32_t>(height);
    image->pixels.resize(std::size_t{image->width} * image->height);
    std::memcpy(image->pixels.data(), colorBits, image->pixels.size() * sizeof(std::uint32_t));
    const std::lock_guard lock(Platform::AllIcons().mutex);
    const auto icon = reinterpret_cast<HICON>(Platform::AllIcons().next++);
    Platform::AllIcons().byHandle[icon] = std::move(image);
    return icon;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

BOOL DestroyIcon(HICON icon) noexcept {
    const std::lock_guard lock(Platform::AllIcons().mutex);
    return Platform::AllIcons().byHandle.erase(icon) > 0 ? TRUE : FALSE;
}
