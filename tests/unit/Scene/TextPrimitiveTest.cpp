#include "Scene/TextPrimitive.h"

#include "tests/unit/Scene/TestNodes.h"
#include "tests/unit/Scene/TextTest.h"

#include <memory>

using namespace Tamborel;

namespace {

/// Counts the visits of Prepare.
class CountingNode : public SceneNode {
public:
    int prepared = 0;
    void Prepare(DrawContext& context) override {
        ++prepared;
        SceneNode::Prepare(context);
    }
};

class Text : public TextTest {
protected:
    Text() {
        node->text = L"Play";
        node->bounds = {10, 20, 110, 60};
        node->color = {0, 1, 0, 1};
    }

    void TearDown() override {
        node.reset();
        TextTest::TearDown();
    }

    Lines Prepare() {
        return CallsOf([this] { node->Prepare(*context); });
    }

    /// Without what making brushes records.
    Lines Draw() {
        Lines calls = CallsOf([this] { node->Draw(*context); });
        std::erase_if(calls, [](const std::string& line) { return line.find("CreateSolid") != std::string::npos; });
        return calls;
    }

    std::shared_ptr<TextPrimitive> node = std::make_shared<TextPrimitive>();
};

}  // namespace

TEST(TextPrimitive, ANewOneHasTheDefaults) {
    const TextPrimitive node;
    EXPECT_EQ(node.text, L"");
    EXPECT_EQ(node.bounds, Rect{});
    EXPECT_EQ(node.color, (Color{1, 1, 1, 1}));
    EXPECT_EQ(node.fontFamily, L"Segoe UI Variable");
    EXPECT_EQ(node.fontSize, 14.0F);
    EXPECT_EQ(node.fontWeight, 400U);
    EXPECT_EQ(node.textAlignment, 0U);
    EXPECT_EQ(node.paragraphAlignment, 2U);
    EXPECT_EQ(node.wordWrapping, 0U);
    EXPECT_EQ(node.outlineColor, (Color{0, 0, 0, 1}));
    EXPECT_EQ(node.outlineWidth, 0.0F);
    EXPECT_FALSE(node.clipToBounds);
    EXPECT_EQ(node.layout.Get(), nullptr);
    EXPECT_EQ(node.outline.Get(), nullptr);
    EXPECT_TRUE(node.layoutDirty);
}

TEST(TextPrimitive, APointOnTheRightEdgeOfBoundsIsOutside) {
    TextPrimitive node;
    node.bounds = {10, 20, 110, 60};
    EXPECT_FALSE(node.HitTest({110, 30}));
    EXPECT_FALSE(node.HitTest({50, 60}));
    EXPECT_TRUE(node.HitTest({10, 20}));
    EXPECT_TRUE(node.HitTest({109.9F, 59.9F}));
    EXPECT_FALSE(node.HitTest({9.9F, 30}));
}

TEST_F(Text, PrepareMakesFormatLayoutAndOutline) {
    node->fontFamily = L"Family";
    node->fontSize = 18.5F;
    node->fontWeight = 600;
    node->textAlignment = 1;
    node->paragraphAlignment = 0;
    node->wordWrapping = 3;
    const Lines calls = Prepare();
    ASSERT_GE(calls.size(), 6U);
    EXPECT_EQ(
        Lines(calls.begin(), calls.begin() + 6),
        (Lines{"TextFactory.CreateTextFormat(\"Family\", null, 600, 0, 5, 18.5, \"\")",
               "TextFormat.SetTextAlignment(1)", "TextFormat.SetParagraphAlignment(0)", "TextFormat.SetWordWrapping(3)",
               "TextFactory.CreateTextLayout(\"Play\", TextFormat, 100, 40)", "TextLayout.Draw(10, 20)"}));
    EXPECT_EQ(recorder.NameOf(node->layout.Get()), "TextLayout");
    EXPECT_EQ(recorder.NameOf(node->outline.Get()), "Group") << "also with an outline width of 0";
    EXPECT_FALSE(node->layoutDirty);
}

TEST_F(Text, ALayoutIsMadeOnceAndDrawnInEveryFrame) {
    Prepare();
    for (int frame = 0; frame < 3; ++frame) {
        EXPECT_EQ(Prepare(), Lines{});
        EXPECT_EQ(Draw(), (Lines{"DrawingContext.DrawTextLayout({10, 20}, TextLayout, Brush, 0)"}));
    }
}

TEST_F(Text, WithoutPrepareNothingIsPainted) {
    EXPECT_EQ(Draw(), Lines{});
}

TEST_F(Text, EmptyTextWithLayoutDirtySetClearsTheOldLayoutAndPaintsNothing) {
    Prepare();
    node->text.clear();
    EXPECT_EQ(Draw().size(), 1U) << "until the flag is set";
    node->layoutDirty = true;
    EXPECT_EQ(Prepare(), Lines{});
    EXPECT_EQ(node->layout.Get(), nullptr);
    EXPECT_EQ(node->outline.Get(), nullptr);
    EXPECT_FALSE(node->layoutDirty);
    EXPECT_EQ(Draw(), Lines{});
}

TEST_F(Text, BoundsWithRightBeforeLeftGiveALayoutOfMaximumWidth0) {
    node->bounds = {110, 60, 10, 20};
    Prepare();
    ASSERT_NE(node->layout.Get(), nullptr);
    EXPECT_EQ(node->layout->GetMaxWidth(), 0.0F);
    EXPECT_EQ(node->layout->GetMaxHeight(), 0.0F);
}

TEST_F(Text, ChangingColorAloneChangesTheNextFrameWithoutARebuild) {
    Prepare();
    Draw();
    node->color = {1, 0, 0, 1};
    EXPECT_EQ(Prepare(), Lines{});
    EXPECT_EQ(CallsOf([this] { node->Draw(*context); }),
              (Lines{"DrawingContext.CreateSolidColorBrush({1, 0, 0, 1})",
                     "DrawingContext.DrawTextLayout({10, 20}, TextLayout, Brush2, 0)"}));
}

TEST_F(Text, ChangingOutlineWidthFrom0To2ShowsTheStrokeAtOnceWithNoRebuild) {
    Prepare();
    Draw();
    node->outlineWidth = 2;
    EXPECT_EQ(Prepare(), Lines{});
    EXPECT_EQ(Draw(), (Lines{"DrawingContext.DrawGeometry(Group, Brush2, 2)",
                             "DrawingContext.DrawTextLayout({10, 20}, TextLayout, Brush, 0)"}))
        << "the stroke first, so that the fill covers its inner half";
}

TEST_F(Text, AHiddenNodeKeepsItsFlagUntilItIsShown) {
    const auto root = std::make_shared<SceneNode>();
    root->AddChild(node);
    node->visible = false;
    EXPECT_EQ(CallsOf([&] { root->Prepare(*context); }), Lines{});
    EXPECT_TRUE(node->layoutDirty);
    node->visible = true;
    root->Prepare(*context);
    EXPECT_FALSE(node->layoutDirty);
    EXPECT_NE(node->layout.Get(), nullptr);
}

TEST_F(Text, WithClipToBoundsGlyphsAreCutAtBoundsAliased) {
    node->clipToBounds = true;
    node->outlineWidth = 1;
    Prepare();
    EXPECT_EQ(Draw(), (Lines{"DrawingContext.PushAxisAlignedClip({10, 20, 110, 60}, 1)",
                             "DrawingContext.DrawGeometry(Group, Brush, 1)",
                             "DrawingContext.DrawTextLayout({10, 20}, TextLayout, Brush2, 0)",
                             "DrawingContext.PopAxisAlignedClip()"}));
}

TEST_F(Text, WithoutALayoutThereIsNoClipAtBounds) {
    node->clipToBounds = true;
    node->text.clear();
    Prepare();
    EXPECT_EQ(Draw(), Lines{});
}

TEST_F(Text, ChildrenPaintAboveTheTextOutsideItsBoundsClip) {
    const auto child = std::make_shared<TextPrimitive>();
    child->text = L"Child";
    node->AddChild(child);
    node->clipToBounds = true;
    node->clipEnabled = true;
    node->clipRect = {0, 0, 50, 50};
    node->localTransform = Translation(3, 4);
    node->Update(0);
    Prepare();
    EXPECT_EQ(
        Draw(),
        (Lines{
            "DrawingContext.SetTransform({1, 0, 0, 1, 3, 4})", "DrawingContext.PushAxisAlignedClip({0, 0, 50, 50}, 1)",
            "DrawingContext.PushAxisAlignedClip({10, 20, 110, 60}, 1)",
            "DrawingContext.DrawTextLayout({10, 20}, TextLayout, Brush, 0)", "DrawingContext.PopAxisAlignedClip()",
            "DrawingContext.DrawTextLayout({0, 0}, TextLayout2, Brush2, 0)", "DrawingContext.PopAxisAlignedClip()"}));
}

TEST_F(Text, AFailedFormatIsNotTriedAgainUntilTheFlagIsSet) {
    recorder.FailNext("CreateTextFormat", E_FAIL);
    const auto child = std::make_shared<CountingNode>();
    node->AddChild(child);
    Prepare();
    EXPECT_EQ(node->layout.Get(), nullptr);
    EXPECT_FALSE(node->layoutDirty);
    EXPECT_EQ(child->prepared, 0) << "the children miss this one frame";
    EXPECT_EQ(Prepare(), Lines{});
    EXPECT_EQ(child->prepared, 1);
    EXPECT_EQ(Draw(), Lines{});
    node->layoutDirty = true;
    Prepare();
    EXPECT_NE(node->layout.Get(), nullptr);
}

TEST_F(Text, AFailedFormatLeavesNothingOfTheOldLayout) {
    Prepare();
    node->layoutDirty = true;
    recorder.FailNext("CreateTextFormat", E_FAIL);
    Prepare();
    EXPECT_EQ(node->layout.Get(), nullptr);
    EXPECT_EQ(node->outline.Get(), nullptr);
}

TEST_F(Text, AFailedLayoutPaintsNothingAndItsChildrenArePrepared) {
    recorder.FailNext("CreateTextLayout", E_OUTOFMEMORY);
    const auto child = std::make_shared<CountingNode>();
    node->AddChild(child);
    Prepare();
    EXPECT_EQ(child->prepared, 1);
    EXPECT_EQ(recorder.Count("TextLayout.Draw"), 0U);
    EXPECT_EQ(Draw(), Lines{});
    EXPECT_EQ(Prepare(), Lines{});
}

TEST_F(Text, AlignmentsThatAreRefusedAreNoFailure) {
    for (const char* setter : {"SetTextAlignment", "SetParagraphAlignment", "SetWordWrapping"}) {
        recorder.FailNext(setter, E_INVALIDARG);
    }
    node->textAlignment = 99;
    Prepare();
    EXPECT_NE(node->layout.Get(), nullptr);
}

TEST_F(Text, AFailedOutlineLeavesTheTextWithoutStroke) {
    recorder.FailNext("CreateGeometryGroup", E_FAIL);
    node->outlineWidth = 2;
    Prepare();
    EXPECT_EQ(Draw(), (Lines{"DrawingContext.DrawTextLayout({10, 20}, TextLayout, Brush, 0)"}));
}

TEST_F(Text, WithoutBrushesNothingIsPainted) {
    recorder.FailAlways("CreateSolidColorBrush", E_FAIL);
    node->outlineWidth = 2;
    Prepare();
    EXPECT_EQ(Draw(), Lines{});
}

TEST_F(Text, ChangingBoundsWithoutTheFlagLeavesTheOutlineAtTheOldPlace) {
    Prepare();
    const auto before = node->outline;
    node->bounds = {0, 0, 20, 20};
    EXPECT_EQ(Prepare(), Lines{});
    EXPECT_EQ(node->outline.Get(), before.Get());
    EXPECT_EQ(node->layout->GetMaxWidth(), 100.0F);
}

TEST_F(Text, WithoutDevicesNothingIsMade) {
    DeviceManager::Get().Shutdown();
    Prepare();
    EXPECT_EQ(node->layout.Get(), nullptr);
    EXPECT_EQ(Draw(), Lines{});
    ASSERT_EQ(DeviceManager::Get().Initialize(), S_OK);
}
