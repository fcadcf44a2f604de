// One frame's walks over a tree of 200 nodes, and one pointer event through it. Nothing is painted: the device context
// writes down its calls, so what is measured is the tree and DrawContext.
#include "Scene/DrawContext.h"
#include "Scene/InputDelivery.h"
#include "Scene/InputRouter.h"
#include "Scene/SceneNode.h"
#include "tests/fakes/RecordingContext.h"

#include <benchmark/benchmark.h>

#include <memory>

using namespace Tamborel;

namespace {

constexpr int groups = 20;
constexpr int perGroup = 9;  // With the groups themselves 200 nodes, the root aside.

/// A square of 10 by 10 with an outline, in one of four colours.
class Square : public SceneNode {
public:
    explicit Square(int number) : color_{static_cast<float>(number % 4) / 4, 0.5F, 0.25F, 1} {}

    bool HitTest(Point local) const override { return local.x >= 0 && local.x < 10 && local.y >= 0 && local.y < 10; }

    void Draw(DrawContext& context) override {
        context.SetTransform(worldTransform);
        const bool clipped = PushNodeClip(context);
        context.FillRoundedRect({0, 0, 10, 10}, 2, 2, color_);
        context.StrokeRoundedRect({0, 0, 10, 10}, 2, 2, {1, 1, 1, 1}, 1);
        DrawChildren(context);
        PopNodeClip(context, clipped);
    }

private:
    Color color_;
};

std::shared_ptr<SceneNode> Tree() {
    auto root = std::make_shared<SceneNode>();
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

void Update(benchmark::State& state) {
    const auto root = Tree();
    for ([[maybe_unused]] auto _ : state) {
        root->Update(1.0F / 60);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Update);

void Draw(benchmark::State& state) {
    const auto root = Tree();
    RecordingContext target;
    BrushCache cache;
    for ([[maybe_unused]] auto _ : state) {
        target.calls.clear();
        DrawContext context(&target, &cache, 1);
        root->Prepare(context);
        root->Draw(context);
        benchmark::ClobberMemory();
    }
    state.counters["calls"] = static_cast<double>(target.calls.size());
}
BENCHMARK(Draw);

/// The foremost node is found first, a point on nothing last.
void HitSearch(benchmark::State& state, Point point) {
    const auto root = Tree();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(FindNodeAt(root, point));
}
BENCHMARK_CAPTURE(HitSearch, foremost, Point{20 + 1.5F * (12 * perGroup + 5), 30 + 1.5F * (12 * (groups - 1) + 5)});
BENCHMARK_CAPTURE(HitSearch, rearmost, Point{20 + 1.5F * 5, 30 + 1.5F * 5});
BENCHMARK_CAPTURE(HitSearch, nothing, Point{-1, -1});

void RouteMoveOverTheRearmostNode(benchmark::State& state) {
    const auto root = Tree();
    int moves = 0;
    root->onPointerMove = [&moves](const InputEvent&) { ++moves; };
    InputRouter router;
    InputEvent event;
    event.x = 20 + 1.5F * 5;
    event.y = 30 + 1.5F * 5;
    for ([[maybe_unused]] auto _ : state) router.Route(root, event);
    benchmark::DoNotOptimize(moves);
}
BENCHMARK(RouteMoveOverTheRearmostNode);

}  // namespace

BENCHMARK_MAIN();
