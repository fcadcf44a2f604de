#include "PresenterFixture.h"

namespace {

constexpr std::uint32_t black = 0;

TEST_F(PresenterTest, WhatIsShownIsReadBackPixelForPixel) {
    MakeWindow();
    const Picture picture = Picture::Noise(windowWidth, windowHeight, 1);
    EXPECT_EQ(Show({{Opaque(picture)}}), S_OK);
    EXPECT_EQ(Shown(), picture.WithoutAlpha());
}

TEST_F(PresenterTest, TheFrameLiesOverTheClientAtTheClientsOffset) {
    MakeWindow();
    const Picture client = Picture::Noise(windowWidth - 2, windowHeight - 2, 1);
    const Picture frame = Picture::TranslucentNoise(windowWidth, windowHeight, 2);
    EXPECT_EQ(Show({{Opaque(client), 1, 1}, {Translucent(frame)}}), S_OK);
    Picture expected(windowWidth, windowHeight, black);
    expected.Put(client, 1, 1);
    expected.Lay(frame, 0, 0);
    EXPECT_EQ(Shown(), expected.WithoutAlpha());
}

TEST_F(PresenterTest, ATranslucentLayerAloneLiesOnBlack) {
    MakeWindow();
    const Picture frame = Picture::TranslucentNoise(windowWidth, windowHeight, 3);
    EXPECT_EQ(Show({{Translucent(frame)}}), S_OK);
    Picture expected(windowWidth, windowHeight, black);
    expected.Lay(frame, 0, 0);
    EXPECT_EQ(Shown(), expected.WithoutAlpha());
}

TEST_F(PresenterTest, WithoutAnyLayerTheWindowIsBlack) {
    MakeWindow();
    ASSERT_EQ(Show({{Opaque(Picture::Noise(windowWidth, windowHeight, 1))}}), S_OK);
    EXPECT_EQ(Show({}), S_OK);
    EXPECT_EQ(Shown(), Picture(windowWidth, windowHeight, black));
}

TEST_F(PresenterTest, WhereNoLayerHasPixelsTheWindowIsBlack) {
    MakeWindow();
    ASSERT_EQ(Show({{Opaque(Picture(windowWidth, windowHeight, 0xFFFFFFFF))}}), S_OK);
    const Picture small = Picture::Noise(100, 80, 4);
    EXPECT_EQ(Show({{Opaque(small), 50, 40}}), S_OK);
    Picture expected(windowWidth, windowHeight, black);
    expected.Put(small, 50, 40);
    EXPECT_EQ(Shown(), expected.WithoutAlpha());
}

TEST_F(PresenterTest, WhatLiesOutsideTheWindowIsCutOff) {
    MakeWindow();
    const Picture large = Picture::Noise(windowWidth + 30, windowHeight + 20, 5);
    EXPECT_EQ(Show({{Opaque(large), -13, -7}}), S_OK);
    Picture expected(windowWidth, windowHeight, black);
    expected.Put(large, -13, -7);
    EXPECT_EQ(Shown(), expected.WithoutAlpha());
}

TEST_F(PresenterTest, ATransformedLayerIsPaintedThroughItsTransform) {
    MakeWindow();
    const Content content = Opaque(Picture(100, 50, 0xFF3366CC));
    const D2D_MATRIX_3X2_F doubled{{{2, 0, 0, 2, 20, 10}}};
    EXPECT_EQ(presenter_->Show({{content.Get(), doubled}}), S_OK);
    // Away from the edges, which are filtered.
    EXPECT_EQ(ShownPart(22, 12, 196, 96), Picture(196, 96, 0x003366CC));
    EXPECT_EQ(ShownPart(0, 0, 18, 100), Picture(18, 100, black));
    EXPECT_EQ(ShownPart(222, 0, 100, 100), Picture(100, 100, black));
}

TEST_F(PresenterTest, ALayerThatStandsStillIsNotReadAgain) {
    MakeWindow();
    const Picture client(windowWidth, windowHeight, 0xFF101010);
    const Picture frame = Picture::TranslucentNoise(windowWidth, windowHeight, 6);
    const Content clientContent = Opaque(client);
    const Content frameContent = Translucent(frame);
    ASSERT_EQ(Show({{clientContent}, {frameContent}}), S_OK);
    frameContent->SetSilently(Picture(windowWidth, windowHeight, 0xFFFF0000));
    EXPECT_EQ(Show({{clientContent}, {frameContent}}), S_OK);
    Picture expected = client;
    expected.Lay(frame, 0, 0);
    EXPECT_EQ(Shown(), expected.WithoutAlpha());
}

TEST_F(PresenterTest, APartThatWasCoveredIsPutAgain) {
    MakeWindow();
    const Picture picture = Picture::Noise(windowWidth, windowHeight, 7);
    ASSERT_EQ(Show({{Opaque(picture)}}), S_OK);
    Cover cover(display_, 150, 100, 120, 90);
    ASSERT_NE(Shown(), picture.WithoutAlpha());
    cover.Remove();
    EXPECT_TRUE(PumpUntil([&] { return Shown() == picture.WithoutAlpha(); }));
}

TEST_F(PresenterTest, APictureFromBeforeTheWindowWasShownComesWithTheWindow) {
    ASSERT_NE(CreateHidden(), nullptr);
    MakePresenter();
    const Picture picture = Picture::Noise(windowWidth, windowHeight, 8);
    EXPECT_EQ(Show({{Opaque(picture)}}), S_OK);
    ShowWindow(window_, SW_SHOWNORMAL);
    EXPECT_TRUE(PumpUntil([&] { return Shown() == picture.WithoutAlpha(); }));
}

TEST_F(PresenterTest, AfterAResizeThePictureHasTheNewSize) {
    MakeWindow();
    ASSERT_EQ(Show({{Opaque(Picture::Noise(windowWidth, windowHeight, 1))}}), S_OK);
    for (const SIZE size : {SIZE{520, 350}, SIZE{230, 160}, SIZE{521, 351}}) {
        display_.ConfigureWindow(XWindow(), 100, 50, static_cast<int>(size.cx), static_cast<int>(size.cy));
        ASSERT_TRUE(PumpUntil([&] {
            const SIZE now = Platform::NativeWindowSize(window_);
            return now.cx == size.cx && now.cy == size.cy;
        }));
        const Picture picture = Picture::Noise(static_cast<int>(size.cx), static_cast<int>(size.cy), 9);
        EXPECT_EQ(Show({{Opaque(picture)}}), S_OK);
        EXPECT_EQ(ShownPart(0, 0, picture.width, picture.height), picture.WithoutAlpha());
    }
}

TEST_F(PresenterTest, APictureOfAFormerSizeKeepsItsPlaceInALargerWindow) {
    MakeWindow();
    const Picture picture = Picture::Noise(windowWidth, windowHeight, 1);
    const Content content = Opaque(picture);
    ASSERT_EQ(Show({{content}}), S_OK);
    display_.ConfigureWindow(XWindow(), 100, 50, 500, 360);
    ASSERT_TRUE(PumpUntil([&] { return Platform::NativeWindowSize(window_).cx == 500; }));
    EXPECT_EQ(Show({{content}}), S_OK);
    EXPECT_EQ(Shown(), picture.WithoutAlpha());
}

TEST_F(PresenterTest, OfTwoPicturesOfFormerSizesTheSmallerDoesNotComeToLieWithinTheLarger) {
    MakeWindow();
    const Content content = Opaque(Picture::Noise(windowWidth, windowHeight, 1));
    ASSERT_EQ(Show({{content}}), S_OK);
    display_.ConfigureWindow(XWindow(), 100, 50, 500, 360);
    ASSERT_TRUE(PumpUntil([&] { return Platform::NativeWindowSize(window_).cx == 500; }));
    const Picture larger = Picture::Noise(450, 340, 2);
    content->Set(larger);
    EXPECT_EQ(Show({{content}}), S_OK);
    EXPECT_EQ(ShownPart(0, 0, larger.width, larger.height), larger.WithoutAlpha());

    for (const SIZE size : {SIZE{440, 350}, SIZE{460, 330}}) {
        content->Set(Picture::Noise(size.cx, size.cy, 3));
        EXPECT_EQ(Show({{content}}), S_OK);
        EXPECT_EQ(ShownPart(0, 0, larger.width, larger.height), larger.WithoutAlpha());
    }
    const Picture whole = Picture::Noise(500, 360, 4);
    content->Set(whole);
    EXPECT_EQ(Show({{content}}), S_OK);
    EXPECT_EQ(ShownPart(0, 0, whole.width, whole.height), whole.WithoutAlpha());
    EXPECT_EQ(content->shown, 5);
}

TEST_F(PresenterTest, BeforeAnythingWasPresentedTheWindowIsLeftAsItIs) {
    MakeWindow();
    PaintWindow(0x00FFFFFF);
    Content empty;
    empty.Attach(new TestContent(graphics_, DXGI_ALPHA_MODE_IGNORE));
    EXPECT_EQ(Show({}), S_OK);
    EXPECT_EQ(Show({{empty}}), S_OK);
    EXPECT_EQ(Shown(), Picture(windowWidth, windowHeight, 0x00FFFFFF));
}

TEST_F(PresenterTest, ContentsCountAsShownOnceForEachPicture) {
    MakeWindow();
    const Content content = Opaque(Picture(8, 8, 0xFFFFFFFF));
    ASSERT_EQ(Show({{content}}), S_OK);
    EXPECT_EQ(content->shown, 1);
    ASSERT_EQ(Show({{content}}), S_OK);
    EXPECT_EQ(content->shown, 1) << "There was no new picture.";
    content->Set(Picture(8, 8, 0xFF000000));
    ASSERT_EQ(Show({{content}}), S_OK);
    EXPECT_EQ(content->shown, 2);
}

TEST_F(PresenterTest, ContentsCountAsShownInAWindowThatHasGone) {
    MakeWindow();
    const Content content = Opaque(Picture(8, 8, 0xFFFFFFFF));
    DestroyWindow(window_);
    EXPECT_EQ(Show({{content}}), S_OK);
    EXPECT_EQ(content->shown, 1) << "Whoever draws would wait for ever.";
}

TEST_F(PresenterTest, AContentThatPresentedNothingYetIsLeftOut) {
    MakeWindow();
    Content empty;
    empty.Attach(new TestContent(graphics_, DXGI_ALPHA_MODE_PREMULTIPLIED));
    const Picture picture = Picture::Noise(windowWidth, windowHeight, 1);
    EXPECT_EQ(Show({{Opaque(picture)}, {empty}}), S_OK);
    EXPECT_EQ(Shown(), picture.WithoutAlpha());
    EXPECT_EQ(empty->shown, 0);
}

}  // namespace
