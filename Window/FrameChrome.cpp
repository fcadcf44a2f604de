// The title bar's nodes and how a frame updates and draws them. What the theme makes of them is in
// FrameChromeTheme.cpp.
#include "Window/FrameChrome.h"

#include "Core/EmbeddedAssets.h"
#include "Scene/ImageAsset.h"
#include "Scene/ImagePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"
#include "Window/HitTest.h"
#include "Window/WindowSurface.h"

#include <dwrite.h>

#include <new>
#include <utility>

namespace Tamborel {

namespace {

constexpr Color kTransparent{};

// Zones whose buttons are in the tree, in their order there. The reserved slots are made and laid out, and never
// attached.
constexpr std::array kAttached{CaptionZone::Minimize, CaptionZone::Maximize, CaptionZone::Close};

std::shared_ptr<ImageAsset> LoadSvg(EmbeddedResource& resource) {
    return ImageAsset::FromEmbedded(&resource, true);
}

void Place(SceneNode& node, Rect& rect, const ChromeBox& box) {
    rect = box.rect;
    node.visible = box.visible;
    node.clipEnabled = box.clipped;
    node.clipRect = box.clip;
}

void Show(ImagePrimitive& node, const std::shared_ptr<ImageAsset>& image) {
    if (node.asset != image) node.asset = image;
}

}  // namespace

FrameChrome::FrameChrome() = default;
FrameChrome::~FrameChrome() = default;

HRESULT FrameChrome::Initialize(WindowSurface* surface) try {
    surface_ = surface;
    MakeNodes();
    initialized_ = true;
    Resolve();
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

void FrameChrome::MakeNodes() {
    // The panels hold the frame's colours and are never shown: the background renderer draws what they stand for.
    for (auto& panel : panels_) {
        panel = std::make_shared<RectangleNode>();
        panel->visible = false;
        AddChild(panel);
    }
    iconNode_ = std::make_shared<ImagePrimitive>();
    titleImageNode_ = std::make_shared<ImagePrimitive>();
    AddChild(iconNode_);
    AddChild(titleImageNode_);

    titleText_ = std::make_shared<TextPrimitive>();
    titleText_->textAlignment = DWRITE_TEXT_ALIGNMENT_LEADING;
    titleText_->paragraphAlignment = DWRITE_PARAGRAPH_ALIGNMENT_CENTER;
    titleText_->wordWrapping = DWRITE_WORD_WRAPPING_NO_WRAP;
    titleText_->clipToBounds = true;
    AddChild(titleText_);

    for (Button& button : buttons_) button.fill = std::make_shared<RectangleNode>();
    for (const auto zone : kAttached) AddChild(buttons_[zone].fill);
    LoadDefaultImages();
    for (Button& button : buttons_) button.glyph = std::make_shared<ImagePrimitive>();
    for (const auto zone : kAttached) AddChild(buttons_[zone].glyph);
}

void FrameChrome::LoadDefaultImages() {
    defaults_.icon = LoadSvg(Assets::AppIcon);
    defaults_.reservedFirst = LoadSvg(Assets::ReservedGlyphFirst);
    defaults_.reservedSecond = LoadSvg(Assets::ReservedGlyphSecond);
    defaults_.minimize = LoadSvg(Assets::MinimizeGlyph);
    defaults_.maximize = LoadSvg(Assets::MaximizeGlyph);
    defaults_.restore = LoadSvg(Assets::MaximizeGlyph);
    defaults_.close = LoadSvg(Assets::CloseGlyph);
}

void FrameChrome::Update(float seconds) {
    localTransform = {};
    localTransform.m11 = dpiScale;
    localTransform.m22 = dpiScale;
    SceneNode::Update(seconds);
}

void FrameChrome::Draw(DrawContext& context) {
    if (!IsReady()) return;
    Arrange();
    // Without a frame loop that arranged ahead of Prepare, the title would show one frame late.
    if (titleText_->visible && titleText_->layoutDirty) titleText_->Prepare(context);
    FillButtons();
    ShowImages();
    SceneNode::Draw(context);
}

void FrameChrome::Arrange() {
    if (!IsReady()) return;
    if (themeDirty_) Resolve();
    LayoutKey key = CurrentKey();
    if (last_ == key) return;
    PlaceNodes(LayOutChrome(LayoutInput(key)), key);
    last_ = std::move(key);
}

FrameChrome::LayoutKey FrameChrome::CurrentKey() const {
    const SIZE pixels = surface_->GetSize();
    return {.width = static_cast<float>(pixels.cx) / dpiScale,
            .height = static_cast<float>(pixels.cy) / dpiScale,
            .scale = measures_.scale,
            .maximized = maximized,
            .title = title,
            .hasTitleImage = titleImage != nullptr,
            .hasIcon = icon_ != nullptr};
}

ChromeLayoutInput FrameChrome::LayoutInput(const LayoutKey& key) const {
    ChromeLayoutInput input{.width = key.width,
                            .height = key.height,
                            .measures = measures_,
                            .maximized = key.maximized,
                            .hasIcon = key.hasIcon,
                            .hasTitleImage = key.hasTitleImage};
    D2D1_SIZE_F size{};
    if (titleImage && titleImage->GetSize(size)) {
        input.titleImageWidth = size.width;
        input.titleImageHeight = size.height;
    }
    return input;
}

void FrameChrome::PlaceNodes(const ChromeLayout& layout, const LayoutKey& key) {
    titleHeight_ = layout.titleHeight;
    buttonWidth_ = layout.buttonWidth;
    reservedWidth_ = layout.reservedWidth;
    reservedCount_ = 0;
    clientVisible_ = layout.clientVisible;

    Place(*iconNode_, iconNode_->rect, layout.icon);
    titleImageNode_->visible = key.hasTitleImage;
    if (key.hasTitleImage) titleImageNode_->rect = layout.titleImage;
    titleText_->visible = !key.hasTitleImage;
    titleText_->text = key.title;
    titleText_->fontSize = layout.titleFontSize;
    titleText_->bounds = layout.titleBounds;
    titleText_->layoutDirty = true;

    for (std::size_t zone = 0; zone < buttons_.size(); ++zone) {
        const ChromeButton& placed = layout.buttons[zone];
        RectangleNode& fill = *buttons_[zone].fill;
        Place(fill, fill.rect, placed.fill);
        fill.radiusX = placed.radius;
        fill.radiusY = placed.radius;
        Place(*buttons_[zone].glyph, buttons_[zone].glyph->rect, placed.glyph);
    }
}

// A press wins over the pointer, for each button by itself.
void FrameChrome::FillButtons() {
    for (std::size_t zone = 0; zone < buttons_.size(); ++zone) {
        const auto slot = static_cast<std::int32_t>(zone);
        const bool close = slot == CaptionZone::Close;
        Color fill = kTransparent;
        if (PressedZone == slot) {
            fill = close ? fills_.closePressed : fills_.pressed;
        } else if (HoverZone == slot) {
            fill = close ? fills_.closeHover : fills_.hover;
        }
        buttons_[zone].fill->fillColor = fill;
    }
}

void FrameChrome::ShowImages() {
    Show(*iconNode_, icon_);
    Show(*titleImageNode_, titleImage);
    Show(*buttons_[CaptionZone::Maximize].glyph, maximized ? restoreImage_ : maximizeImage_);
}

FrameChrome::Metrics FrameChrome::ReadMetrics() const {
    return {.frameWidth = maximized ? 0.0F : measures_.frameWidth * measures_.scale,
            .titleHeight = titleHeight_,
            .innerBorder = maximized ? 0.0F : innerBorderWidth_,
            .clientVisible = clientVisible_,
            .maximized = maximized,
            .titleBarFill = titleBarFill_,
            .frameFill = frameFill_,
            .innerBorderColor = innerBorderColor_};
}

HitTestMetrics FrameChrome::ReadHitTestMetrics() const {
    return {.frameWidth = measures_.frameWidth * measures_.scale,
            .titleHeight = titleHeight_,
            .buttonWidth = buttonWidth_,
            .reservedSlotWidth = reservedWidth_,
            .reservedSlotCount = reservedCount_,
            .scale = measures_.scale,
            .hasIcon = icon_ != nullptr};
}

}  // namespace Tamborel
