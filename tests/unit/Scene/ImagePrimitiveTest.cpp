// The node around an asset.

#include "ImageTest.h"
#include "TestNodes.h"

#include "Scene/ImagePrimitive.h"

#include <gtest/gtest.h>

#include <optional>

namespace Tamborel {
namespace {

using Calls = std::vector<std::string>;

/// A child that shows that it was drawn.
class Mark : public SceneNode {
public:
    void Draw(DrawContext& context) override {
        context.SetTransform(worldTransform);
        context.FillRect({0, 0, 1, 1}, Color{1, 1, 1, 1});
    }
};

class ImagePrimitiveTest : public ImageAssetTest {
protected:
    Calls Draw(ImagePrimitive& node) {
        node.Update(0);
        DrawContext context(device_->Target(), &device_->Brushes(), 1.0F);
        recorder.TakeCalls();
        node.Draw(context);
        return recorder.TakeCalls();
    }

    void TearDown() override {
        device_.reset();
        ImageAssetTest::TearDown();
    }

    std::optional<ImageDevice> device_{std::in_place};
};

TEST_F(ImagePrimitiveTest, DefaultsAreOpaqueLinearAndEmpty) {
    const ImagePrimitive node;
    EXPECT_FALSE(node.asset);
    EXPECT_EQ(node.rect, Rect{});
    EXPECT_EQ(node.opacity, 1.0F);
    EXPECT_EQ(node.interpolationMode, static_cast<std::uint32_t>(D2D1_INTERPOLATION_MODE_LINEAR));
}

TEST_F(ImagePrimitiveTest, HitIncludesLeftAndTopAndExcludesRightAndBottom) {
    ImagePrimitive node;
    node.rect = {10, 20, 30, 40};
    EXPECT_TRUE(node.HitTest({10, 20}));
    EXPECT_TRUE(node.HitTest({29.9F, 39.9F}));
    EXPECT_FALSE(node.HitTest({30, 30}));
    EXPECT_FALSE(node.HitTest({20, 40}));
    EXPECT_FALSE(node.HitTest({9.9F, 30}));
    EXPECT_FALSE(node.HitTest({20, 19.9F}));
    node.rect = {};
    EXPECT_FALSE(node.HitTest({0, 0}));
}

TEST_F(ImagePrimitiveTest, DrawsTheAssetInItsTransformAndClipAndThenItsChildren) {
    auto node = std::make_shared<ImagePrimitive>();
    node->asset = ImageAsset::FromBytes({1}, false);
    node->rect = {1, 2, 3, 4};
    node->opacity = 0.25F;
    node->interpolationMode = D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR;
    node->localTransform = Translation(5, 6);
    node->clipEnabled = true;
    node->clipRect = {0, 0, 2, 2};
    node->AddChild(std::make_shared<Mark>());
    Draw(*node);  // Decodes.
    EXPECT_EQ(
        Draw(*node),
        (Calls{"DrawingContext.SetTransform({1, 0, 0, 1, 5, 6})", "DrawingContext.PushAxisAlignedClip({0, 0, 2, 2}, 1)",
               "DrawingContext.DrawBitmap(Bitmap, {1, 2, 3, 4}, 0.25, 0, null)",
               "DrawingContext.FillRectangle({0, 0, 1, 1}, Brush)", "DrawingContext.PopAxisAlignedClip()"}));
}

TEST_F(ImagePrimitiveTest, AssetStillLoadingPaintsNothingAndChildrenStillPaint) {
    auto node = std::make_shared<ImagePrimitive>();
    node->asset = ImageAsset::FromBytes({1}, false);
    node->asset->State()->complete = false;
    node->rect = {0, 0, 9, 9};
    node->AddChild(std::make_shared<Mark>());
    Draw(*node);
    EXPECT_EQ(Draw(*node), (Calls{"DrawingContext.FillRectangle({0, 0, 1, 1}, Brush)"}));
    EXPECT_EQ(recorder.Count("CreateStream"), 0U);
    node->asset->State()->complete = true;
    const Calls calls = Draw(*node);
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls[calls.size() - 2], "DrawingContext.DrawBitmap(Bitmap, {0, 0, 9, 9}, 1, 1, null)");
}

TEST_F(ImagePrimitiveTest, WithoutAnAssetChildrenStillPaint) {
    auto node = std::make_shared<ImagePrimitive>();
    node->AddChild(std::make_shared<Mark>());
    Draw(*node);
    EXPECT_EQ(Draw(*node), (Calls{"DrawingContext.FillRectangle({0, 0, 1, 1}, Brush)"}));
}

TEST_F(ImagePrimitiveTest, TwoNodesShareWhatIsDecoded) {
    ImagePrimitive first;
    ImagePrimitive second;
    first.asset = second.asset = ImageAsset::FromBytes({1}, false);
    Draw(first);
    EXPECT_EQ(Draw(second), (Calls{"DrawingContext.DrawBitmap(Bitmap, {0, 0, 0, 0}, 1, 1, null)"}));
}

}  // namespace
}  // namespace Tamborel
