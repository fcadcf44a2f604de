#include "Canvas.h"

#include <gtest/gtest.h>

namespace {

using Microsoft::WRL::ComPtr;

// A square from 2 to 6, and within it one from 3 to 5 that runs the same way around.
ComPtr<ID2D1PathGeometry> Squares(Canvas& canvas, D2D1_FILL_MODE mode) {
    ComPtr<ID2D1PathGeometry> geometry;
    EXPECT_EQ(canvas.Factory().CreatePathGeometry(&geometry), S_OK);
    ComPtr<ID2D1GeometrySink> sink;
    EXPECT_EQ(geometry->Open(&sink), S_OK);
    sink->SetFillMode(mode);
    for (const float inset : {2.0F, 3.0F}) {
        sink->BeginFigure(D2D1::Point2F(inset, inset), D2D1_FIGURE_BEGIN_FILLED);
        sink->AddLine(D2D1::Point2F(8 - inset, inset));
        sink->AddLine(D2D1::Point2F(8 - inset, 8 - inset));
        sink->AddLine(D2D1::Point2F(inset, 8 - inset));
        sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    }
    EXPECT_EQ(sink->Close(), S_OK);
    return geometry;
}

TEST(Direct2DGeometry, WindingFillsWhatRunsTheSameWay) {
    Canvas canvas(8, 8);
    const auto geometry = Squares(canvas, D2D1_FILL_MODE_WINDING);
    canvas.Draw([&](auto& context) { context.FillGeometry(geometry.Get(), canvas.Brush(1, 1, 1).Get()); });
    EXPECT_EQ(canvas.Pixel(2, 2), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(4, 4), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(6, 6), 0U);
}

TEST(Direct2DGeometry, AlternateLeavesAHole) {
    Canvas canvas(8, 8);
    const auto geometry = Squares(canvas, D2D1_FILL_MODE_ALTERNATE);
    canvas.Draw([&](auto& context) { context.FillGeometry(geometry.Get(), canvas.Brush(1, 1, 1).Get()); });
    EXPECT_EQ(canvas.Pixel(2, 2), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(4, 4), 0U);
}

TEST(Direct2DGeometry, TransformedGeometryIsMovedAndGroupHoldsBoth) {
    Canvas canvas(16, 8);
    const auto geometry = Squares(canvas, D2D1_FILL_MODE_WINDING);
    ComPtr<ID2D1TransformedGeometry> moved;
    ASSERT_EQ(canvas.Factory().CreateTransformedGeometry(geometry.Get(), D2D1::Matrix3x2F::Translation(8, 0), &moved),
              S_OK);
    ID2D1Geometry* both[] = {geometry.Get(), moved.Get()};
    ComPtr<ID2D1GeometryGroup> group;
    ASSERT_EQ(canvas.Factory().CreateGeometryGroup(D2D1_FILL_MODE_WINDING, both, 2, &group), S_OK);
    canvas.Draw([&](auto& context) { context.FillGeometry(group.Get(), canvas.Brush(1, 1, 1).Get()); });
    EXPECT_EQ(canvas.Pixel(4, 4), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(12, 4), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(7, 4), 0U);
    D2D1_RECT_F bounds;
    ASSERT_EQ(group->GetBounds(nullptr, &bounds), S_OK);
    EXPECT_EQ(bounds.left, 2.0F);
    EXPECT_EQ(bounds.right, 14.0F);
}

TEST(Direct2DGeometry, OutlineIsStroked) {
    Canvas canvas(8, 8);
    const auto geometry = Squares(canvas, D2D1_FILL_MODE_WINDING);
    canvas.Draw([&](auto& context) { context.DrawGeometry(geometry.Get(), canvas.Brush(1, 1, 1).Get(), 2.0F); });
    EXPECT_EQ(canvas.Pixel(1, 4), 0xFFFFFFFF);
    EXPECT_EQ(canvas.Pixel(0, 4), 0U);
}

TEST(Direct2DGeometry, SecondOpenIsTheWrongState) {
    Canvas canvas(8, 8);
    const auto geometry = Squares(canvas, D2D1_FILL_MODE_WINDING);
    ComPtr<ID2D1GeometrySink> sink;
    EXPECT_EQ(geometry->Open(&sink), D2DERR_WRONG_STATE);
}

TEST(Direct2DGeometry, CloseWithinAFigureIsTheWrongState) {
    Canvas canvas(8, 8);
    ComPtr<ID2D1PathGeometry> geometry;
    ASSERT_EQ(canvas.Factory().CreatePathGeometry(&geometry), S_OK);
    ComPtr<ID2D1GeometrySink> sink;
    ASSERT_EQ(geometry->Open(&sink), S_OK);
    sink->BeginFigure(D2D1::Point2F(0, 0), D2D1_FIGURE_BEGIN_FILLED);
    EXPECT_EQ(sink->Close(), D2DERR_WRONG_STATE);
    EXPECT_EQ(canvas.Draw([&](auto& context) { context.FillGeometry(geometry.Get(), canvas.Brush(1, 1, 1).Get()); }),
              D2DERR_WRONG_STATE);
}

TEST(Direct2DGeometry, InverseOfAMatrixUndoesIt) {
    D2D1::Matrix3x2F matrix(2, 1, -1, 3, 10, 20);
    const D2D1_POINT_2F there = matrix.TransformPoint(D2D1::Point2F(5, 7));
    ASSERT_TRUE(matrix.Invert());
    const D2D1_POINT_2F back = matrix.TransformPoint(there);
    EXPECT_NEAR(back.x, 5, 1e-4);
    EXPECT_NEAR(back.y, 7, 1e-4);
}

TEST(Direct2DGeometry, MatrixWithoutInverseStaysAsItWas) {
    D2D1::Matrix3x2F matrix(1, 2, 2, 4, 5, 6);
    EXPECT_FALSE(matrix.Invert());
    EXPECT_EQ(matrix._21, 2.0F);
    EXPECT_EQ(matrix._32, 6.0F);
}

}  // namespace
