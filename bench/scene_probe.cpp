// What a frame of 200 nodes costs through DrawContext and Direct2D, on a surface of a window's size that no window
// shows.
#include "BenchScene.h"
#include "Core/RenderDevice.h"
#include "Core/Toolkit.h"
#include "Scene/BrushCache.h"
#include "StartReport.h"
#include "Window/WindowSurface.h"

#include <wrl/client.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

using namespace Tamborel;
using Microsoft::WRL::ComPtr;

namespace {

constexpr SIZE size{1280, 984};
constexpr int warmUp = 50;   // frames
constexpr int frames = 400;  // of each measurement

/// Draws one frame as the render loop does. The processor time of this thread, in milliseconds. What a device does is
/// not in it, but for a software device's part of it that this thread carries out: laying the drawing over the buffer.
double DrawFrame(WindowSurface& surface, SceneNode& root, BrushCache& cache) {
    const double before = StartReport::ThreadMilliseconds();
    (void)surface.BeginDraw();
    const D2D1_COLOR_F clear{0.05F, 0.05F, 0.08F, 1};
    surface.GetDC()->Clear(&clear);
    {
        DrawContext context(surface.GetDC(), &cache, surface.GetSdrWhiteScale());
        root.Prepare(context);
        root.Draw(context);
    }
    (void)surface.EndDraw();
    return StartReport::ThreadMilliseconds() - before;
}

/// Says the median of many frames, and the mean of what all threads did for one, the device's among them and with its
/// presentation. `change` runs ahead of each.
template <class Change>
void Measure(const std::string& name, WindowSurface& surface, SceneNode& root, BrushCache& cache, Change change) {
    std::vector<double> costs;
    double before = 0;
    for (int frame = 0; frame < warmUp + frames; ++frame) {
        if (frame == warmUp) before = StartReport::ProcessorMilliseconds();
        change(frame);
        root.Update(0);
        const double cost = DrawFrame(surface, root, cache);
        if (frame >= warmUp) costs.push_back(cost);
        surface.Present(1);
    }
    const double all = (StartReport::ProcessorMilliseconds() - before) / frames;
    std::ranges::nth_element(costs, costs.begin() + frames / 2);
    StartReport::Say(name.c_str(), costs[frames / 2]);
    StartReport::Say((name + "_all").c_str(), all);
}

int Measure() {
    RenderDevice device;
    if (FAILED(device.Initialize())) return 2;
    {
        ComPtr<IDCompositionVisual2> visual;
        WindowSurface surface;
        if (FAILED(device.GetDCompDevice()->CreateVisual(&visual)) ||
            FAILED(surface.Initialize(device, size, DXGI_ALPHA_MODE_IGNORE, visual.Get()))) {
            return 2;
        }
        const auto root = BenchScene::Make();
        BenchScene::Square& last = static_cast<BenchScene::Square&>(*root->children.back()->children.back());
        BrushCache cache;
        Measure("unchanged", surface, *root, cache, [](int) {});
        Measure("changed", surface, *root, cache, [&last](int frame) { last.color.b = frame % 2 ? 0.75F : 0.25F; });
        const auto empty = std::make_shared<SceneNode>();
        Measure("empty", surface, *empty, cache, [](int) {});
    }
    device.Release();
    return 0;
}

}  // namespace

int main() {
    if (FAILED(Initialize())) return 1;
    const int result = Measure();
    Shutdown();
    return result;
}
