#include "Platform/Linux/Imaging/SvgDrawing.h"

#include "Platform/Linux/Imaging/SvgGuard.h"

#include <librsvg/rsvg.h>

#include <charconv>
#include <iterator>
#include <string>
#include <string_view>

namespace Platform::Imaging {

namespace {

// Style sheets have a decimal point whatever the language of the process.
void AppendLength(std::string& style, std::string_view name, const std::optional<SvgLength>& length) {
    if (!length) return;
    char digits[64];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), length->value, std::chars_format::fixed, 4).ptr;
    style.append(name).append(":").append(digits, end);
    style += length->percent ? "% !important;" : "px !important;";
}

}  // namespace

void SvgDrawing::HandleEnd::operator()(_RsvgHandle* handle) const noexcept {
    g_object_unref(handle);
}

std::optional<SvgDrawing> SvgDrawing::Parse(std::span<const std::uint8_t> document) {
    if (document.empty() || !MayParse(document)) return std::nullopt;
    // Without the address of a file that it came from, the renderer loads nothing that the document names.
    Handle handle(rsvg_handle_new_from_data(document.data(), document.size(), nullptr));
    if (!handle) return std::nullopt;
    rsvg_handle_set_dpi(handle.get(), 96.0);
    return SvgDrawing(std::move(handle));
}

void SvgDrawing::SetWidth(const SvgLength& width) {
    width_ = width;
    lengthsApplied_ = false;
}

void SvgDrawing::SetHeight(const SvgLength& height) {
    height_ = height;
    lengthsApplied_ = false;
}

bool SvgDrawing::ApplyLengths() {
    if (lengthsApplied_) return true;
    std::string style = ":root{";
    AppendLength(style, "width", width_);
    AppendLength(style, "height", height_);
    style += '}';
    const auto* const text = reinterpret_cast<const guint8*>(style.data());
    lengthsApplied_ = rsvg_handle_set_stylesheet(handle_.get(), text, style.size(), nullptr) != FALSE;
    return lengthsApplied_;
}

bool SvgDrawing::Paint(float viewportWidth, float viewportHeight, const SvgTransform& transform, std::uint32_t* pixels,
                       int width, int height) {
    if (!ApplyLengths()) return false;
    cairo_surface_t* const surface = cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels),
                                                                         CAIRO_FORMAT_ARGB32, width, height, width * 4);
    cairo_t* const cairo = cairo_create(surface);
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, transform.m11, transform.m12, transform.m21, transform.m22, transform.dx, transform.dy);
    cairo_set_matrix(cairo, &matrix);
    cairo_rectangle(cairo, 0, 0, viewportWidth, viewportHeight);
    cairo_clip(cairo);
    const RsvgRectangle viewport{0, 0, viewportWidth, viewportHeight};
    const bool painted = rsvg_handle_render_document(handle_.get(), cairo, &viewport, nullptr) != FALSE &&
                         cairo_status(cairo) == CAIRO_STATUS_SUCCESS;
    cairo_destroy(cairo);
    cairo_surface_flush(surface);
    cairo_surface_destroy(surface);
    return painted;
}

}  // namespace Platform::Imaging
