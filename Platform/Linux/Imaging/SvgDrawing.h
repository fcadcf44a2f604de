// An SVG document and its way to pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

struct _RsvgHandle;

namespace Platform::Imaging {

/// A length of a document's root element, in place of the file's own.
struct SvgLength {
    float value = 0.0F;
    bool percent = false;  ///< Of the viewport; else CSS pixels.
};

/// From the viewport to pixels, as row vectors: (x, y) becomes (x*m11 + y*m21 + dx, x*m12 + y*m22 + dy).
struct SvgTransform {
    double m11, m12, m21, m22, dx, dy;
};

/// A parsed document. Nothing outside it is ever loaded; SvgGuard.h says what is refused. One thread at a time.
class SvgDrawing {
public:
    /// None for what is no SVG, or none that may be parsed. Throws std::bad_alloc.
    static std::optional<SvgDrawing> Parse(std::span<const std::uint8_t> document);

    void SetWidth(const SvgLength& width);
    void SetHeight(const SvgLength& height);

    /// Paints the part of the document that lies in its viewport, (0, 0) to (viewportWidth, viewportHeight), over
    /// premultiplied BGRA pixels, rows of `width` without gaps. False if the renderer gave up; the pixels then are
    /// anything.
    bool Paint(float viewportWidth, float viewportHeight, const SvgTransform& transform, std::uint32_t* pixels,
               int width, int height);

private:
    struct HandleEnd {
        void operator()(_RsvgHandle* handle) const noexcept;
    };
    using Handle = std::unique_ptr<_RsvgHandle, HandleEnd>;

    explicit SvgDrawing(Handle handle) : handle_(std::move(handle)) {}
    bool ApplyLengths();

    Handle handle_;
    std::optional<SvgLength> width_;
    std::optional<SvgLength> height_;
    bool lengthsApplied_ = true;
};

}  // namespace Platform::Imaging
