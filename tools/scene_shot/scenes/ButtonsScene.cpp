#include "Scene/Button.h"
#include "tools/scene_shot/scenes/Parts.h"
#include "tools/scene_shot/scenes/ToolkitScenes.h"

namespace SceneShot {

namespace {

using namespace Tamborel;

std::shared_ptr<Button> AddButton(SceneNode& root, float left, float top, std::wstring label) {
    auto button = std::make_shared<Button>();
    button->rect = {left, top, left + 140, top + 42};
    button->label = std::move(label);
    root.AddChild(button);
    return button;
}

/// Sends what a pointer of the left button does, through the button's own handlers.
void Enter(const Button& button) {
    button.onPointerEnter({});
}
void Press(const Button& button) {
    InputEvent down;
    down.kind = InputEventKind::PointerDown;
    down.x = button.rect.left + 1;
    down.y = button.rect.top + 1;
    down.buttons = 1;
    button.onPointerDown(down);
}
void Release(const Button& button, float x) {
    InputEvent up;
    up.kind = InputEventKind::PointerUp;
    up.x = x;
    up.y = button.rect.top + 1;
    button.onPointerUp(up);
}

/// One button in each state that a pointer and its owner can bring about.
void AddStates(SceneNode& root) {
    AddCaption(root, 20, 12, L"at rest, hovered, pressed");
    AddButton(root, 20, 30, L"Normal");
    Enter(*AddButton(root, 180, 30, L"Hovered"));
    const auto pressed = AddButton(root, 340, 30, L"Pressed");
    Enter(*pressed);
    Press(*pressed);

    AddCaption(root, 20, 92, L"disabled, left while pressed, after a click, after a release outside");
    AddButton(root, 20, 110, L"Disabled")->enabled = false;
    const auto left = AddButton(root, 180, 110, L"Left pressed");
    Enter(*left);
    Press(*left);
    left->onPointerLeave({});
    const auto clicked = AddButton(root, 340, 110, L"Clicked");
    Press(*clicked);
    Release(*clicked, clicked->rect.left + 1);
    const auto escaped = AddButton(root, 500, 110, L"Escaped");
    Press(*escaped);
    Release(*escaped, escaped->rect.right + 50);
}

/// Other shapes, colours and labels.
void AddLooks(SceneNode& root) {
    AddCaption(root, 20, 172, L"corners of 0, a pill, own colours, a label that is cut at both edges");
    AddButton(root, 20, 190, L"Square")->cornerRadius = 0;
    AddButton(root, 180, 190, L"Pill")->cornerRadius = 21;
    const auto gold = AddButton(root, 340, 190, L"Play");
    gold->normalColor = Colour(0xF2B84B);
    gold->textColor = Colour(0x1B1406);
    gold->fontSize = 18;
    gold->fontWeight = 700;
    AddButton(root, 500, 190, L"A label much longer than its button");
}

}  // namespace

Scene ButtonsScene() {
    return {"buttons", "buttons in all their states", [](const View& view) {
                auto root = RootInUnits(view);
                AddStates(*root);
                AddLooks(*root);
                return root;
            }};
}

}  // namespace SceneShot
