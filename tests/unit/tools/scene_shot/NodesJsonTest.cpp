#include "tools/scene_shot/NodesJson.h"

#include "Scene/Button.h"
#include "Scene/EllipsePrimitive.h"
#include "Scene/ImagePrimitive.h"
#include "Scene/RectangleNode.h"
#include "Scene/TextPrimitive.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace Tamborel;
using SceneShot::NodesJson;

namespace {

class Badge : public RectangleNode {};

/// The object of one node without children, without what all nodes have.
std::string Fields(const SceneNode& node) {
    const std::string json = NodesJson(node);
    const std::string before = "\"worldTransform\":[1,0,0,1,0,0]";
    const std::string after = ",\"children\":[";
    const std::size_t begin = json.find(before) + before.size();
    return json.substr(begin, json.find(after) - begin);
}

}  // namespace

TEST(NodesJson, APlainNodeHasTypeVisibilityTransformAndChildren) {
    SceneNode node;
    node.visible = false;
    node.worldTransform = {1.5F, 0, 0, 1.5F, 12, -3.25F};
    EXPECT_EQ(
        NodesJson(node),
        R"({"nodes":[{"type":"SceneNode","visible":false,"worldTransform":[1.5,0,0,1.5,12,-3.25],"children":[]}]})"
        "\n");
}

TEST(NodesJson, ChildrenComeInPaintOrderHiddenOnesIncluded) {
    const auto root = std::make_shared<SceneNode>();
    const auto first = std::make_shared<EllipsePrimitive>();
    const auto second = std::make_shared<SceneNode>();
    first->visible = false;
    root->AddChild(first);
    root->AddChild(second);
    second->AddChild(std::make_shared<RectangleNode>());
    const std::string json = NodesJson(*root);
    const std::size_t ellipse = json.find(R"("type":"EllipsePrimitive","visible":false)");
    const std::size_t plain = json.find(R"("type":"SceneNode")", ellipse);
    const std::size_t rectangle = json.find(R"("children":[{"type":"RectangleNode")", plain);
    EXPECT_NE(ellipse, std::string::npos);
    EXPECT_NE(plain, std::string::npos);
    EXPECT_NE(rectangle, std::string::npos);
    EXPECT_TRUE(json.ends_with("\"children\":[]}]}]}]}\n")) << json;
}

TEST(NodesJson, SeveralNodesAreListedSideBySide) {
    const std::vector<std::shared_ptr<SceneNode>> nodes = {std::make_shared<EllipsePrimitive>(),
                                                           std::make_shared<SceneNode>()};
    const std::string json = NodesJson(nodes);
    EXPECT_TRUE(json.starts_with(R"({"nodes":[{"type":"EllipsePrimitive",)")) << json;
    EXPECT_NE(json.find(R"("children":[]},{"type":"SceneNode")"), std::string::npos) << json;
    EXPECT_EQ(NodesJson(std::vector<std::shared_ptr<SceneNode>>()), "{\"nodes\":[]}\n");
}

TEST(NodesJson, ARectangle) {
    RectangleNode node;
    node.rect = {1, 2, 30.5F, 40};
    node.fillColor = {1, 0.5F, 0, 0.25F};
    node.strokeColor = {0, 0, 1, 1};
    node.strokeWidth = 2;
    node.radiusX = 5;
    node.radiusY = 6;
    EXPECT_EQ(Fields(node), R"(,"rect":[1,2,30.5,40],"cornerRadius":[5,6],"fill":[1,0.5,0,0.25],)"
                            R"("stroke":[0,0,1,1],"strokeWidth":2)");
}

TEST(NodesJson, AnEllipse) {
    EllipsePrimitive node;
    node.center = {3, 4};
    node.radiusX = 5;
    node.radiusY = 6;
    node.fillColor = {1, 0, 0, 1};
    EXPECT_EQ(Fields(node), R"(,"center":[3,4],"radius":[5,6],"fill":[1,0,0,1],"stroke":[0,0,0,0],"strokeWidth":1)");
}

TEST(NodesJson, ATextTellsItsBoundsAsRect) {
    TextPrimitive node;
    node.text = L"Play";
    node.bounds = {1, 2, 3, 4};
    node.color = {0, 1, 0, 1};
    node.fontWeight = 600;
    node.textAlignment = 1;
    EXPECT_EQ(Fields(node), R"(,"rect":[1,2,3,4],"text":"Play","color":[0,1,0,1],)"
                            R"("fontFamily":"Segoe UI Variable","fontSize":14,"fontWeight":600,)"
                            R"("textAlignment":1,"paragraphAlignment":2)");
}

TEST(NodesJson, AnImageTellsItsDestination) {
    ImagePrimitive node;
    node.rect = {1, 2, 3, 4};
    EXPECT_EQ(Fields(node), R"(,"rect":[1,2,3,4])");
}

TEST(NodesJson, AButtonTellsItsOwnFieldsAndHasItsTwoChildren) {
    const auto node = std::make_shared<Button>();
    node->label = L"Go";
    node->enabled = false;
    node->normalColor = {1, 0, 0, 1};
    node->hoverColor = {0, 0, 1, 1};
    node->pressedColor = {0, 0, 0, 1};
    node->disabledColor = {1, 1, 0, 1};
    node->disabledTextColor = {1, 1, 1, 1};
    node->textColor = {0, 1, 0, 1};
    EXPECT_EQ(Fields(*node), R"(,"rect":[0,0,140,42],"cornerRadius":[8,8],"label":"Go","enabled":false,)"
                             R"("normalColor":[1,0,0,1],"hoverColor":[0,0,1,1],"pressedColor":[0,0,0,1],)"
                             R"("disabledColor":[1,1,0,1],"disabledTextColor":[1,1,1,1],"textColor":[0,1,0,1],)"
                             R"("fontFamily":"Segoe UI","fontSize":14,"fontWeight":600)");
    const std::string json = NodesJson(*node);
    EXPECT_NE(json.find(R"("children":[{"type":"RectangleNode")"), std::string::npos);
    EXPECT_NE(json.find(R"({"type":"TextPrimitive")"), std::string::npos);
}

TEST(NodesJson, ADerivedClassHasItsOwnNameAndTheFieldsOfItsBase) {
    Badge node;
    node.rect = {1, 2, 3, 4};
    const std::string json = NodesJson(node);
    EXPECT_NE(json.find(R"("type":"Badge")"), std::string::npos);
    EXPECT_NE(json.find(R"("rect":[1,2,3,4])"), std::string::npos);
}

TEST(NodesJson, TextIsUtf8WithTheEscapesThatJsonNeeds) {
    TextPrimitive node;
    node.text = L"\"a\\b\"\n\t\x01 é 日 \U0001F680";
    EXPECT_NE(NodesJson(node).find("\"text\":\"\\\"a\\\\b\\\"\\u000a\\u0009\\u0001 é 日 🚀\""), std::string::npos);
}

TEST(NodesJson, WhatIsNoFiniteNumberIsNull) {
    RectangleNode node;
    node.rect = {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity(), 0.1F, 1e20F};
    EXPECT_NE(NodesJson(node).find(R"("rect":[null,null,0.1,1e+20])"), std::string::npos);
}
