#include "Scene/BrushCache.h"

#include <bit>
#include <limits>
#include <utility>

namespace Tamborel {
namespace {

std::int32_t Step(float component) noexcept {
    const float scaled = component * 1024.0F;
    const float rounded = scaled + (scaled >= 0.0F ? 0.5F : -0.5F);
    // 2^31, the first float that does not fit; the comparison is false for what is not a number.
    constexpr float limit = 2147483648.0F;
    if (!(rounded >= -limit && rounded < limit)) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(rounded);
}

constexpr std::uint64_t Widen(std::int32_t value) noexcept {
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
}

}  // namespace

std::size_t BrushKeyHash::operator()(const BrushKey& key) const noexcept {
    constexpr std::uint64_t prime = 16777619;
    std::uint64_t hash = Widen(key.r) * prime;
    hash = (hash ^ Widen(key.g)) * prime;
    hash = (hash ^ Widen(key.b)) * prime;
    hash ^= Widen(key.a);
    return static_cast<std::size_t>(hash);
}

BrushKey Quantise(const Color& color) noexcept {
    return {Step(color.r), Step(color.g), Step(color.b), Step(color.a)};
}

void BrushCache::Adopt(ID2D1DeviceContext5* target) {
    if (owner == target) return;
    brushes.clear();
    owner = target;
}

ID2D1SolidColorBrush* BrushCache::Get(const Color& color) {
    const BrushKey key = Quantise(color);
    if (const auto found = brushes.find(key); found != brushes.end()) return found->second.Get();
    if (!owner) return nullptr;
    Microsoft::WRL::ComPtr<ID2D1SolidColorBrush> brush;
    const auto exact = std::bit_cast<D2D1_COLOR_F>(color);
    if (FAILED(owner->CreateSolidColorBrush(&exact, nullptr, brush.GetAddressOf()))) return nullptr;
    ID2D1SolidColorBrush* const made = brush.Get();
    brushes.emplace(key, std::move(brush));
    return made;
}

}  // namespace Tamborel
