#include "Core/RenderDevice.h"
#include "Scene/ImageAsset.h"
#include "tools/scene_shot/scenes/Parts.h"
#include "tools/scene_shot/scenes/ToolkitScenes.h"
#include "Window/ChromeTheme.h"
#include "Window/FrameChrome.h"
#include "Window/HitTest.h"
#include "Window/WindowSurface.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace SceneShot {

namespace {

using namespace Tamborel;
using Microsoft::WRL::ComPtr;

constexpr std::string_view kWordmark = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 160 40">
  <path d="M6 6 L20 34 L34 6" fill="none" stroke="#f2b84b" stroke-width="6"/>
  <rect x="48" y="16" width="106" height="8" rx="4" fill="#dfe5ee"/>
</svg>)";

/// The built-in restore drawing is the one of maximise: only one of our own shows that the two change places.
constexpr std::string_view kRestore = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24">
  <path d="M5 9 H15 V19 H5 Z M9 9 V5 H19 V15 H15" fill="none" stroke="#ffffff" stroke-width="2"/>
</svg>)";

std::shared_ptr<ImageAsset> Svg(std::string_view text) {
    return ImageAsset::FromBytes(std::vector<std::uint8_t>(text.begin(), text.end()), true);
}

/// One window's title bar.
struct Bar {
    std::wstring title;
    std::int32_t hovered = -1;
    std::int32_t pressed = -1;
    bool maximized = false;
    bool hasIcon = true;
    bool hasTitleImage = false;
    bool hasRestoreGlyph = false;
    float widest = 1e9F;  ///< Units; the picture's own width where that is less.
};

/// The title bar of one window, at the place of the window's upper left corner, on the fill that the background
/// renderer would lay below it.
class Window : public SceneNode {
public:
    Window(std::shared_ptr<RenderDevice> device, const Bar& bar, SIZE pixels, float scale)
        : device_(std::move(device)), chrome_(std::make_shared<FrameChrome>()) {
        MakeSurface(pixels);
        if (FAILED(chrome_->Initialize(&surface_))) throw std::runtime_error("FrameChrome::Initialize failed");
        ChromeTheme theme;
        if (!bar.hasIcon) theme.TitleIcon = std::shared_ptr<ImageAsset>();
        if (bar.hasRestoreGlyph) theme.RestoreGlyph = Svg(kRestore);
        chrome_->ApplyTheme(theme);
        chrome_->title = bar.title;
        chrome_->HoverZone = bar.hovered;
        chrome_->PressedZone = bar.pressed;
        chrome_->maximized = bar.maximized;
        chrome_->dpiScale = scale;
        if (bar.hasTitleImage) chrome_->titleImage = Svg(kWordmark);
        chrome_->Arrange();
        const FrameChrome::Metrics metrics = chrome_->ReadMetrics();
        AddRectangle(*this, {0, 0, static_cast<float>(pixels.cx), metrics.titleHeight * scale}, metrics.titleBarFill);
        AddChild(chrome_);
    }

private:
    /// The chrome reads the window's size off it; nothing is drawn on it.
    void MakeSurface(SIZE pixels) {
        if (FAILED(device_->GetDCompDevice()->CreateVisual(&visual_)) ||
            FAILED(surface_.Initialize(*device_, pixels, DXGI_ALPHA_MODE_PREMULTIPLIED, visual_.Get()))) {
            throw std::runtime_error("no surface for a title bar");
        }
    }

    std::shared_ptr<RenderDevice> device_;
    ComPtr<IDCompositionVisual2> visual_;
    WindowSurface surface_;
    std::shared_ptr<FrameChrome> chrome_;
};

std::vector<Bar> Bars() {
    using namespace CaptionZone;
    return {
        {.title = L"Normal"},
        {.title = L"Hovered minimise", .hovered = Minimize},
        {.title = L"Pressed maximise", .hovered = Maximize, .pressed = Maximize},
        {.title = L"Hovered close", .hovered = Close},
        {.title = L"Pressed close", .hovered = Close, .pressed = Close},
        {.title = L"Maximised", .maximized = true, .hasRestoreGlyph = true},
        {.title = L"Without icon", .hasIcon = false},
        {.title = L"Title image", .hasTitleImage = true},
        {.title = L"A title that is too long for a narrow window", .widest = 300},
        {.title = L"Narrower than its buttons", .widest = 120},
    };
}

}  // namespace

Scene ChromeScene() {
    Scene scene{"chrome", "title bars: normal, hovered, pressed, maximised, without icon, with image, narrow",
                [](const View& view) {
                    auto root = std::make_shared<SceneNode>();
                    const auto device = std::make_shared<RenderDevice>();
                    if (FAILED(device->Initialize())) throw std::runtime_error("RenderDevice::Initialize failed");
                    const float step = 50 * view.Scale();
                    float top = 0;
                    for (const Bar& bar : Bars()) {
                        const float width = std::min(static_cast<float>(view.width), bar.widest * view.Scale());
                        const SIZE pixels{static_cast<LONG>(width), static_cast<LONG>(view.height)};
                        const auto window = std::make_shared<Window>(device, bar, pixels, view.Scale());
                        window->localTransform = {1, 0, 0, 1, 0, top};
                        root->AddChild(window);
                        top += step;
                    }
                    return root;
                }};
    scene.backdrop = Colour(0x33557A);
    return scene;
}

}  // namespace SceneShot
