#include "Platform/Linux/Direct2D/SvgDocument.h"

#include "Platform/Linux/Direct2D/SvgElement.h"
#include "Platform/Linux/Direct2D/Transform.h"

#include <cmath>
#include <new>
#include <string_view>

namespace Platform::Direct2D {

namespace {

// A larger picture is rendered only as far as it lies on the target.
constexpr std::int64_t maxWholeArea = std::int64_t{1} << 22;
// How much is kept for one document, in pixels: a few sizes of an icon, or one large picture.
constexpr std::int64_t maxKeptArea = std::int64_t{1} << 23;
constexpr std::size_t maxKept = 8;
// Positions between pixels are told apart to this part of one.
constexpr float steps = 64.0F;

bool IsSize(const D2D1_SIZE_F& size) {
    return std::isfinite(size.width) && std::isfinite(size.height) && size.width >= 0.0F && size.height >= 0.0F;
}

PixelRect Moved(const PixelRect& rect, int x, int y) {
    return {rect.left + x, rect.top + y, rect.right + x, rect.bottom + y};
}

}  // namespace

SvgDocument::SvgDocument(ComPtr<ID2D1Factory> factory, Imaging::SvgDrawing drawing, D2D1_SIZE_F viewport)
    : Resource("ID2D1SvgDocument", std::move(factory)), drawing_(std::move(drawing)), viewport_(viewport) {}

HRESULT SvgDocument::Make(ComPtr<ID2D1Factory> factory, std::span<const std::uint8_t> bytes, D2D1_SIZE_F viewport,
                          ID2D1SvgDocument** document) {
    if (!IsSize(viewport)) return E_INVALIDARG;
    std::optional<Imaging::SvgDrawing> drawing = Imaging::SvgDrawing::Parse(bytes);
    if (!drawing) return E_FAIL;
    *document = new SvgDocument(std::move(factory), std::move(*drawing), viewport);
    return S_OK;
}

HRESULT SvgDocument::SetViewportSize(D2D1_SIZE_F viewportSize) {
    if (!IsSize(viewportSize)) return E_INVALIDARG;
    viewport_ = viewportSize;
    rendered_.clear();
    return S_OK;
}

void SvgDocument::GetRoot(ID2D1SvgElement** root) {
    *root = new (std::nothrow) SvgElement(OwnFactory(), this);
}

HRESULT SvgDocument::SetRootLength(PCWSTR name, const D2D1_SVG_LENGTH& length) {
    if (!std::isfinite(length.value) || length.value < 0.0F || length.value > 1e6F) return E_INVALIDARG;
    const std::wstring_view attribute = name;
    if (attribute != L"width" && attribute != L"height") {
        return NotImplemented("ID2D1SvgElement::SetAttributeValue for any but width and height");
    }
    const Imaging::SvgLength replacement{length.value, length.units == D2D1_SVG_LENGTH_UNITS_PERCENTAGE};
    if (attribute == L"width") {
        drawing_.SetWidth(replacement);
    } else {
        drawing_.SetHeight(replacement);
    }
    rendered_.clear();
    return S_OK;
}

SvgDocument::Picture SvgDocument::Render(const D2D1_MATRIX_3X2_F& transform, const PixelRect& target) {
    if (!IsFinite(transform) || D2D1IsMatrixInvertible(&transform) == FALSE) return {};
    const D2D1_RECT_F own{0.0F, 0.0F, viewport_.width, viewport_.height};
    if (Intersect(Touched(Bounds(transform, own)), target).IsEmpty()) return {};

    // Whole pixels of the position go to the place, so that a picture moves without being rendered anew.
    D2D1_MATRIX_3X2_F local = transform;
    const float wholeX = std::floor(transform._31 + 0.5F / steps);
    const float wholeY = std::floor(transform._32 + 0.5F / steps);
    local._31 = std::round((transform._31 - wholeX) * steps) / steps;
    local._32 = std::round((transform._32 - wholeY) * steps) / steps;
    const int x = static_cast<int>(wholeX);
    const int y = static_cast<int>(wholeY);
    PixelRect place = Touched(Bounds(local, own));
    if (place.Area() > maxWholeArea) place = Intersect(place, Moved(target, -x, -y));
    if (place.IsEmpty()) return {};

    for (std::size_t i = rendered_.size(); i-- > 0;) {
        if (rendered_[i].place != place || !Equal(rendered_[i].transform, local)) continue;
        Rendered found = std::move(rendered_[i]);
        rendered_.erase(rendered_.begin() + static_cast<std::ptrdiff_t>(i));
        rendered_.push_back(std::move(found));
        return {rendered_.back().image, Moved(place, x, y)};
    }
    std::shared_ptr<const Image> image = Rasterise(local, place);
    Keep({local, place, image});  // A failure too: it may have taken its time, and would each frame.
    return {std::move(image), Moved(place, x, y)};
}

void SvgDocument::Keep(Rendered rendered) {
    rendered_.push_back(std::move(rendered));
    std::int64_t area = 0;
    for (const Rendered& each : rendered_) area += each.place.Area();
    while (rendered_.size() > 1 && (rendered_.size() > maxKept || area > maxKeptArea)) {
        area -= rendered_.front().place.Area();
        rendered_.erase(rendered_.begin());
    }
}

std::shared_ptr<const Image> SvgDocument::Rasterise(const D2D1_MATRIX_3X2_F& transform, const PixelRect& place) {
    auto image = std::make_shared<Image>();
    image->width = place.Width();
    image->height = place.Height();
    image->pixels.resize(static_cast<std::size_t>(place.Area()));
    const Imaging::SvgTransform toImage{transform._11,
                                        transform._12,
                                        transform._21,
                                        transform._22,
                                        static_cast<double>(transform._31) - place.left,
                                        static_cast<double>(transform._32) - place.top};
    const bool painted =
        drawing_.Paint(viewport_.width, viewport_.height, toImage, image->pixels.data(), image->width, image->height);
    return painted ? image : nullptr;
}

}  // namespace Platform::Direct2D
