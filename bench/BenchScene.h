// The scene that the benchmarks draw: 200 nodes in 20 groups, the root aside.
#pragma once

#include "Scene/DrawContext.h"
#include "Scene/SceneNode.h"

#include <memory>

namespace BenchScene {

inline constexpr int groups = 20;
inline constexpr int perGroup = 9;  // with the groups themselves 200 nodes

/// A square of 10 by 10 with an outline, in one of four colours.
class Square : public Tamborel::SceneNode {
public:
    explicit Square(int number) : color{static_cast<float>(number % 4) / 4, 0.5F, 0.25F, 1} {}

    bool HitTest(Tamborel::Point local) const override {
        return local.x >= 0 && local.x < 10 && local.y >= 0 && local.y < 10;
    }

    void Draw(Tamborel::DrawContext& context) override {
        context.SetTransform(worldTransform);
        const bool clipped = PushNodeClip(context);
        context.FillRoundedRect({0, 0, 10, 10}, 2, 2, color);
        context.StrokeRoundedRect({0, 0, 10, 10}, 2, 2, {1, 1, 1, 1}, 1);
        DrawChildren(context);
        PopNodeClip(context, clipped);
    }

    Tamborel::Color color;
};

inline std::shared_ptr<Tamborel::SceneNode> Make() {
    auto root = std::make_shared<Tamborel::SceneNode>();
    for (int row = 0; row < groups; ++row) {
        auto group = std::make_shared<Square>(row);
        group->localTransform = {1, 0, 0, 1, 0, static_cast<float>(12 * row)};
        group->clipEnabled = true;
        group->clipRect = {0, 0, 200, 10};
        for (int column = 1; column <= perGroup; ++column) {
            auto square = std::make_shared<Square>(column);
            square->localTransform = {1, 0, 0, 1, static_cast<float>(12 * column), 0};
            group->AddChild(std::move(square));
        }
        root->AddChild(std::move(group));
    }
    root->localTransform = {1.5F, 0, 0, 1.5F, 20, 30};
    root->Update(0);
    return root;
}

}  // namespace BenchScene
