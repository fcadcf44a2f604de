// What an asset asks of Direct2D and WIC, in which order, and what becomes of failures.

#include "ImageTest.h"

#include "Platform/Linux/Resources/ResourceEntry.h"

#include <gtest/gtest.h>

namespace Tamborel {
namespace {

using Calls = std::vector<std::string>;

const std::vector<std::uint8_t> someBytes{7, 8, 9};

/// The calls without those that every frame makes.
Calls Without(Calls calls, const std::string& prefix) {
    std::erase_if(calls, [&](const std::string& call) { return call.starts_with(prefix); });
    return calls;
}

TEST_F(ImageAssetTest, RasterBytesAreDecodedByWicInOrder) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, false);
    EXPECT_TRUE(device.Draw(*asset, {1, 2, 31, 42}));
    EXPECT_EQ(Without(recorder.TakeCalls(), "DrawingContext.SetTransform"),
              (Calls{"ImagingFactory.CreateStream()", "ImagingStream.InitializeFromMemory(7, 3)",
                     "ImagingFactory.CreateDecoderFromStream(ImagingStream, null, 1)", "Decoder.GetFrame(0)",
                     "ImagingFactory.CreateFormatConverter()", "Converter.Initialize(Frame, 32bppPBGRA, 0, null, 0, 1)",
                     "DrawingContext.CreateBitmapFromWicBitmap(Converter)",
                     "DrawingContext.DrawBitmap(Bitmap, {1, 2, 31, 42}, 0.5, 5, null)"}));
}

TEST_F(ImageAssetTest, SecondDrawDecodesNothing) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, false);
    EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10}));
    recorder.TakeCalls();
    EXPECT_TRUE(device.Draw(*asset, {0, 0, 20, 20}));
    EXPECT_EQ(Without(recorder.TakeCalls(), "DrawingContext.SetTransform"),
              (Calls{"DrawingContext.DrawBitmap(Bitmap, {0, 0, 20, 20}, 0.5, 5, null)"}));
}

TEST_F(ImageAssetTest, SvgIsParsedWithItsRootAtOneHundredPercent) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, true);
    EXPECT_TRUE(device.Draw(*asset, {10, 20, 110, 70}, {2, 0, 0, 2, 5, 6}));
    EXPECT_EQ(
        recorder.TakeCalls(),
        (Calls{"DrawingContext.SetTransform({1, 0, 0, 1, 0, 0})", "DrawingContext.SetTransform({2, 0, 0, 2, 5, 6})",
               "SHCreateMemStream(3)", "DrawingContext.CreateSvgDocument(100, 50)", "SvgDocument.GetRoot()",
               "SvgElement.SetAttributeValue(\"width\", 12, 100, 1, 8)",
               "SvgElement.SetAttributeValue(\"height\", 12, 100, 1, 8)",
               "DrawingContext.SetTransform({2, 0, 0, 2, 25, 46})", "DrawingContext.DrawSvgDocument(SvgDocument)",
               "DrawingContext.SetTransform({2, 0, 0, 2, 5, 6})"}));
}

TEST_F(ImageAssetTest, SvgFirstDrawnAt100By50IsTheSameDocumentScaledByTwoAt200By100) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, true);
    EXPECT_TRUE(device.Draw(*asset, {0, 0, 100, 50}));
    recorder.TakeCalls();
    EXPECT_TRUE(device.Draw(*asset, {0, 0, 200, 100}));
    EXPECT_EQ(
        recorder.TakeCalls(),
        (Calls{"DrawingContext.SetTransform({1, 0, 0, 1, 0, 0})", "DrawingContext.SetTransform({2, 0, 0, 2, 0, 0})",
               "DrawingContext.DrawSvgDocument(SvgDocument)", "DrawingContext.SetTransform({1, 0, 0, 1, 0, 0})"}));
    D2D1_SIZE_F size{};
    EXPECT_TRUE(asset->GetSize(size));
    EXPECT_EQ(size.width, 100.0F);
    EXPECT_EQ(size.height, 50.0F);
}

TEST_F(ImageAssetTest, DestinationOfZeroWidthAtTheFirstDrawGivesAViewportWidthOfOne) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, true);
    EXPECT_TRUE(device.Draw(*asset, {5, 0, 5, 30}));
    EXPECT_EQ(recorder.Last("CreateSvgDocument"), "DrawingContext.CreateSvgDocument(1, 30)");
}

TEST_F(ImageAssetTest, DestinationTurnedInsideOutGivesTheSmallestViewport) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, true);
    EXPECT_TRUE(device.Draw(*asset, {5, 9, -5, 3}));
    EXPECT_EQ(recorder.Last("CreateSvgDocument"), "DrawingContext.CreateSvgDocument(1, 1)");
}

TEST_F(ImageAssetTest, SvgWithoutARootIsDrawnAsItIs) {
    ImageDevice device;
    recorder.FailAlways("GetRoot", E_FAIL);
    const auto asset = ImageAsset::FromBytes(someBytes, true);
    EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10}));
    EXPECT_EQ(recorder.Count("SetAttributeValue"), 0U);
    EXPECT_EQ(BytesLeft(*asset), 0U);
}

TEST_F(ImageAssetTest, ContextThatKnowsItsTransformIsNotDeceived) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, true);
    DrawContext context(device.Target(), &device.Brushes(), 1.0F);
    context.SetTransform({2, 0, 0, 2, 0, 0});
    EXPECT_TRUE(asset->Draw(context, {0, 0, 10, 10}));
    recorder.TakeCalls();
    context.SetTransform({2, 0, 0, 2, 0, 0});
    EXPECT_EQ(recorder.TakeCalls(), Calls{});
}

TEST_F(ImageAssetTest, GetSizeBeforeTheFirstDrawReturnsFalse) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, false);
    D2D1_SIZE_F size{9, 9};
    EXPECT_FALSE(asset->GetSize(size));
    EXPECT_EQ(size.width, 0.0F);
    EXPECT_EQ(size.height, 0.0F);
    EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10}));
    EXPECT_TRUE(asset->GetSize(size));
    EXPECT_EQ(size.width, 40.0F);
    EXPECT_EQ(size.height, 20.0F);
}

TEST_F(ImageAssetTest, EachFailedStepOfARasterEndsTheAttemptAndTheNextDrawTriesAgain) {
    for (const char* step : {"CreateStream", "InitializeFromMemory", "CreateDecoderFromStream", "GetFrame",
                             "CreateFormatConverter", "Converter.Initialize", "CreateBitmapFromWicBitmap"}) {
        ImageDevice device;
        const auto asset = ImageAsset::FromBytes(someBytes, false);
        recorder.Reset();
        recorder.FailAlways(step, E_FAIL);
        recorder.FailAlways(std::string(step).insert(0, "Converter2."), E_FAIL);
        EXPECT_FALSE(device.Draw(*asset, {0, 0, 10, 10})) << step;
        const Calls calls = recorder.TakeCalls();
        ASSERT_FALSE(calls.empty());
        EXPECT_NE(calls.back().find(std::string(step).substr(std::string(step).find('.') + 1)), std::string::npos)
            << "steps after " << step << " are skipped, but: " << calls.back();
        EXPECT_FALSE(asset->HasDeviceResources());
        EXPECT_EQ(BytesLeft(*asset), 3U) << step;
        recorder.Reset();
        EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10})) << step;
        EXPECT_TRUE(asset->HasDeviceResources());
    }
}

TEST_F(ImageAssetTest, EachFailedStepOfAnSvgEndsTheAttemptAndTheNextDrawTriesAgain) {
    for (const char* step : {"SHCreateMemStream", "CreateSvgDocument"}) {
        ImageDevice device;
        const auto asset = ImageAsset::FromBytes(someBytes, true);
        recorder.FailNext(step, E_FAIL);
        EXPECT_FALSE(device.Draw(*asset, {0, 0, 10, 10})) << step;
        EXPECT_TRUE(recorder.TakeCalls().back().find(step) != std::string::npos);
        EXPECT_EQ(BytesLeft(*asset), 3U);
        EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10})) << step;
    }
}

TEST_F(ImageAssetTest, BytesFromMemoryAreDroppedSoThatAnotherDevicePaintsNothing) {
    ImageDevice device;
    const auto asset = ImageAsset::FromBytes(someBytes, false);
    EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10}));
    EXPECT_EQ(BytesLeft(*asset), 0U);
    ImageDevice other;
    EXPECT_FALSE(other.Draw(*asset, {0, 0, 10, 10}));
    EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10}));  // The first still does.
    asset->ReleaseDeviceResources();
    EXPECT_FALSE(asset->HasDeviceResources());
    EXPECT_FALSE(device.Draw(*asset, {0, 0, 10, 10}));
}

TEST_F(ImageAssetTest, EmbeddedPictureSurvivesAChangeOfDevice) {
    PlainResource resource(someBytes);
    for (const bool isSvg : {false, true}) {
        ImageDevice device;
        ImageDevice other;
        const auto asset = ImageAsset::FromEmbedded(&resource, isSvg);
        EXPECT_FALSE(asset->State());
        EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10}));
        EXPECT_TRUE(other.Draw(*asset, {0, 0, 10, 10}));
        EXPECT_TRUE(device.Draw(*asset, {0, 0, 10, 10}));
    }
    EXPECT_EQ(resource.uses, 4);
}

TEST_F(ImageAssetTest, EmbeddedPictureIsDecipheredAtItsFirstDrawAndNoEarlier) {
    PlainResource resource(someBytes);
    const auto asset = ImageAsset::FromEmbedded(&resource, false);
    EXPECT_EQ(resource.uses, 0);
}

TEST_F(ImageAssetTest, EmbeddedPictureThatCannotBeDecipheredPaintsNothing) {
    ImageDevice device;
    PlainResource resource({});
    for (const bool isSvg : {false, true}) {
        EXPECT_FALSE(device.Draw(*ImageAsset::FromEmbedded(&resource, isSvg), {0, 0, 10, 10}));
    }
    EXPECT_FALSE(device.Draw(*ImageAsset::FromEmbedded(nullptr, false), {0, 0, 10, 10}));
    EXPECT_EQ(recorder.Count("CreateStream"), 0U);
}

TEST_F(ImageAssetTest, ContextWithoutADeviceOrATargetPaintsNothing) {
    Microsoft::WRL::ComPtr<ID2D1DeviceContext5> orphan;
    orphan.Attach(new Fakes::FakeDrawingContext(nullptr));
    BrushCache brushes;
    const auto asset = ImageAsset::FromBytes(someBytes, false);
    {
        DrawContext context(orphan.Get(), &brushes, 1.0F);
        EXPECT_FALSE(asset->Draw(context, {0, 0, 1, 1}));
        DrawContext nothing(nullptr, &brushes, 1.0F);
        EXPECT_FALSE(asset->Draw(nothing, {0, 0, 1, 1}));
    }
    EXPECT_EQ(BytesLeft(*asset), 3U);
}

TEST_F(ImageAssetTest, WithoutTheImagingFactoryRastersPaintNothing) {
    ImageDevice device;
    DeviceManager::Get().Shutdown();
    EXPECT_FALSE(device.Draw(*ImageAsset::FromBytes(someBytes, false), {0, 0, 10, 10}));
}

const Platform::ResourceEntry logo(L"IMAGE_TEST", L"SVG", someBytes.data(), someBytes.data() + 3);
const Platform::ResourceEntry empty(L"IMAGE_TEST_EMPTY", L"SVG", nullptr, nullptr);

TEST_F(ImageAssetTest, ResourceIsCopiedByNameAndType) {
    const auto asset = ImageAsset::FromResource(nullptr, L"Image_Test", L"svg", true);
    EXPECT_TRUE(IsLoaded(*asset));
    EXPECT_TRUE(asset->IsSvg());
    EXPECT_EQ(asset->State()->bytes, someBytes);
}

TEST_F(ImageAssetTest, MissingOrEmptyResourceGivesACompleteAssetThatNeverDraws) {
    ImageDevice device;
    for (const auto& [name, type] :
         {std::pair{L"IMAGE_TEST", L"PNG"}, {L"OTHER", L"SVG"}, {L"IMAGE_TEST_EMPTY", L"SVG"}}) {
        const auto asset = ImageAsset::FromResource(nullptr, name, type, true);
        EXPECT_TRUE(IsLoaded(*asset));
        EXPECT_EQ(BytesLeft(*asset), 0U);
        EXPECT_FALSE(device.Draw(*asset, {0, 0, 10, 10}));
    }
}

TEST(DeviceIdentityHash, IsFnv1aOverTheEightBytes) {
    EXPECT_EQ(DeviceIdentityHash{}(0), 0xA8C7F832281A39C5U);
    // The bytes of "chongo\0\0", low byte first: both sides of the published rule, byte by byte.
    std::uint64_t expected = 0xCBF29CE484222325U;
    for (const unsigned byte : {0x63U, 0x68U, 0x6FU, 0x6EU, 0x67U, 0x6FU, 0U, 0U}) {
        expected ^= byte;
        expected *= 0x100000001B3U;
    }
    EXPECT_EQ(DeviceIdentityHash{}(0x00006F676E6F6863U), expected);
}

}  // namespace
}  // namespace Tamborel
