// Pictures from their bytes to pixels, through the real decoders and the real drawing.

#include "Core/DeviceManager.h"
#include "Scene/ImagePrimitive.h"
#include "tests/support/Pictures.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/Platform/Linux/Direct2D/Canvas.h"

#include <objbase.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace Tamborel {
namespace {

constexpr std::string_view halves =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="1" height="1" viewBox="0 0 10 10"><rect width="5" height="10" fill="#f00"/><rect x="5" width="5" height="10" fill="#00f"/></svg>)";

class ImagePixels : public testing::Test {
protected:
    ImagePixels() {
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        EXPECT_EQ(DeviceManager::Get().Initialize(), S_OK);
    }
    ~ImagePixels() override {
        DeviceManager::Get().Shutdown();
        CoUninitialize();
    }

    void Draw(SceneNode& node) {
        node.Update(0);
        EXPECT_EQ(canvas_.Draw([&](ID2D1DeviceContext5& target) {
            DrawContext context(&target, &brushes_, 1.0F);
            node.Draw(context);
        }),
                  S_OK);
    }
    static std::shared_ptr<ImagePrimitive> Node(std::shared_ptr<ImageAsset> asset, const Rect& rect) {
        auto node = std::make_shared<ImagePrimitive>();
        node->asset = std::move(asset);
        node->rect = rect;
        return node;
    }

    Canvas canvas_{64, 64};
    BrushCache brushes_;
};

TEST_F(ImagePixels, RasterFormatsAreStretchedOverTheirRectangle) {
    for (const auto& bytes :
         {Pictures::Png(Pictures::Plain(3, 5, 0xFF00FF00)), Pictures::Webp(Pictures::Plain(3, 5, 0xFF00FF00))}) {
        Draw(*Node(ImageAsset::FromBytes(bytes, false), {8, 16, 40, 24}));
        EXPECT_EQ(canvas_.Pixel(8, 16), 0xFF00FF00);
        EXPECT_EQ(canvas_.Pixel(39, 23), 0xFF00FF00);
        EXPECT_EQ(canvas_.Pixel(7, 16), 0U);
        EXPECT_EQ(canvas_.Pixel(40, 23), 0U);
        EXPECT_EQ(canvas_.Pixel(39, 24), 0U);
    }
    Draw(*Node(ImageAsset::FromBytes(Pictures::Jpeg(Pictures::Plain(8, 8, 0xFF808080)), false), {0, 0, 64, 64}));
    EXPECT_NEAR(static_cast<int>(canvas_.Pixel(30, 30) & 0xFF), 0x80, 2);
}

TEST_F(ImagePixels, SvgFirstDrawnSmallIsSharpWhenDrawnLarge) {
    const auto node = Node(ImageAsset::FromBytes(Pictures::FromText(halves), true), {0, 0, 10, 10});
    Draw(*node);
    EXPECT_EQ(canvas_.Pixel(4, 4), 0xFFFF0000);
    EXPECT_EQ(canvas_.Pixel(5, 4), 0xFF0000FF);
    node->rect = {4, 4, 24, 34};
    node->localTransform = {1.5F, 0, 0, 1.5F, 2, 2};
    Draw(*node);
    // Twice as wide and three times as high, at one and a half: from 8 to 38 and from 8 to 53, without a soft edge.
    EXPECT_EQ(canvas_.Pixel(7, 30), 0U);
    EXPECT_EQ(canvas_.Pixel(8, 8), 0xFFFF0000);
    EXPECT_EQ(canvas_.Pixel(22, 52), 0xFFFF0000);
    EXPECT_EQ(canvas_.Pixel(23, 52), 0xFF0000FF);
    EXPECT_EQ(canvas_.Pixel(37, 8), 0xFF0000FF);
    EXPECT_EQ(canvas_.Pixel(38, 52), 0U);
    EXPECT_EQ(canvas_.Pixel(22, 53), 0U);
    D2D1_SIZE_F size{};
    EXPECT_TRUE(node->asset->GetSize(size));
    EXPECT_EQ(size.width, 10.0F);
}

TEST_F(ImagePixels, BrokenPicturesPaintNothing) {
    for (const bool isSvg : {false, true}) {
        for (const auto& bytes : {Pictures::FromText("nonsense"), Pictures::PngThatClaims(60000, 60000),
                                  Pictures::FromText("<svg"), Pictures::Bytes{}}) {
            Draw(*Node(ImageAsset::FromBytes(bytes, isSvg), {0, 0, 64, 64}));
            EXPECT_TRUE(canvas_.Record().frames.back().painted.empty());
        }
    }
    // An SVG that is told to be none, and the other way round: bytes are never sniffed.
    Draw(*Node(ImageAsset::FromBytes(Pictures::FromText(halves), false), {0, 0, 64, 64}));
    Draw(*Node(ImageAsset::FromBytes(Pictures::Png(Pictures::Plain(2, 2, 0xFFFFFFFF)), true), {0, 0, 64, 64}));
    EXPECT_TRUE(canvas_.Record().frames.back().painted.empty());
}

TEST_F(ImagePixels, FileIsReadAndDrawn) {
    const TemporaryFolder folder;
    std::ofstream(folder / "x.SVG", std::ios::binary) << halves;
    const auto asset = ImageAsset::LoadFromFile((folder / "x.SVG").wstring());
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!asset->State()->complete && std::chrono::steady_clock::now() < end) std::this_thread::yield();
    Draw(*Node(asset, {0, 0, 20, 20}));
    EXPECT_EQ(canvas_.Pixel(9, 9), 0xFFFF0000);
    EXPECT_EQ(canvas_.Pixel(10, 9), 0xFF0000FF);
}

// With VELORINTH_PICTURE set to a file name: all kinds side by side at one and a half, to look at.
TEST_F(ImagePixels, SheetToLookAt) {
    const char* const file = std::getenv("VELORINTH_PICTURE");
    if (!file) GTEST_SKIP() << "VELORINTH_PICTURE names no file";
    Canvas sheet(480, 200);
    auto root = std::make_shared<SceneNode>();
    root->localTransform = {1.5F, 0, 0, 1.5F, 0, 0};
    const auto gradient = Pictures::Gradient(16, 16);
    root->AddChild(Node(ImageAsset::FromBytes(Pictures::Png(gradient), false), {10, 10, 60, 60}));
    root->AddChild(Node(ImageAsset::FromBytes(Pictures::Jpeg(gradient), false), {70, 10, 120, 60}));
    auto faint = Node(ImageAsset::FromBytes(Pictures::Webp(gradient), false), {130, 10, 180, 60});
    faint->opacity = 0.5F;
    faint->interpolationMode = D2D1_INTERPOLATION_MODE_NEAREST_NEIGHBOR;
    root->AddChild(faint);
    float x = 10;
    for (const char* icon : {"close", "maximize", "minimize", "app", "menu", "help"}) {
        const std::string path = std::string(VELORINTH_ASSETS) + "/icons/" + icon + ".svg";
        std::ifstream stream(path, std::ios::binary);
        Pictures::Bytes bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        root->AddChild(Node(ImageAsset::FromBytes(std::move(bytes), true), {x, 90, x + 16, 106}));
        x += 24;
    }
    std::ifstream stream(std::string(VELORINTH_ASSETS) + "/logo/velorinth.svg", std::ios::binary);
    Pictures::Bytes logo{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    root->AddChild(Node(ImageAsset::FromBytes(std::move(logo), true), {190, 10, 310, 120}));
    root->Update(0);
    BrushCache brushes;
    EXPECT_EQ(sheet.Draw([&](ID2D1DeviceContext5& target) {
        DrawContext context(&target, &brushes, 1.0F);
        context.FillRect({0, 0, 480, 200}, Color{0.16F, 0.16F, 0.18F, 1});
        root->Draw(context);
    }),
              S_OK);
    const Pictures::Bytes png = Pictures::Png({480, 200, sheet.Record().frames.back().pixels});
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(png.data()), static_cast<long>(png.size()));
}

}  // namespace
}  // namespace Tamborel
