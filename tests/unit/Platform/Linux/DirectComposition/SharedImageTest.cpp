#include "Platform/Linux/DirectComposition/SharedImage.h"

#include "Picture.h"
#include "TestDisplay.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Platform::DirectComposition {
namespace {

/// A drawable of the server's that lies on no screen, so that any size can be read back.
class Canvas {
public:
    Canvas(const TestDisplay& display, int width, int height)
        : x_(display.Client()), pixmap_(xcb_generate_id(x_)), context_(xcb_generate_id(x_)) {
        xcb_create_pixmap(x_, depth, pixmap_, display.Root(), static_cast<std::uint16_t>(width),
                          static_cast<std::uint16_t>(height));
        xcb_create_gc(x_, context_, pixmap_, 0, nullptr);
    }
    ~Canvas() {
        xcb_free_gc(x_, context_);
        xcb_free_pixmap(x_, pixmap_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void Put(SharedImage& image) const { image.Put(pixmap_, context_, depth); }
    Picture Read(int width, int height) const { return Picture::Of(x_, pixmap_, 0, 0, width, height); }

private:
    static constexpr std::uint8_t depth = 24;
    xcb_connection_t* x_;
    xcb_pixmap_t pixmap_;
    xcb_gcontext_t context_;
};

void Fill(SharedImage& image, const Picture& picture) {
    ASSERT_EQ(image.View().width, picture.width);
    ASSERT_EQ(image.View().height, picture.height);
    for (int y = 0; y < picture.height; ++y)
        std::copy_n(picture.pixels.data() + y * picture.width, picture.width, image.View().Row(y));
}

void ExpectTheSameBack(const TestDisplay& display, int width, int height) {
    SCOPED_TRACE(testing::Message() << width << " by " << height);
    const Canvas canvas(display, width, height);
    const auto image = SharedImage::Make(display.Client(), width, height);
    ASSERT_NE(image, nullptr);
    const Picture picture = Picture::Noise(width, height, 1);
    Fill(*image, picture);
    canvas.Put(*image);
    image->WaitUntilRead();
    EXPECT_EQ(canvas.Read(width, height), picture.WithoutAlpha());
}

TEST(SharedImage, APicturePutIsThePictureReadBack) {
    for (const auto& [width, height] : {std::pair{64, 48}, {1, 1}, {3, 5}, {1000, 1}, {1, 700}, {1538, 1505}})
        ExpectTheSameBack(TestDisplay::Get(), width, height);
}

TEST(SharedImage, WhatIsWrittenAfterTheServerHasReadReachesTheScreenWithTheNextPutOnly) {
    const TestDisplay& display = TestDisplay::Get();
    const Canvas canvas(display, 40, 30);
    const auto image = SharedImage::Make(display.Client(), 40, 30);
    ASSERT_NE(image, nullptr);
    const Picture first = Picture::Noise(40, 30, 1);
    const Picture second = Picture::Noise(40, 30, 2);
    Fill(*image, first);
    canvas.Put(*image);
    image->WaitUntilRead();
    Fill(*image, second);
    EXPECT_EQ(canvas.Read(40, 30), first.WithoutAlpha());
    canvas.Put(*image);
    EXPECT_EQ(canvas.Read(40, 30), second.WithoutAlpha());
}

TEST(SharedImage, AnImageCanEndRightAfterItWasPut) {
    const TestDisplay& display = TestDisplay::Get();
    const Canvas canvas(display, 300, 200);
    const Picture picture = Picture::Noise(300, 200, 3);
    auto image = SharedImage::Make(display.Client(), 300, 200);
    ASSERT_NE(image, nullptr);
    Fill(*image, picture);
    canvas.Put(*image);
    image.reset();
    EXPECT_EQ(canvas.Read(300, 200), picture.WithoutAlpha());
}

TEST(SharedImage, AServerThatSharesNoMemoryGetsThePixelsOverTheConnection) {
    const TestDisplay display("MIT-SHM");
    // The last one is larger than the longest request of 16 MiB and goes in pieces.
    for (const auto& [width, height] : {std::pair{64, 48}, {1, 1}, {2100, 2100}})
        ExpectTheSameBack(display, width, height);
}

}  // namespace
}  // namespace Platform::DirectComposition
