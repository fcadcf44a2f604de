// The life of an asset: where its bytes come from, what is drawn, what is kept. Decoding is in ImageDecoding.cpp.
#include "Scene/ImageAsset.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string_view>
#include <thread>
#include <utility>

namespace Tamborel {
namespace {

bool EndsInSvg(std::wstring_view path) {
    static constexpr std::wstring_view suffix = L".svg";
    if (path.size() < suffix.size()) return false;
    const auto lower = [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c; };
    return std::ranges::equal(path.substr(path.size() - suffix.size()), suffix,
                              [lower](wchar_t given, wchar_t wanted) { return lower(given) == wanted; });
}

/// The file's bytes; none if there is any trouble.
std::vector<std::uint8_t> ReadBytes(HANDLE file) {
    LARGE_INTEGER size{};
    // One read counts in 32 bits; a larger file is no picture.
    if (!GetFileSizeEx(file, &size) || size.QuadPart < 0 || std::cmp_greater(size.QuadPart, 0xFFFFFFFF)) return {};
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size.QuadPart));
    DWORD read = 0;
    if (!ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) return {};
    if (read != bytes.size()) return {};
    return bytes;
}

// The loader thread. Nothing may leave it: there is nobody to catch it.
void Load(ImageAsset::LoadState& state, const std::wstring& path) noexcept {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        std::vector<std::uint8_t> bytes;
        try {
            bytes = ReadBytes(file);
        } catch (const std::exception&) {  // No memory: as a file that can't be read.
        }
        CloseHandle(file);
        const std::lock_guard lock(state.lock);
        state.bytes = std::move(bytes);
    }
    state.complete.store(true, std::memory_order_release);  // pairs with the acquire in Draw
}

}  // namespace

std::size_t DeviceIdentityHash::operator()(std::uint64_t identity) const noexcept {
    std::uint64_t hash = 14695981039346656037U;
    for (const std::uint8_t byte : std::bit_cast<std::array<std::uint8_t, 8>>(identity)) {
        hash = (hash ^ byte) * 1099511628211U;
    }
    return static_cast<std::size_t>(hash);
}

ImageAsset::ImageAsset(std::shared_ptr<LoadState> state, bool isSvg, EmbeddedResource* embedded)
    : state_(std::move(state)), isSvg_(isSvg), embedded_(embedded) {}

std::shared_ptr<ImageAsset> ImageAsset::LoadFromFile(std::wstring path) {
    const bool isSvg = EndsInSvg(path);
    auto state = std::make_shared<LoadState>();
    std::thread([state, path = std::move(path)] { Load(*state, path); }).detach();
    return std::shared_ptr<ImageAsset>(new ImageAsset(std::move(state), isSvg, nullptr));
}

std::shared_ptr<ImageAsset> ImageAsset::FromBytes(std::vector<std::uint8_t> bytes, bool isSvg) {
    auto state = std::make_shared<LoadState>();
    state->bytes = std::move(bytes);
    state->complete.store(true, std::memory_order_release);
    return std::shared_ptr<ImageAsset>(new ImageAsset(std::move(state), isSvg, nullptr));
}

std::shared_ptr<ImageAsset> ImageAsset::FromResource(HMODULE module, const wchar_t* name, const wchar_t* type,
                                                     bool isSvg) {
    std::vector<std::uint8_t> bytes;
    if (const HRSRC found = FindResourceW(module, name, type)) {
        const HGLOBAL loaded = LoadResource(module, found);
        const DWORD size = SizeofResource(module, found);
        const auto* const first = loaded ? static_cast<const std::uint8_t*>(LockResource(loaded)) : nullptr;
        if (first && size > 0) bytes.assign(first, first + size);
    }
    return FromBytes(std::move(bytes), isSvg);
}

std::shared_ptr<ImageAsset> ImageAsset::FromEmbedded(EmbeddedResource* resource, bool isSvg) {
    return std::shared_ptr<ImageAsset>(new ImageAsset(nullptr, isSvg, resource));
}

bool ImageAsset::Draw(DrawContext& context, const Rect& destination, float opacity,
                      D2D1_INTERPOLATION_MODE interpolation) {
    ID2D1DeviceContext5* const target = context.Target();
    if (!target) return false;
    Microsoft::WRL::ComPtr<ID2D1Device> device;
    target->GetDevice(&device);
    if (!device) return false;

    const auto identity = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(device.Get()));
    DeviceEntry made = EntryOf(identity);
    if (!made.bitmap && !made.document) {
        const bool loaded = embedded_ || (state_ && state_->complete.load(std::memory_order_acquire));
        if (!loaded) return false;
        Decode(target, destination, made);  // without the lock: it takes its time
        const std::lock_guard lock(cacheLock_);
        DeviceEntry& entry = deviceCache_[identity];
        if (made.bitmap) entry.bitmap = made.bitmap;
        if (made.document) entry.document = made.document;
    }

    if (made.bitmap) {
        context.DrawBitmap(made.bitmap.Get(), destination, opacity, interpolation);
        return true;
    }
    if (!made.document) return false;
    // The document has the size that it was first drawn at.
    const D2D1_SIZE_F viewport = made.document->GetViewportSize();
    const float sx = viewport.width > 0.0F ? (destination.right - destination.left) / viewport.width : 1.0F;
    const float sy = viewport.height > 0.0F ? (destination.bottom - destination.top) / viewport.height : 1.0F;
    const Matrix3x2 current = context.CurrentTransform();
    const Matrix3x2 stretched = Multiply({sx, 0, 0, sy, destination.left, destination.top}, current);
    // Past the context, which goes on knowing that the target holds `current`.
    const auto matrix = std::bit_cast<D2D1_MATRIX_3X2_F>(stretched);
    target->SetTransform(&matrix);
    target->DrawSvgDocument(made.document.Get());
    const auto before = std::bit_cast<D2D1_MATRIX_3X2_F>(current);
    target->SetTransform(&before);
    return true;
}

ImageAsset::DeviceEntry ImageAsset::EntryOf(std::uint64_t device) {
    const std::lock_guard lock(cacheLock_);
    return deviceCache_[device];
}

bool ImageAsset::GetSize(D2D1_SIZE_F& size) {
    const std::lock_guard lock(cacheLock_);
    for (const auto& [device, entry] : deviceCache_) {
        if (entry.bitmap) {
            size = entry.bitmap->GetSize();
            return true;
        }
        if (entry.document) {
            size = entry.document->GetViewportSize();
            return true;
        }
    }
    size = {};
    return false;
}

bool ImageAsset::HasDeviceResources() {
    const std::lock_guard lock(cacheLock_);
    return std::ranges::any_of(deviceCache_,
                               [](const auto& each) { return each.second.bitmap || each.second.document; });
}

void ImageAsset::ReleaseDeviceResources() {
    const std::lock_guard lock(cacheLock_);
    deviceCache_.clear();
}

}  // namespace Tamborel
