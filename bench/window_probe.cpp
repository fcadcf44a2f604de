// A window of the toolkit's, measured from inside: window_probe WIDTH HEIGHT [SECONDS [KIND]].
//
// Without SECONDS it shows its window until the end of its standard input. With them it shows an empty scene over an
// animated background of that kind for so long, and tells what a frame costs.
#include "Background/BackgroundRenderer.h"
#include "Core/Toolkit.h"
#include "Scene/SceneNode.h"
#include "StartReport.h"
#include "Window/FrameWindow.h"

#include <windows.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>

using namespace Tamborel;

namespace {

/// What had been used when a frame began.
struct Reading {
    double milliseconds;  ///< Since the start.
    double process;       ///< Processor time of all threads, the software device's among them.
    double renderThread;  ///< Of the thread that this is read on.
};

Reading ReadClocks() {
    return {StartReport::MillisecondsSinceStart(), StartReport::ProcessorMilliseconds(),
            StartReport::ThreadMilliseconds()};
}

/// Counts the frames of its window between the first one after the warm-up and the last one, and paints nothing.
class Counting : public SceneNode {
public:
    static constexpr int warmUp = 30;  // frames: programs compiled, buffers made

    explicit Counting(double seconds) : duration_(seconds * 1000) {}

    void Animate(float) override {
        const int frame = frames_++ - warmUp;
        if (frame < 0 || done_) return;
        last_ = ReadClocks();
        if (frame == 0) first_ = last_;
        measured_ = frame;
        if (last_.milliseconds - first_.milliseconds < duration_) return;
        done_ = true;
        finished.set_value();
    }

    void Report() const {
        StartReport::Say("frames", measured_);
        StartReport::Say("rate", measured_ * 1000 / (last_.milliseconds - first_.milliseconds));
        StartReport::Say("processor", (last_.process - first_.process) / measured_);
        StartReport::Say("thread", (last_.renderThread - first_.renderThread) / measured_);
    }

    std::promise<void> finished;

private:
    double duration_;  // milliseconds
    int frames_ = 0;
    int measured_ = 0;
    bool done_ = false;
    Reading first_{};
    Reading last_{};
};

void MeasureFrames(FrameWindow& window, BackgroundRenderer& background, double seconds) {
    const auto counting = std::make_shared<Counting>(seconds);
    window.SetBackgroundRenderer(&background);
    window.PostToRenderThread([&window, counting] { window.ClientRoot()->AddChild(counting); });
    counting->finished.get_future().wait();
    counting->Report();
}

int Run(int width, int height, double seconds, BackgroundKind kind) {
    if (FAILED(Initialize())) return 1;
    StartReport::Say("toolkit", StartReport::MillisecondsSinceStart());
    BackgroundRenderer background;
    background.SetBackground(kind);
    FrameWindow window;
    WindowConfig config;
    config.x = 0;
    config.y = 0;
    config.width = width;
    config.height = height;
    window.Create(nullptr, SW_SHOWNORMAL, config);
    if (!window.WaitUntilReady()) return 2;
    StartReport::Say("device", StartReport::MillisecondsSinceStart());
    if (seconds > 0) {
        MeasureFrames(window, background, seconds);
    } else {
        StartReport::AwaitEnd();
    }
    StartReport::Say("peak", StartReport::PeakMebibytes());
    window.Shutdown();
    Shutdown();
    return 0;
}

}  // namespace

int main(int count, char** words) {
    StartReport::MillisecondsSinceStart();
    if (count < 3) {
        std::fputs("use: window_probe WIDTH HEIGHT [SECONDS [KIND]]\n", stderr);
        return 1;
    }
    const auto kind = static_cast<BackgroundKind>(count > 4 ? std::atoi(words[4]) : 0);
    return Run(std::atoi(words[1]), std::atoi(words[2]), count > 3 ? std::atof(words[3]) : 0, kind);
}
