// The title bar of a window. Render thread only.
#pragma once

#include "Scene/SceneNode.h"
#include "Window/ChromeTheme.h"
#include "Window/FrameChromeLayout.h"

#include <windows.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace Tamborel {

class ImageAsset;
class ImagePrimitive;
class RectangleNode;
class TextPrimitive;
class WindowSurface;

/// Draws the caption on the frame surface: icon, title text or title image, three buttons with their fills. The title
/// bar's own fill, the frame and the inner border are not drawn here: the background renderer draws them beneath, and
/// the frame surface stays clear wherever the chrome has no node.
///
/// All lengths are device-independent: the node's own transform is the monitor's scale.
class FrameChrome final : public SceneNode {
public:
    // What the frame loop and the window's closures write. A change counts from the next Arrange or Draw on.

    std::wstring title;
    std::shared_ptr<ImageAsset> titleImage;  ///< Stands in the place of the title text. May be empty.
    std::int32_t HoverZone = -1;             ///< Caption zone under the pointer.
    std::int32_t PressedZone = -1;           ///< Caption zone pressed.
    bool maximized = false;
    float dpiScale = 1.0F;  ///< The monitor's, 1 at 96 DPI.

    /// What the frame loop reads back.
    struct Metrics {
        float frameWidth = 0;   ///< Scaled; 0 while maximised.
        float titleHeight = 0;  ///< As laid out last.
        float innerBorder = 0;  ///< 0 while maximised.
        bool clientVisible = false;
        bool maximized = false;
        Color titleBarFill;
        Color frameFill;
        Color innerBorderColor;
    };

    FrameChrome();
    ~FrameChrome() override;

    /// Makes the child nodes and loads the built-in images. Of `surface`, which is not owned, only the size is used.
    /// Once.
    [[nodiscard]] HRESULT Initialize(WindowSurface* surface);

    /// The surface whose size the title bar spans; null for none, and then nothing is drawn.
    void SetSurface(WindowSurface* surface) { surface_ = surface; }

    /// Takes a theme, absent fields being defaults.
    void ApplyTheme(const ChromeTheme& theme);

    /// Lays the title bar out if anything that counts has changed. The frame loop calls it ahead of reading the
    /// metrics, so that a first frame's scene lies under the title bar as it is and its title is prepared with the
    /// rest; Draw does the same for whoever has no loop.
    void Arrange();

    void Update(float seconds) override;
    void Draw(DrawContext& context) override;

    [[nodiscard]] Metrics ReadMetrics() const;

    /// The same for the hit-test: frame width scaled, whether maximised or not.
    [[nodiscard]] HitTestMetrics ReadHitTestMetrics() const;

    /// The theme's overall factor, at least 0.01.
    [[nodiscard]] float Scale() const { return measures_.scale; }

private:
    struct Button {
        std::shared_ptr<RectangleNode> fill;
        std::shared_ptr<ImagePrimitive> glyph;
    };

    // The images built into the program, each an asset of its own even where two show the same one.
    struct DefaultImages {
        std::shared_ptr<ImageAsset> icon;
        std::shared_ptr<ImageAsset> reservedFirst;
        std::shared_ptr<ImageAsset> reservedSecond;
        std::shared_ptr<ImageAsset> minimize;
        std::shared_ptr<ImageAsset> maximize;
        std::shared_ptr<ImageAsset> restore;
        std::shared_ptr<ImageAsset> close;
    };

    // All that a layout depends on; a layout is made again when it differs from the last one.
    struct LayoutKey {
        float width = -1.0F;
        float height = -1.0F;
        float scale = -1.0F;
        bool maximized = false;
        std::wstring title;
        bool hasTitleImage = false;
        bool hasIcon = false;

        friend bool operator==(const LayoutKey&, const LayoutKey&) = default;
    };

    struct ButtonFills {
        Color hover;
        Color pressed;
        Color closeHover;
        Color closePressed;
    };

    void MakeNodes();
    void LoadDefaultImages();
    void Resolve();
    void ResolveMeasures();
    void ResolveColors();
    void ResolveImages();
    bool IsReady() const { return initialized_ && surface_; }
    LayoutKey CurrentKey() const;
    ChromeLayoutInput LayoutInput(const LayoutKey& key) const;
    void PlaceNodes(const ChromeLayout& layout, const LayoutKey& key);
    void FillButtons();
    void ShowImages();

    static constexpr std::size_t kPanelCount = 5;

    std::shared_ptr<ImageAsset> icon_;
    float titleHeight_ = 42.0F;  // laid out, like the two below
    float buttonWidth_ = 60.0F;
    float reservedWidth_ = 60.0F;
    float reservedCount_ = 0;  // reserved slots in use

    std::shared_ptr<ImagePrimitive> iconNode_;
    std::shared_ptr<ImagePrimitive> titleImageNode_;
    std::array<std::shared_ptr<RectangleNode>, kPanelCount> panels_;
    std::shared_ptr<TextPrimitive> titleText_;
    std::array<Button, ChromeLayout::ButtonCount> buttons_;  // indexed by CaptionZone
    std::shared_ptr<ImageAsset> maximizeImage_;
    std::shared_ptr<ImageAsset> restoreImage_;
    DefaultImages defaults_;

    WindowSurface* surface_ = nullptr;
    bool initialized_ = false;
    bool themeDirty_ = true;
    ChromeTheme theme_;

    // Resolved from the theme.
    ChromeMeasures measures_;
    float innerBorderWidth_ = 0.5F;
    Color titleBarFill_;
    Color frameFill_;
    Color innerBorderColor_;
    ButtonFills fills_;

    std::optional<LayoutKey> last_;  // empty: lay out whatever comes
    bool clientVisible_ = false;
};

}  // namespace Tamborel
