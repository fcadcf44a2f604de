#include "PresenterFixture.h"

#include "Platform/Linux/Direct3D/Instance.h"

#include <cstdlib>

using namespace Platform::Direct3D;

void TestContent::Set(const Picture& picture) {
    SetSilently(picture);
    isNew_ = true;
}

void TestContent::SetSilently(const Picture& picture) {
    const auto width = static_cast<UINT>(picture.width);
    const auto height = static_cast<UINT>(picture.height);
    texture_ = Texture::Make(*graphics_, {width, height}, DXGI_FORMAT_B8G8R8A8_UNORM);
    graphics_->Upload(texture_, {0, 0, width, height}, picture.pixels.data(), std::size_t{width} * 4);
}

void PresenterTest::SetUp() {
    static const bool isValidating = EnableValidation();
    ASSERT_TRUE(isValidating) << "The package vulkan-validationlayers is missing.";
    messagesBefore_ = ValidationMessages();
    graphics_ = GraphicsDevice::Create();
}

void PresenterTest::TearDown() {
    presenter_.reset();
    graphics_.reset();
    EXPECT_EQ(ValidationMessages(), messagesBefore_);
}

Content PresenterTest::MakeContent(DXGI_ALPHA_MODE alphaMode, const Picture& picture) {
    Content content;
    content.Attach(new TestContent(graphics_, alphaMode));
    content->Set(picture);
    return content;
}

void PresenterTest::MakeWindow() {
    Make();
    MakePresenter();
}

void PresenterTest::MakePresenter() {
    auto view = Platform::ViewNativeWindow(window_);
    ASSERT_TRUE(view);
    presenter_ = std::make_unique<Platform::DirectComposition::ShmPresenter>(window_, std::move(*view));
}

HRESULT PresenterTest::Show(const std::vector<PlacedContent>& contents) {
    std::vector<Platform::DirectComposition::Layer> layers;
    for (const PlacedContent& each : contents) {
        D2D_MATRIX_3X2_F placement = Platform::DirectComposition::identity;
        placement.dx = each.x;
        placement.dy = each.y;
        layers.push_back({each.content.Get(), placement});
    }
    return presenter_->Show(layers);
}

Picture PresenterTest::ShownPart(int x, int y, int width, int height) const {
    // The server takes requests of different connections in any order: first let it finish the presenter's.
    const auto view = Platform::ViewNativeWindow(window_);
    xcb_connection_t* const rendering = view->connection.get();
    std::free(xcb_get_input_focus_reply(rendering, xcb_get_input_focus(rendering), nullptr));
    return Picture::Of(display_.Client(), view->window, x, y, width, height);
}

void PresenterTest::PaintWindow(std::uint32_t pixel) const {
    xcb_connection_t* const x = display_.Client();
    const xcb_gcontext_t context = xcb_generate_id(x);
    xcb_create_gc(x, context, XWindow(), XCB_GC_FOREGROUND, &pixel);
    const xcb_rectangle_t all{0, 0, windowWidth, windowHeight};
    xcb_poly_fill_rectangle(x, XWindow(), context, 1, &all);
    xcb_free_gc(x, context);
    display_.Settle();
}

Cover::Cover(const TestDisplay& display, int x, int y, int width, int height)
    : display_(display), window_(xcb_generate_id(display.Client())) {
    const std::uint32_t values[] = {0x00FFFFFF, 1};  // white; no window manager has a say
    xcb_create_window(display.Client(), XCB_COPY_FROM_PARENT, window_, display.Root(), static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(display.Client(), window_);
    display.Settle();
}

void Cover::Remove() {
    if (window_ == 0) return;
    xcb_destroy_window(display_.Client(), window_);
    display_.Settle();
    window_ = 0;
}
