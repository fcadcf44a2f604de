// The toolkit's second example: text, a picture, and buttons that change what the others show.
//
// Each part is a node. Its fields are public: write them, and the next frame shows them. A text wants to be told of
// changes that shape it (`layoutDirty`); a button sees changes by itself.
#include "Background/BackgroundRenderer.h"
#include "Core/Toolkit.h"
#include "Scene/Button.h"
#include "Scene/ImagePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"
#include "Window/FrameWindow.h"

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

using namespace Tamborel;

namespace {

/// A compass, drawn by whichever scale the window has.
constexpr std::string_view compassSvg = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 100 100">
  <circle cx="50" cy="50" r="46" fill="#1d2736" stroke="#4fa3e3" stroke-width="4"/>
  <path d="M50 14 L60 50 L40 50 Z" fill="#f2b84b"/>
  <path d="M50 86 L60 50 L40 50 Z" fill="#8a93a3"/>
  <circle cx="50" cy="50" r="5" fill="#ffffff"/>
</svg>)";

std::shared_ptr<ImagePrimitive> MakeCompass(Rect rect) {
    auto image = std::make_shared<ImagePrimitive>();
    image->asset = ImageAsset::FromBytes(std::vector<std::uint8_t>(compassSvg.begin(), compassSvg.end()), true);
    image->rect = rect;
    return image;
}

std::shared_ptr<TextPrimitive> MakeText(Rect bounds, std::wstring text, float size, std::uint32_t weight) {
    auto node = std::make_shared<TextPrimitive>();
    node->bounds = bounds;
    node->text = std::move(text);
    node->fontSize = size;
    node->fontWeight = weight;
    return node;
}

std::shared_ptr<Button> MakeButton(Rect rect, std::wstring label) {
    auto button = std::make_shared<Button>();
    button->rect = rect;
    button->label = std::move(label);
    return button;
}

/// Changes what a text says. It is set anew once, and drawn as it is in the frames after that.
void Say(TextPrimitive& node, std::wstring text) {
    node.text = std::move(text);
    node.layoutDirty = true;
}

/// A card with all of it. Places are in device-independent pixels of the card's own space.
std::shared_ptr<SceneNode> MakeScene() {
    auto card = std::make_shared<RectangleNode>();
    card->rect = {0, 0, 440, 240};
    card->fillColor = {0.10F, 0.13F, 0.18F, 0.9F};
    card->strokeColor = {0.31F, 0.64F, 0.89F, 1};
    card->radiusX = card->radiusY = 16;
    card->localTransform = {1, 0, 0, 1, 20, 20};

    const auto compass = MakeCompass({24, 24, 124, 124});
    const auto headline = MakeText({148, 28, 416, 64}, L"Where to?", 26, 700);
    const auto message = MakeText({148, 68, 416, 120}, L"Press a button. Its answer stands here.", 15, 400);
    message->color = {0.70F, 0.75F, 0.82F, 1};
    const auto count = MakeButton({24, 168, 152, 212}, L"Count");
    const auto hide = MakeButton({164, 168, 292, 212}, L"Hide");
    const auto lock = MakeButton({304, 168, 416, 212}, L"Lock");
    hide->normalColor = {0.20F, 0.45F, 0.32F, 1};
    hide->hoverColor = {0.24F, 0.55F, 0.39F, 1};
    hide->pressedColor = {0.16F, 0.36F, 0.26F, 1};

    // Clicks run on the render thread, to which the nodes belong: they may change them freely. The card owns the nodes
    // and they own their handlers, so that handlers hold plain pointers to their neighbours.
    count->onClick = [text = message.get(), clicks = 0]() mutable {
        ++clicks;
        Say(*text, L"Clicked " + std::to_wstring(clicks) + (clicks == 1 ? L" time." : L" times."));
    };
    hide->onClick = [picture = compass.get(), text = message.get()] {
        picture->visible = !picture->visible;
        Say(*text, picture->visible ? L"The compass is back." : L"The compass is hidden.");
    };
    lock->onClick = [counter = count.get(), self = lock.get()] {
        counter->enabled = !counter->enabled;
        self->label = counter->enabled ? L"Lock" : L"Unlock";
    };

    for (const std::shared_ptr<SceneNode>& node :
         std::initializer_list<std::shared_ptr<SceneNode>>{compass, headline, message, count, hide, lock}) {
        card->AddChild(node);
    }
    return card;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    if (FAILED(Initialize())) return 1;
    {
        // An animated background, which outlives the window. It also keeps frames coming: buttons change their looks in
        // the frame after the pointer's, and a window in which nothing moves draws one frame only for each event.
        BackgroundRenderer background;
        background.SetBackground(BackgroundKind::SilkRibbons);
        FrameWindow window;
        WindowConfig config;
        config.title = L"Controls";
        // A window's size is in pixels, a scene's in units that grow with the display's scale.
        const int dpi = static_cast<int>(GetDpiForSystem());
        config.width = 500 * dpi / 96;
        config.height = 340 * dpi / 96;
        window.Create(instance, showCommand, config);
        if (!window.WaitUntilReady()) {
            Shutdown();
            return 2;
        }
        window.SetBackgroundRenderer(&background);
        window.PostToRenderThread([&window] { window.ClientRoot()->AddChild(MakeScene()); });
        WaitForWindows();
        window.Shutdown();
    }
    Shutdown();
    return 0;
}
