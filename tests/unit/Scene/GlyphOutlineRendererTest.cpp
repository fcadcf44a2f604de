#include "Scene/GlyphOutlineRenderer.h"

#include "tests/unit/Scene/TextTest.h"

using namespace Tamborel;

namespace {

using Microsoft::WRL::ComPtr;

class GlyphOutline : public TextTest {
protected:
    void SetUp() override {
        TextTest::SetUp();
        drawing = DeviceManager::Get().GetD2DFactory();
        IDWriteFactory* const factory = DeviceManager::Get().GetDWriteFactory();
        factory->CreateTextFormat(L"Any", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
                                  DWRITE_FONT_STRETCH_NORMAL, 20, L"", format.GetAddressOf());
        factory->CreateTextLayout(L"text", 4, format.Get(), 100, 50, layout.GetAddressOf());
        recorder.TakeCalls();
    }

    void TearDown() override {
        layout.Reset();
        format.Reset();
        TextTest::TearDown();
    }

    ComPtr<ID2D1Geometry> Build() { return GlyphOutlineBuilder(layout.Get(), drawing, 7, 9); }

    ID2D1Factory* drawing = nullptr;
    ComPtr<IDWriteTextFormat> format;
    ComPtr<IDWriteTextLayout> layout;
};

/// A renderer of its own, which tests let go of.
ComPtr<GlyphOutlineRenderer> MakeRenderer(ID2D1Factory* factory) {
    ComPtr<GlyphOutlineRenderer> renderer;
    renderer.Attach(new GlyphOutlineRenderer(factory));
    return renderer;
}

}  // namespace

TEST_F(GlyphOutline, EachRunBecomesAPathThatIsMovedToItsBaseline) {
    Fakes::SetTextRuns({{.glyphs = {4, 5}, .x = 1, .y = 10}, {.glyphs = {6}, .x = 17, .y = 30}});
    const ComPtr<ID2D1Geometry> outline = Build();
    EXPECT_EQ(recorder.NameOf(outline.Get()), "Group");
    EXPECT_EQ(
        recorder.TakeCalls(),
        (Lines{"TextLayout.Draw(7, 9)", "DrawingFactory.CreatePathGeometry()", "Path.Open()",
               "FontFace.GetGlyphRunOutline(20, [4 5], 0, 0)", "Sink.Close()",
               "DrawingFactory.CreateTransformedGeometry(Path, {1, 0, 0, 1, 8, 19})",
               "DrawingFactory.CreatePathGeometry()", "Path2.Open()", "FontFace.GetGlyphRunOutline(20, [6], 0, 0)",
               "Sink2.Close()", "DrawingFactory.CreateTransformedGeometry(Path2, {1, 0, 0, 1, 24, 39})",
               "DrawingFactory.CreateGeometryGroup(1, [Moved Moved2])"}));
}

TEST_F(GlyphOutline, ALayoutThatYieldsNoGlyphRunGivesANullResult) {
    Fakes::SetTextRuns({});
    EXPECT_EQ(Build().Get(), nullptr);
    EXPECT_EQ(recorder.Count("CreateGeometryGroup"), 0U);
}

TEST_F(GlyphOutline, NoRunIsS_FALSE) {
    const auto renderer = MakeRenderer(drawing);
    ComPtr<ID2D1Geometry> outline;
    EXPECT_EQ(renderer->TakeOutline(outline.GetAddressOf()), S_FALSE);
    EXPECT_EQ(outline.Get(), nullptr);
}

TEST_F(GlyphOutline, RightToLeftRunsAreConvertedWithTheRunsOwnDirection) {
    Fakes::SetTextRuns({{.glyphs = {1}, .bidiLevel = 0},
                        {.glyphs = {2}, .bidiLevel = 1},
                        {.glyphs = {3}, .bidiLevel = 2},
                        {.glyphs = {4}, .bidiLevel = 3, .isSideways = TRUE}});
    Build();
    Lines outlines;
    for (const std::string& line : recorder.TakeCalls()) {
        if (line.find("GetGlyphRunOutline") != std::string::npos) outlines.push_back(line);
    }
    EXPECT_EQ(outlines,
              (Lines{"FontFace.GetGlyphRunOutline(20, [1], 0, 0)", "FontFace.GetGlyphRunOutline(20, [2], 0, 1)",
                     "FontFace.GetGlyphRunOutline(20, [3], 0, 0)", "FontFace.GetGlyphRunOutline(20, [4], 1, 1)"}));
}

TEST_F(GlyphOutline, ALayoutWithUnderlineSetHasNoUnderlineInTheOutline) {
    Fakes::SetTextRuns({{.underlined = true}});
    const ComPtr<ID2D1Geometry> outline = Build();
    EXPECT_NE(outline.Get(), nullptr);
    EXPECT_EQ(recorder.Last("CreateGeometryGroup"), "DrawingFactory.CreateGeometryGroup(1, [Moved])");
}

TEST_F(GlyphOutline, NullArgumentsGiveANullResult) {
    EXPECT_EQ(GlyphOutlineBuilder(nullptr, drawing, 0, 0).Get(), nullptr);
    EXPECT_EQ(GlyphOutlineBuilder(layout.Get(), nullptr, 0, 0).Get(), nullptr);
    EXPECT_EQ(recorder.TakeCalls(), Lines{});
}

TEST_F(GlyphOutline, ALayoutThatFailsToDrawGivesANullResult) {
    recorder.FailNext("TextLayout.Draw", E_FAIL);
    EXPECT_EQ(Build().Get(), nullptr);
}

TEST_F(GlyphOutline, AGroupThatCannotBeMadeGivesANullResult) {
    recorder.FailNext("CreateGeometryGroup", E_OUTOFMEMORY);
    EXPECT_EQ(Build().Get(), nullptr);
}

// Each of the steps of one run, failed in turn: the other run stands.
TEST_F(GlyphOutline, ARunThatFailsIsDroppedAndTheLayoutGoesOn) {
    Fakes::SetTextRuns({{.glyphs = {4}}, {.glyphs = {5}}});
    for (const char* step : {"CreatePathGeometry", "Open", "GetGlyphRunOutline", "CreateTransformedGeometry"}) {
        recorder.Reset();
        recorder.FailNext(step, E_FAIL);
        const ComPtr<ID2D1Geometry> outline = Build();
        EXPECT_NE(outline.Get(), nullptr) << step;
        EXPECT_EQ(recorder.Last("CreateGeometryGroup"), "DrawingFactory.CreateGeometryGroup(1, [Moved])") << step;
    }
}

TEST_F(GlyphOutline, TheSinkIsClosedWhateverTheOutlineGave) {
    recorder.FailNext("GetGlyphRunOutline", E_FAIL);
    EXPECT_EQ(Build().Get(), nullptr);
    EXPECT_EQ(recorder.Count("Sink.Close"), 1U);
    EXPECT_EQ(recorder.Count("CreateTransformedGeometry"), 0U);
}

TEST_F(GlyphOutline, ARunWhoseSinkFailsToCloseIsKept) {
    recorder.FailNext("Sink.Close", E_FAIL);
    const ComPtr<ID2D1Geometry> outline = Build();
    EXPECT_NE(outline.Get(), nullptr);
}

TEST_F(GlyphOutline, TheRendererTellsOfUnsnappedGlyphsAtTrueSize) {
    const auto renderer = MakeRenderer(drawing);
    BOOL disabled = FALSE;
    EXPECT_EQ(renderer->IsPixelSnappingDisabled(nullptr, &disabled), S_OK);
    EXPECT_EQ(disabled, TRUE);
    DWRITE_MATRIX m{};
    EXPECT_EQ(renderer->GetCurrentTransform(nullptr, &m), S_OK);
    EXPECT_EQ((std::vector<float>{m.m11, m.m12, m.m21, m.m22, m.dx, m.dy}), (std::vector<float>{1, 0, 0, 1, 0, 0}));
    FLOAT pixels = 0;
    EXPECT_EQ(renderer->GetPixelsPerDip(nullptr, &pixels), S_OK);
    EXPECT_EQ(pixels, 1.0F);
}

TEST_F(GlyphOutline, TheRendererIsFoundByItsThreeInterfaces) {
    const auto renderer = MakeRenderer(drawing);
    for (const IID& iid : {__uuidof(IUnknown), __uuidof(IDWritePixelSnapping), __uuidof(IDWriteTextRenderer)}) {
        void* found = nullptr;
        EXPECT_EQ(renderer->QueryInterface(iid, &found), S_OK);
        EXPECT_EQ(found, static_cast<IDWriteTextRenderer*>(renderer.Get()));
        EXPECT_EQ(renderer->Release(), 1U) << "the reference that came with it";
    }
    void* found = drawing;
    EXPECT_EQ(renderer->QueryInterface(__uuidof(IDWriteTextLayout), &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
}

TEST_F(GlyphOutline, TheCountStartsAtOneAndEndsTheObject) {
    auto* const renderer = new GlyphOutlineRenderer(drawing);
    EXPECT_EQ(renderer->AddRef(), 2U);
    EXPECT_EQ(renderer->Release(), 1U);
    const UINT16 glyph = 1;
    Fakes::FakeFontFace* const face = new Fakes::FakeFontFace;
    DWRITE_GLYPH_RUN run{};
    run.fontFace = face;
    run.glyphCount = 1;
    run.glyphIndices = &glyph;
    EXPECT_EQ(renderer->DrawGlyphRun(nullptr, 0, 0, DWRITE_MEASURING_MODE_NATURAL, &run, nullptr, nullptr), S_OK);
    face->Release();
    EXPECT_EQ(renderer->Release(), 0U);  // and with it the run's path: the test's end checks that none is left
}
