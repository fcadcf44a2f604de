// One frame's walks over a tree of 200 nodes, and one pointer event through it. Nothing is painted: the device context
// writes down its calls, so what is measured is the tree and DrawContext.
#include "BenchScene.h"
#include "Scene/DrawContext.h"
#include "Scene/InputDelivery.h"
#include "Scene/InputRouter.h"
#include "tests/fakes/RecordingContext.h"

#include <benchmark/benchmark.h>

using namespace Tamborel;
using BenchScene::groups;
using BenchScene::perGroup;

namespace {

void Update(benchmark::State& state) {
    const auto root = BenchScene::Make();
    for ([[maybe_unused]] auto _ : state) {
        root->Update(1.0F / 60);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Update);

void Draw(benchmark::State& state) {
    const auto root = BenchScene::Make();
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
    const auto root = BenchScene::Make();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(FindNodeAt(root, point));
}
BENCHMARK_CAPTURE(HitSearch, foremost, Point{20 + 1.5F * (12 * perGroup + 5), 30 + 1.5F * (12 * (groups - 1) + 5)});
BENCHMARK_CAPTURE(HitSearch, rearmost, Point{20 + 1.5F * 5, 30 + 1.5F * 5});
BENCHMARK_CAPTURE(HitSearch, nothing, Point{-1, -1});

void RouteMoveOverTheRearmostNode(benchmark::State& state) {
    const auto root = BenchScene::Make();
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
