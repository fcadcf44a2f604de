// Outlines of glyph runs, and text in fonts of a private collection.

#include "Layouts.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

using namespace Layouts;

/// Notes what it is handed. Lives on the stack.
class Sink final : public ID2D1SimplifiedGeometrySink {
public:
    int begun = 0;
    int closed = 0;
    float left = 1e9F;
    float right = -1e9F;
    float top = 1e9F;
    float bottom = -1e9F;
    D2D1_FILL_MODE fillMode = D2D1_FILL_MODE_ALTERNATE;

    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }
    void SetFillMode(D2D1_FILL_MODE mode) override { fillMode = mode; }
    void SetSegmentFlags(D2D1_PATH_SEGMENT) override {}
    void BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN) override {
        ++begun;
        Add(start);
    }
    void AddLines(const D2D1_POINT_2F* points, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) Add(points[i]);
    }
    void AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) Add(beziers[i].point3);
    }
    void EndFigure(D2D1_FIGURE_END end) override { closed += end == D2D1_FIGURE_END_CLOSED ? 1 : 0; }
    HRESULT Close() override { return S_OK; }

private:
    void Add(D2D1_POINT_2F point) {
        left = std::min(left, point.x);
        right = std::max(right, point.x);
        top = std::min(top, point.y);
        bottom = std::max(bottom, point.y);
    }
};

HRESULT Outline(const DrawnRun& run, float size, BOOL toTheLeft, Sink& sink) {
    return run.face->GetGlyphRunOutline(size, run.glyphs.data(), run.advances.data(), nullptr,
                                        static_cast<UINT32>(run.glyphs.size()), FALSE, toTheLeft, &sink);
}

TEST(Outlines, LettersStandOnTheBaselineWithinTheirAdvances) {
    const DrawnRun run = Runs(L"HIH", {.size = 100}).at(0);
    Sink sink;
    ASSERT_EQ(Outline(run, 95, FALSE, sink), S_OK);
    EXPECT_EQ(sink.begun, 3);
    EXPECT_EQ(sink.closed, 3);
    EXPECT_EQ(sink.fillMode, D2D1_FILL_MODE_WINDING);
    EXPECT_NEAR(sink.bottom, 0.0F, 0.01F);
    EXPECT_NEAR(sink.top, -67.8F, 1.0F);
    EXPECT_GT(sink.left, 0.0F);
    EXPECT_LT(sink.right, run.width);
}

TEST(Outlines, ARunToTheLeftLiesLeftOfItsOrigin) {
    const DrawnRun run = Runs(L"\u05e9\u05dc\u05d5\u05dd").at(0);
    Sink sink;
    ASSERT_EQ(Outline(run, 14, TRUE, sink), S_OK);
    EXPECT_LT(sink.right, 1.0F);
    EXPECT_GT(sink.left, -run.width - 1.0F);
    EXPECT_LT(sink.left, -run.width / 2);
}

TEST(Outlines, ABlankHasNoFigure) {
    const DrawnRun run = Runs(L" ").at(0);
    Sink sink;
    EXPECT_EQ(Outline(run, 14, FALSE, sink), S_OK);
    EXPECT_EQ(sink.begun, 0);
}

TEST(Outlines, WithoutAdvancesTheFacesOwnAreTaken) {
    const DrawnRun run = Runs(L"HH").at(0);
    Sink own;
    Sink given;
    ASSERT_EQ(run.face->GetGlyphRunOutline(13.3F, run.glyphs.data(), nullptr, nullptr, 2, FALSE, FALSE, &own), S_OK);
    ASSERT_EQ(Outline(run, 13.3F, FALSE, given), S_OK);
    EXPECT_NEAR(own.right, given.right, 0.05F);
}

TEST(Outlines, NothingToWriteToIsRefused) {
    const DrawnRun run = Runs(L"H").at(0);
    EXPECT_EQ(run.face->GetGlyphRunOutline(14, run.glyphs.data(), nullptr, nullptr, 1, FALSE, FALSE, nullptr),
              E_INVALIDARG);
}

ComPtr<IDWriteFontCollection1> CollectionOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    const ComPtr<IDWriteFactory5> factory = Factory();
    ComPtr<IDWriteInMemoryFontFileLoader> loader;
    EXPECT_EQ(factory->CreateInMemoryFontFileLoader(&loader), S_OK);
    EXPECT_EQ(factory->RegisterFontFileLoader(loader.Get()), S_OK);
    ComPtr<IDWriteFontFile> font;
    EXPECT_EQ(loader->CreateInMemoryFontFileReference(factory.Get(), bytes.data(), static_cast<UINT32>(bytes.size()),
                                                      nullptr, &font),
              S_OK);
    ComPtr<IDWriteFontSetBuilder1> builder;
    EXPECT_EQ(factory->CreateFontSetBuilder(builder.GetAddressOf()), S_OK);
    EXPECT_EQ(builder->AddFontFile(font.Get()), S_OK);
    ComPtr<IDWriteFontSet> set;
    EXPECT_EQ(builder->CreateFontSet(&set), S_OK);
    ComPtr<IDWriteFontCollection1> collection;
    EXPECT_EQ(factory->CreateFontCollectionFromFontSet(set.Get(), &collection), S_OK);
    factory->UnregisterFontFileLoader(loader.Get());
    return collection;
}

TEST(PrivateFonts, AFamilyOfTheCollectionHidesTheSystemsOfThatName) {
    const ComPtr<IDWriteFontCollection1> bold = CollectionOf("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf");
    const float boldWidth = Metrics(L"minimum", {.family = L"DejaVu Sans", .weight = DWRITE_FONT_WEIGHT_BOLD}).width;
    const float regularWidth = Metrics(L"minimum", {.family = L"DejaVu Sans"}).width;
    const float width = Metrics(L"minimum", {.family = L"DejaVu Sans", .collection = bold.Get()}).width;
    EXPECT_NEAR(width, boldWidth, 0.01F);
    EXPECT_GT(width, regularWidth + 1);
}

TEST(PrivateFonts, WhatTheCollectionLacksComesFromTheSystem) {
    const ComPtr<IDWriteFontCollection1> bold = CollectionOf("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf");
    const std::vector<DrawnRun> runs = Runs(L"a\u6f22", {.family = L"DejaVu Sans", .collection = bold.Get()});
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_NE(runs[1].glyphs.at(0), 0);
}

}  // namespace
