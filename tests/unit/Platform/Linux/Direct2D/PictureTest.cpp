// Bitmaps and SVG documents: pixels, and what drawing them again costs.

#include "Canvas.h"

#include <shlwapi.h>
#include <wincodec.h>

#include <gtest/gtest.h>

#include <limits>
#include <string_view>

namespace {

using Microsoft::WRL::ComPtr;
using Platform::Direct2D::PixelRect;

// Left half red, right half blue, edge to edge.
constexpr std::string_view halves =
    R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 10 10"><rect width="5" height="10" fill="#f00"/><rect x="5" width="5" height="10" fill="#00f"/></svg>)";

HRESULT Parse(Canvas& canvas, std::string_view text, D2D1_SIZE_F viewport, ComPtr<ID2D1SvgDocument>& document) {
    ComPtr<IStream> stream;
    stream.Attach(SHCreateMemStream(reinterpret_cast<const BYTE*>(text.data()), static_cast<UINT>(text.size())));
    return canvas.Context().CreateSvgDocument(stream.Get(), viewport, &document);
}

/// A document as assets make it.
ComPtr<ID2D1SvgDocument> Document(Canvas& canvas, std::string_view text, float width, float height) {
    ComPtr<ID2D1SvgDocument> document;
    EXPECT_EQ(Parse(canvas, text, {width, height}, document), S_OK);
    ComPtr<ID2D1SvgElement> root;
    document->GetRoot(&root);
    const D2D1_SVG_LENGTH whole{100.0F, D2D1_SVG_LENGTH_UNITS_PERCENTAGE};
    EXPECT_EQ(root->SetAttributeValue(L"width", D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH, &whole, sizeof whole), S_OK);
    EXPECT_EQ(root->SetAttributeValue(L"height", D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH, &whole, sizeof whole), S_OK);
    return document;
}

auto At(ID2D1SvgDocument* document, const D2D1::Matrix3x2F& transform) {
    return [document, transform](ID2D1DeviceContext5& context) {
        context.SetTransform(transform);
        context.DrawSvgDocument(document);
    };
}

TEST(Direct2DSvg, DocumentIsDrawnAtTheTargetsScaleWithSharpEdges) {
    for (const float scale : {1.0F, 1.5F, 2.0F}) {
        Canvas canvas(64, 64);
        const auto document = Document(canvas, halves, 20, 20);
        EXPECT_EQ(canvas.Draw(At(document.Get(), D2D1::Matrix3x2F(scale, 0, 0, scale, 4, 4))), S_OK);
        const auto middle = static_cast<UINT32>(4 + 10 * scale);
        const auto end = static_cast<UINT32>(4 + 20 * scale);
        EXPECT_EQ(canvas.Pixel(3, 10), 0U);
        EXPECT_EQ(canvas.Pixel(4, 10), 0xFFFF0000);
        EXPECT_EQ(canvas.Pixel(middle - 1, 10), 0xFFFF0000) << "at " << scale;
        EXPECT_EQ(canvas.Pixel(middle, 10), 0xFF0000FF) << "at " << scale;
        EXPECT_EQ(canvas.Pixel(end - 1, end - 1), 0xFF0000FF);
        EXPECT_EQ(canvas.Pixel(end, end - 1), 0U);
    }
}

TEST(Direct2DSvg, DrawnAgainItCostsNothing) {
    Canvas canvas(64, 64);
    const auto document = Document(canvas, halves, 20, 20);
    canvas.Draw(At(document.Get(), D2D1::Matrix3x2F(1.5F, 0, 0, 1.5F, 4.25F, 4)));
    canvas.Draw(At(document.Get(), D2D1::Matrix3x2F(1.5F, 0, 0, 1.5F, 4.25F, 4)));
    EXPECT_TRUE(canvas.Record().frames[1].changed.empty());
}

TEST(Direct2DSvg, MovedDocumentRepaintsWhereItWasAndWhereItIs) {
    Canvas canvas(64, 64);
    const auto document = Document(canvas, halves, 10, 10);
    canvas.Draw(At(document.Get(), D2D1::Matrix3x2F::Translation(0, 0)));
    canvas.Draw(At(document.Get(), D2D1::Matrix3x2F::Translation(32, 0)));
    EXPECT_EQ(canvas.Record().frames[1].changed, (std::vector{PixelRect{0, 0, 10, 10}, PixelRect{32, 0, 42, 10}}));
    EXPECT_EQ(canvas.Pixel(5, 5), 0U);
    EXPECT_EQ(canvas.Pixel(33, 5), 0xFFFF0000);
}

TEST(Direct2DSvg, ScaledBackItIsTheSamePictureAgain) {
    Canvas canvas(64, 64);
    const auto document = Document(canvas, halves, 10, 10);
    const auto small = D2D1::Matrix3x2F::Translation(8, 8);
    canvas.Draw(At(document.Get(), small));
    const auto before = canvas.Record().frames.back().pixels;
    canvas.Draw(At(document.Get(), D2D1::Matrix3x2F::Scale(3, 3)));
    canvas.Draw(At(document.Get(), small));
    EXPECT_EQ(canvas.Record().frames.back().pixels, before);
}

TEST(Direct2DSvg, RotatedDocumentStaysWithinItsTurnedViewport) {
    Canvas canvas(64, 64);
    const auto document = Document(canvas, halves, 20, 20);
    // A quarter turn to the right about the origin, then to where it is seen: up becomes right.
    canvas.Draw(At(document.Get(), D2D1::Matrix3x2F(0, 1, -1, 0, 40, 10)));
    EXPECT_EQ(canvas.Pixel(30, 12), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(30, 28), 0xFF0000FF);
    EXPECT_EQ(canvas.Pixel(19, 20), 0U);
    EXPECT_EQ(canvas.Pixel(40, 20), 0U);
}

TEST(Direct2DSvg, PartOutsideTheTargetOrTheClipIsLeftOut) {
    Canvas canvas(16, 16);
    const auto document = Document(canvas, halves, 20, 20);
    canvas.Draw([&](ID2D1DeviceContext5& context) {
        context.SetTransform(D2D1::IdentityMatrix());
        context.PushAxisAlignedClip(D2D1::RectF(0, 0, 12, 6), D2D1_ANTIALIAS_MODE_ALIASED);
        context.DrawSvgDocument(document.Get());
        context.PopAxisAlignedClip();
    });
    EXPECT_EQ(canvas.Pixel(2, 5), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(2, 6), 0U);
    EXPECT_EQ(canvas.Pixel(11, 2), 0xFF0000FF);
    EXPECT_EQ(canvas.Pixel(12, 2), 0U);
}

TEST(Direct2DSvg, HugeScaleIsRenderedOnlyWhereItIsSeen) {
    Canvas canvas(32, 32);
    const auto document = Document(canvas, halves, 20, 20);
    canvas.Draw(At(document.Get(), D2D1::Matrix3x2F(100000, 0, 0, 100000, -1000000 + 16, -5000)));
    EXPECT_EQ(canvas.Pixel(15, 16), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(16, 16), 0xFF0000FF);
}

TEST(Direct2DSvg, FlatOrEndlessTransformDrawsNothing) {
    Canvas canvas(16, 16);
    const auto document = Document(canvas, halves, 10, 10);
    const float endless = std::numeric_limits<float>::infinity();
    EXPECT_EQ(canvas.Draw(At(document.Get(), D2D1::Matrix3x2F::Scale(0, 1))), S_OK);
    EXPECT_EQ(canvas.Draw(At(document.Get(), D2D1::Matrix3x2F::Translation(endless, 1))), S_OK);
    EXPECT_EQ(canvas.Draw(At(document.Get(), D2D1::Matrix3x2F::Translation(1e30F, 1))), S_OK);
    EXPECT_TRUE(canvas.Record().frames.back().painted.empty());
}

TEST(Direct2DSvg, ViewportCanBeChanged) {
    Canvas canvas(64, 64);
    const auto document = Document(canvas, halves, 10, 10);
    EXPECT_EQ(document->SetViewportSize({40, 40}), S_OK);
    EXPECT_EQ(document->GetViewportSize().width, 40.0F);
    canvas.Draw(At(document.Get(), D2D1::Matrix3x2F::Translation(0, 0)));
    EXPECT_EQ(canvas.Pixel(39, 39), 0xFF0000FF);
    EXPECT_EQ(document->SetViewportSize({-1, 40}), E_INVALIDARG);
}

TEST(Direct2DSvg, WrongArgumentsAreTold) {
    Canvas canvas(8, 8);
    ComPtr<ID2D1SvgDocument> document;
    EXPECT_EQ(canvas.Context().CreateSvgDocument(nullptr, {1, 1}, &document), E_INVALIDARG);
    EXPECT_EQ(Parse(canvas, "<html/>", {1, 1}, document), E_FAIL);
    EXPECT_EQ(Parse(canvas, halves, {-1, 1}, document), E_INVALIDARG);
    EXPECT_FALSE(document);
    document = Document(canvas, halves, 1, 1);
    ComPtr<ID2D1SvgElement> root;
    document->GetRoot(&root);
    const D2D1_SVG_LENGTH length{1.0F, D2D1_SVG_LENGTH_UNITS_NUMBER};
    EXPECT_EQ(root->SetAttributeValue(L"width", D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH, &length, 4), E_INVALIDARG);
    EXPECT_EQ(root->SetAttributeValue(L"width", D2D1_SVG_ATTRIBUTE_POD_TYPE_FLOAT, &length, 8), E_INVALIDARG);
    EXPECT_EQ(root->SetAttributeValue(L"fill", D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH, &length, 8), E_NOTIMPL);
    EXPECT_EQ(canvas.Draw([](auto& context) { context.DrawSvgDocument(nullptr); }), E_INVALIDARG);
}

TEST(Direct2DSvg, DocumentOutlivesItsRootAndTheOtherWayRound) {
    Canvas canvas(8, 8);
    auto document = Document(canvas, halves, 8, 8);
    ComPtr<ID2D1SvgElement> root;
    document->GetRoot(&root);
    document.Reset();
    const D2D1_SVG_LENGTH length{50.0F, D2D1_SVG_LENGTH_UNITS_PERCENTAGE};
    EXPECT_EQ(root->SetAttributeValue(L"width", D2D1_SVG_ATTRIBUTE_POD_TYPE_LENGTH, &length, sizeof length), S_OK);
}

/// Two by two: red, green / blue, white.
ComPtr<ID2D1Bitmap> FourColours(Canvas& canvas) {
    static constexpr std::uint32_t pixels[]{0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF};
    const auto properties =
        D2D1::BitmapProperties(D2D1::PixelFormat(DXGI_FORMAT_B8G8R8A8_UNORM, D2D1_ALPHA_MODE_PREMULTIPLIED));
    ComPtr<ID2D1Bitmap> bitmap;
    EXPECT_EQ(canvas.Context().CreateBitmap(D2D1::SizeU(2, 2), pixels, 8, &properties, &bitmap), S_OK);
    return bitmap;
}

auto Stretched(ID2D1Bitmap* bitmap, float opacity, D2D1_INTERPOLATION_MODE mode) {
    return [=](ID2D1DeviceContext5& context) {
        const D2D1_RECT_F destination = D2D1::RectF(4, 4, 20, 20);
        context.DrawBitmap(bitmap, &destination, opacity, mode);
    };
}

TEST(Direct2DBitmap, NearestNeighbourKeepsColoursApart) {
    Canvas canvas(24, 24);
    const auto bitmap = FourColours(canvas);
    canvas.Draw(Stretched(bitmap.Get(), 1, D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR));
    EXPECT_EQ(canvas.Pixel(3, 4), 0U);
    EXPECT_EQ(canvas.Pixel(4, 4), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(11, 11), 0xFFFF0000);
    EXPECT_EQ(canvas.Pixel(12, 11), 0xFF00FF00);
    EXPECT_EQ(canvas.Pixel(11, 12), 0xFF0000FF);
    EXPECT_EQ(canvas.Pixel(19, 19), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(20, 19), 0U);
}

TEST(Direct2DBitmap, OtherModesBlendInsideAndAreOpaqueAtTheRim) {
    for (const auto mode :
         {D2D1_INTERPOLATION_MODE_LINEAR, D2D1_INTERPOLATION_MODE_CUBIC, D2D1_INTERPOLATION_MODE_MULTI_SAMPLE_LINEAR,
          D2D1_INTERPOLATION_MODE_ANISOTROPIC, D2D1_INTERPOLATION_MODE_HIGH_QUALITY_CUBIC}) {
        Canvas canvas(24, 24);
        const auto bitmap = FourColours(canvas);
        canvas.Draw(Stretched(bitmap.Get(), 1, mode));
        EXPECT_EQ(canvas.Pixel(4, 4), 0xFFFF0000) << mode;
        const std::uint32_t middle = canvas.Pixel(12, 4);
        EXPECT_EQ(middle >> 24, 0xFFU);
        EXPECT_GT(middle >> 16 & 0xFF, 0x30U) << mode;
        EXPECT_GT(middle >> 8 & 0xFF, 0x30U) << mode;
        EXPECT_EQ(canvas.Pixel(20, 12), 0U);
        EXPECT_EQ(canvas.Pixel(3, 12), 0U);
    }
}

TEST(Direct2DBitmap, OpacityScalesAllOfIt) {
    Canvas canvas(24, 24);
    const auto bitmap = FourColours(canvas);
    canvas.Draw(Stretched(bitmap.Get(), 0.5F, D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR));
    EXPECT_EQ(canvas.Pixel(5, 5) >> 24, 0x80U);
    EXPECT_EQ(canvas.Pixel(5, 5) & 0xFFFF, 0U);
    canvas.Draw(Stretched(bitmap.Get(), 0, D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR));
    EXPECT_TRUE(canvas.Record().frames.back().painted.empty());
}

TEST(Direct2DBitmap, EachOfModeOpacityAndBitmapRepaints) {
    Canvas canvas(24, 24);
    const auto bitmap = FourColours(canvas);
    const auto other = FourColours(canvas);
    const std::vector<PixelRect> whole{{4, 4, 20, 20}};
    const auto changed = [&](ID2D1Bitmap* drawn, float opacity, D2D1_INTERPOLATION_MODE mode) {
        canvas.Draw(Stretched(drawn, opacity, mode));
        return canvas.Record().frames.back().changed;
    };
    EXPECT_EQ(changed(bitmap.Get(), 1, D2D1_INTERPOLATION_MODE_LINEAR), whole);
    EXPECT_EQ(changed(bitmap.Get(), 1, D2D1_INTERPOLATION_MODE_LINEAR), std::vector<PixelRect>{});
    EXPECT_EQ(changed(bitmap.Get(), 0.5F, D2D1_INTERPOLATION_MODE_LINEAR), whole);
    EXPECT_EQ(changed(bitmap.Get(), 0.5F, D2D1_INTERPOLATION_MODE_HIGH_QUALITY_CUBIC), whole);
    EXPECT_EQ(changed(bitmap.Get(), 0.5F, D2D1_INTERPOLATION_MODE_CUBIC), std::vector<PixelRect>{});
    EXPECT_EQ(changed(other.Get(), 0.5F, D2D1_INTERPOLATION_MODE_CUBIC), whole);
}

TEST(Direct2DBitmap, ContextKnowsTheDeviceItWasMadeBy) {
    Canvas canvas(8, 8);
    ComPtr<ID2D1Device> device;
    canvas.Context().GetDevice(&device);
    EXPECT_EQ(device.Get(), static_cast<ID2D1Device*>(&canvas.Device()));
    ComPtr<ID2D1Device> again;
    canvas.Context().GetDevice(&again);
    EXPECT_EQ(device.Get(), again.Get());
}

}  // namespace
