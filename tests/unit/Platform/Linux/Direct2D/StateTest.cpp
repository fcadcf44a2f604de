// Calls out of order, and what objects say about themselves.

#include "Canvas.h"

#include <gtest/gtest.h>

namespace {

using Microsoft::WRL::ComPtr;

TEST(Direct2DState, EndDrawWithoutBeginDrawIsTheWrongState) {
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.Context().EndDraw(), D2DERR_WRONG_STATE);
    EXPECT_TRUE(canvas.Record().frames.empty());
    EXPECT_EQ(canvas.Draw([](auto&) {}), S_OK);  // The failure is told once.
}

TEST(Direct2DState, SecondBeginDrawIsToldByEndDraw) {
    Canvas canvas(4, 4);
    canvas.Context().BeginDraw();
    canvas.Context().BeginDraw();
    EXPECT_EQ(canvas.Context().EndDraw(), D2DERR_WRONG_STATE);
    EXPECT_EQ(canvas.Draw([](auto&) {}), S_OK);
}

TEST(Direct2DState, DrawingWithoutBeginDrawIsToldByTheNextEndDraw) {
    Canvas canvas(4, 4);
    canvas.Context().FillRectangle(D2D1::RectF(0, 0, 1, 1), canvas.Brush(1, 1, 1).Get());
    EXPECT_EQ(canvas.Draw([](auto&) {}), D2DERR_WRONG_STATE);
}

TEST(Direct2DState, DrawingWithoutATargetIsTheWrongState) {
    Canvas canvas(4, 4);
    canvas.Context().SetTarget(nullptr);
    EXPECT_EQ(canvas.Draw([](auto&) {}), D2DERR_WRONG_STATE);
}

TEST(Direct2DState, ClipLeftPushedIsUnbalancedAndGoneInTheNextFrame) {
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.Draw([](auto& context) {
        context.PushAxisAlignedClip(D2D1::RectF(0, 0, 1, 1), D2D1_ANTIALIAS_MODE_ALIASED);
    }),
              D2DERR_PUSH_POP_UNBALANCED);
    EXPECT_EQ(canvas.Draw(
                  [&](auto& context) { context.FillRectangle(D2D1::RectF(0, 0, 4, 4), canvas.Brush(1, 1, 1).Get()); }),
              S_OK);
    EXPECT_EQ(canvas.Pixel(3, 3), 0xFFFFFFFF);
}

TEST(Direct2DState, PopWithoutPushIsTold) {
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.Draw([](auto& context) { context.PopAxisAlignedClip(); }), D2DERR_POP_CALL_DID_NOT_MATCH_PUSH);
}

TEST(Direct2DState, FirstOfSeveralFailuresIsTold) {
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.Draw([](auto& context) {
        context.PopAxisAlignedClip();
        context.FillRectangle(D2D1::RectF(0, 0, 1, 1), nullptr);
    }),
              D2DERR_POP_CALL_DID_NOT_MATCH_PUSH);
}

TEST(Direct2DState, NullBrushIsAnInvalidArgument) {
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.Draw([](auto& context) { context.FillRectangle(D2D1::RectF(0, 0, 1, 1), nullptr); }),
              E_INVALIDARG);
}

/// Lives in the test alone.
class ForeignBrush final : public ID2D1SolidColorBrush {
public:
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    void GetFactory(ID2D1Factory** factory) const override { *factory = nullptr; }
    void SetOpacity(FLOAT) override {}
    FLOAT GetOpacity() const override { return 1; }
    void SetColor(const D2D1_COLOR_F*) override {}
    D2D1_COLOR_F GetColor() const override { return {1, 1, 1, 1}; }
};

TEST(Direct2DState, ABrushThatThisSystemDidNotMakeIsAnInvalidArgument) {
    Canvas canvas(10, 10);
    ForeignBrush brush;
    EXPECT_EQ(canvas.Draw([&](auto& context) { context.FillRectangle(D2D1::RectF(0, 0, 1, 1), &brush); }),
              E_INVALIDARG);
}

TEST(Direct2DState, TargetsFailureIsEndDrawsResult) {
    Canvas canvas(4, 4);
    canvas.Record().result = D2DERR_RECREATE_TARGET;
    EXPECT_EQ(canvas.Draw([](auto&) {}), D2DERR_RECREATE_TARGET);
}

TEST(Direct2DState, ContextLetsGoOfATargetThatIsTakenAway) {
    Canvas canvas(4, 4);
    canvas.Target().AddRef();
    const ULONG held = canvas.Target().Release();
    canvas.Context().SetTarget(nullptr);
    canvas.Target().AddRef();
    EXPECT_EQ(canvas.Target().Release(), held - 1);
    ComPtr<ID2D1Image> target;
    canvas.Context().GetTarget(&target);
    EXPECT_FALSE(target);
}

TEST(Direct2DState, TargetTellsItsSizeFormatAndOptions) {
    Canvas canvas(12, 7, D2D1_ALPHA_MODE_IGNORE);
    EXPECT_EQ(canvas.Target().GetPixelSize().width, 12U);
    EXPECT_EQ(canvas.Target().GetSize().height, 7.0F);
    EXPECT_EQ(canvas.Target().GetPixelFormat().alphaMode, D2D1_ALPHA_MODE_IGNORE);
    EXPECT_EQ(canvas.Target().GetOptions(), D2D1_BITMAP_OPTIONS_TARGET | D2D1_BITMAP_OPTIONS_CANNOT_DRAW);
    EXPECT_EQ(canvas.Context().GetPixelSize().width, 12U);
}

TEST(Direct2DState, PixelsInMemoryAreNoTarget) {
    Canvas canvas(4, 4);
    ComPtr<ID2D1Bitmap1> bitmap;
    const D2D1_BITMAP_PROPERTIES1 properties = D2D1::BitmapProperties1();
    ASSERT_EQ(canvas.Context().CreateBitmap(D2D1::SizeU(1, 1), nullptr, 0, &properties, &bitmap), S_OK);
    canvas.Context().SetTarget(bitmap.Get());
    EXPECT_EQ(canvas.Draw([](auto&) {}), E_INVALIDARG);
}

TEST(Direct2DState, TargetIsNothingToDrawFrom) {
    Canvas canvas(4, 4);
    EXPECT_EQ(canvas.Draw([&](auto& context) { context.DrawBitmap(&canvas.Target()); }), E_INVALIDARG);
}

TEST(Direct2DState, ObjectsKnowTheirDeviceAndFactory) {
    Canvas canvas(4, 4);
    ComPtr<ID2D1Device> device;
    canvas.Context().GetDevice(&device);
    EXPECT_EQ(device.Get(), &canvas.Device());
    ComPtr<ID2D1Factory> factory;
    canvas.Target().GetFactory(&factory);
    EXPECT_EQ(factory.Get(), &canvas.Factory());
}

TEST(Direct2DState, ContextHasEachOfItsInterfaces) {
    Canvas canvas(4, 4);
    ComPtr<ID2D1RenderTarget> renderTarget;
    EXPECT_EQ(canvas.Context().QueryInterface(IID_PPV_ARGS(&renderTarget)), S_OK);
    ComPtr<ID2D1DeviceContext2> second;
    EXPECT_EQ(canvas.Context().QueryInterface(IID_PPV_ARGS(&second)), S_OK);
    ComPtr<ID2D1Brush> brush;
    EXPECT_EQ(canvas.Context().QueryInterface(IID_PPV_ARGS(&brush)), E_NOINTERFACE);
}

}  // namespace
