// The context's pictures: bitmaps and SVG documents.

#include "Platform/Linux/Direct2D/DeviceContext.h"
#include "Platform/Linux/Direct2D/SvgDocument.h"
#include "Platform/Linux/Direct2D/Transform.h"
#include "Platform/Linux/Imaging/SvgGuard.h"

#include <objidl.h>

#include <algorithm>
#include <new>
#include <utility>

namespace Platform::Direct2D {

namespace {

Sampling SamplingOf(D2D1_INTERPOLATION_MODE mode) {
    switch (mode) {
        case D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR:
            return Sampling::Nearest;
        case D2D1_INTERPOLATION_MODE_LINEAR:
            return Sampling::Linear;
        default:
            return Sampling::Smooth;
    }
}

// No more than a document may have, and one byte by which the rest shows.
HRESULT ReadDocument(IStream& stream, std::vector<std::uint8_t>& bytes) {
    static constexpr ULONG portion = 16 * 1024;
    while (bytes.size() <= Imaging::maxSvgBytes) {
        const std::size_t before = bytes.size();
        bytes.resize(before + portion);
        ULONG read = 0;
        const HRESULT result = stream.Read(bytes.data() + before, portion, &read);
        bytes.resize(before + std::min(read, portion));
        if (FAILED(result)) return result;
        if (read == 0) break;
    }
    return S_OK;
}

}  // namespace

HRESULT DeviceContext::CreateSvgDocument(IStream* stream, D2D1_SIZE_F viewportSize, ID2D1SvgDocument** document) try {
    if (!document) return E_POINTER;
    *document = nullptr;
    if (!stream) return E_INVALIDARG;  // The system makes an empty document; nobody here asks for one.
    std::vector<std::uint8_t> bytes;
    if (const HRESULT result = ReadDocument(*stream, bytes); FAILED(result)) return result;
    return SvgDocument::Make(OwnFactory(), bytes, viewportSize, document);
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

void DeviceContext::DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                               D2D1_BITMAP_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source) {
    DrawBitmap(bitmap, destination, opacity,
               interpolation == D2D1_BITMAP_INTERPOLATION_MODE_LINEAR ? D2D1_INTERPOLATION_MODE_LINEAR
                                                                      : D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR,
               source, nullptr);
}

void DeviceContext::DrawBitmap(ID2D1Bitmap* bitmap, const D2D1_RECT_F* destination, FLOAT opacity,
                               D2D1_INTERPOLATION_MODE interpolation, const D2D1_RECT_F* source,
                               const D2D1_MATRIX_4X4_F* perspective) {
    if (!CanDraw()) return;
    const auto* const own = dynamic_cast<const Bitmap*>(bitmap);
    if (!own || !own->Pixels()) {
        Fail(E_INVALIDARG);
        return;
    }
    if (perspective) {
        Fail(NotImplemented("DrawBitmap with a perspective"));
        return;
    }
    const D2D1_SIZE_F size = own->GetSize();
    const D2D1_RECT_F whole{0.0F, 0.0F, size.width, size.height};
    D2D1_RECT_F from = source ? *source : whole;
    // From the bitmap's units to its pixels.
    const D2D1_SIZE_U pixels = own->GetPixelSize();
    from.left *= static_cast<float>(pixels.width) / size.width;
    from.right *= static_cast<float>(pixels.width) / size.width;
    from.top *= static_cast<float>(pixels.height) / size.height;
    from.bottom *= static_cast<float>(pixels.height) / size.height;
    Record(ImageShape{own->Pixels(), from, destination ? *destination : whole, SamplingOf(interpolation)},
           {0.0F, 0.0F, 0.0F, opacity}, std::nullopt);
}

// A document goes into the list as the image that it is at the target's scale, pixel on pixel: crisp, and equal to the
// last frame's by the image's identity.
void DeviceContext::DrawSvgDocument(ID2D1SvgDocument* document) try {
    if (!CanDraw()) return;
    auto* const own = dynamic_cast<SvgDocument*>(document);
    if (!own) {
        Fail(E_INVALIDARG);
        return;
    }
    const D2D1_SIZE_U size = target_->GetPixelSize();
    PixelRect visible{0, 0, static_cast<int>(size.width), static_cast<int>(size.height)};
    if (!clips_.empty()) visible = Intersect(visible, Touched(clips_.back()));
    SvgDocument::Picture picture = own->Render(transform_, visible);
    if (!picture.image) return;
    const PixelRect& place = picture.place;
    const D2D1_RECT_F whole{0.0F, 0.0F, static_cast<float>(place.Width()), static_cast<float>(place.Height())};
    const D2D1_MATRIX_3X2_F documents = std::exchange(
        transform_, D2D1::Matrix3x2F::Translation(static_cast<float>(place.left), static_cast<float>(place.top)));
    Record(ImageShape{std::move(picture.image), whole, whole, Sampling::Nearest}, {0.0F, 0.0F, 0.0F, 1.0F},
           std::nullopt);
    transform_ = documents;
} catch (const std::bad_alloc&) {
    Fail(E_OUTOFMEMORY);
}

}  // namespace Platform::Direct2D
