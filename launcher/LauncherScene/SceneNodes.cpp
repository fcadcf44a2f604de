// The four kinds of node that the screen is made of.

#include "launcher/LauncherScene/Colours.h"
#include "launcher/LauncherScene/LauncherScene.h"

#include <utility>

using Tamborel::Button;
using Tamborel::RectangleNode;

std::shared_ptr<RectangleNode> LauncherScene::RectangleAt(float x, float y, float width, float height,
                                                          std::uint32_t fill, std::uint32_t stroke, float radius,
                                                          float fillAlpha) {
    auto node = std::make_shared<RectangleNode>();
    node->rect = {x, y, x + width, y + height};
    node->fillColor = ColourFromHex(fill, fillAlpha);
    node->strokeColor = ColourFromHex(stroke);
    node->strokeWidth = stroke != 0 ? 1.0F : 0.0F;
    node->radiusX = radius;
    node->radiusY = radius;
    AddChild(node);
    return node;
}

std::shared_ptr<DecorationText> LauncherScene::TextAt(float x, float y, float width, float height, std::wstring text,
                                                      float size, std::uint32_t colour, bool semibold) {
    auto node = std::make_shared<DecorationText>();
    node->text = std::move(text);
    node->bounds = {x, y, x + width, y + height};
    node->color = ColourFromHex(colour);
    node->fontFamily = L"Segoe UI";
    node->fontSize = size;
    node->fontWeight = semibold ? 600 : 400;
    node->paragraphAlignment = kParagraphNear;
    AddChild(node);
    return node;
}

std::shared_ptr<DecorationEllipse> LauncherScene::EllipseAt(float centreX, float centreY, float radius,
                                                            std::uint32_t colour) {
    auto node = std::make_shared<DecorationEllipse>();
    node->center = {centreX, centreY};
    node->radiusX = radius;
    node->radiusY = radius;
    node->fillColor = ColourFromHex(colour);
    node->strokeWidth = 0;
    AddChild(node);
    return node;
}

std::shared_ptr<Button> LauncherScene::ButtonAt(float x, float y, float width, float height, std::wstring text,
                                                Click onClick, bool enabled, std::uint32_t fill,
                                                std::uint32_t textColour, bool bordered) {
    auto node = std::make_shared<Button>();
    node->rect = {x, y, x + width, y + height};
    node->label = std::move(text);
    node->fontSize = 13.0F;
    node->fontWeight = 400;
    node->enabled = enabled;
    node->cornerRadius = bordered ? 10.0F : 6.0F;
    node->normalColor = ColourFromHex(fill);
    node->hoverColor = ColourFromHex(fill == kAccent ? 0x93E7DC : 0x35433F);
    node->pressedColor = ColourFromHex(0x405550);
    node->textColor = ColourFromHex(textColour);
    // Whatever the click did, the screen is made anew: handlers needn't say so.
    node->onClick = [this, onClick = std::move(onClick)] {
        onClick();
        needsRebuild = true;
    };
    AddChild(node);
    if (bordered) {
        auto border = std::make_shared<DecorationRectangle>();
        border->rect = {x + 0.5F, y + 0.5F, x + width - 0.5F, y + height - 0.5F};
        border->strokeColor = ColourFromHex(0x455056);
        border->strokeWidth = 1.0F;
        border->radiusX = 9.5F;
        border->radiusY = 9.5F;
        AddChild(std::move(border));
    }
    return node;
}
