// Brushes by colour, kept from frame to frame.
#pragma once

#include "Scene/Records.h"

#include <d2d1_3.h>
#include <wrl/client.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>

namespace Tamborel {

/// A colour in steps of 1/1024 per component. Colours that round to the same steps share a brush.
struct BrushKey {
    std::int32_t r = 0;
    std::int32_t g = 0;
    std::int32_t b = 0;
    std::int32_t a = 0;

    friend bool operator==(const BrushKey&, const BrushKey&) = default;
};

struct BrushKeyHash {
    std::size_t operator()(const BrushKey& key) const noexcept;
};

/// Halves round away from zero. What does not fit, and what is no number, becomes the smallest value there is.
BrushKey Quantise(const Color& color) noexcept;

/// The brushes of one device context. A window owns one for each of its surfaces; DrawContext fills it. It grows with
/// every colour painted and lets go of them only when the device context becomes another one. Render thread only.
struct BrushCache {
    /// The device context that made the brushes. Not counted: it is only compared, and made use of while it draws.
    ID2D1DeviceContext5* owner = nullptr;
    std::unordered_map<BrushKey, Microsoft::WRL::ComPtr<ID2D1SolidColorBrush>, BrushKeyHash> brushes;

    /// Makes the cache one of `target`'s, without the brushes of any other device context.
    void Adopt(ID2D1DeviceContext5* target);

    /// The brush of a colour, or null if there is no owner or it could not make one. A failure is not remembered, so
    /// the next call tries again. The cache keeps the reference.
    ID2D1SolidColorBrush* Get(const Color& color);
};

}  // namespace Tamborel
