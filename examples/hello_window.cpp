// The toolkit's first example: a window with a small scene of plain nodes. The disc follows the pointer's presses.
//
// A program starts the toolkit, opens a window, hands it a scene through a closure, sleeps until the window has gone,
// and stops in the opposite order. The scene belongs to the window's render thread from the closure on.
#include "Core/Toolkit.h"
#include "Scene/DrawContext.h"
#include "Scene/SceneNode.h"
#include "Window/FrameWindow.h"

#include <windows.h>

#include <memory>

using namespace Tamborel;

namespace {

/// A card with rounded corners. A node paints in its own space, and its owner places it by its transform.
class Card : public SceneNode {
public:
    Rect rect{0, 0, 360, 220};
    Color fill{0.16F, 0.19F, 0.26F, 1};
    Color rim{0.45F, 0.72F, 0.95F, 1};

    bool HitTest(Point local) const override {
        return local.x >= rect.left && local.x < rect.right && local.y >= rect.top && local.y < rect.bottom;
    }

    void Draw(DrawContext& context) override {
        context.SetTransform(worldTransform);
        context.FillRoundedRect(rect, 18, 18, fill);
        context.StrokeRoundedRect(rect, 18, 18, rim, 2);
        DrawChildren(context);
    }
};

/// A disc around its own origin.
class Disc : public SceneNode {
public:
    float radius = 44;
    Color fill{0.98F, 0.74F, 0.30F, 1};

    void Draw(DrawContext& context) override {
        context.SetTransform(worldTransform);
        context.FillEllipse({0, 0}, radius, radius, fill);
        context.StrokeEllipse({0, 0}, radius + 10, radius + 10, fill, 3);
    }
};

std::shared_ptr<SceneNode> MakeScene(FrameWindow& window) {
    auto card = std::make_shared<Card>();
    card->localTransform = {1, 0, 0, 1, 40, 40};

    auto disc = std::make_shared<Disc>();
    disc->localTransform = {1, 0, 0, 1, 180, 110};
    // The card owns the disc, so the link back must not own it too. A closure has the whole scene placed and drawn
    // anew.
    card->onPointerDown = [&window, weakDisc = std::weak_ptr(disc)](const InputEvent& event) {
        window.PostToRenderThread([weakDisc, place = Matrix3x2{1, 0, 0, 1, event.x, event.y}] {
            if (const auto pressed = weakDisc.lock()) pressed->localTransform = place;
        });
    };
    card->AddChild(std::move(disc));
    return card;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand) {
    if (FAILED(Initialize())) return 1;
    {
        FrameWindow window;
        WindowConfig config;
        config.title = L"Hello, window";
        // A window's size is in pixels, a scene's in units that grow with the display's scale.
        const int dpi = static_cast<int>(GetDpiForSystem());
        config.width = 480 * dpi / 96;
        config.height = 360 * dpi / 96;
        window.Create(instance, showCommand, config);
        if (!window.WaitUntilReady()) {
            Shutdown();
            return 2;
        }
        window.PostToRenderThread([&window] { window.ClientRoot()->AddChild(MakeScene(window)); });
        WaitForWindows();
        window.Shutdown();
    }
    Shutdown();
    return 0;
}
