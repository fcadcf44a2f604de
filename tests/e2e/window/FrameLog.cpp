#include "FrameLog.h"

#include <chrono>
#include <utility>

using namespace Tamborel;

namespace {

/// Drives the loop by hand, as its own Run does, and writes down what came of each turn.
class LoggedSide final : public RenderSide {
public:
    explicit LoggedSide(const RenderSideSetup& setup)
        : window_(setup.window), stopRequested_(setup.stopRequested), ready_(setup.ready), loop_(setup) {}

    void Run() override {
        const bool isSetUp = loop_.SetUp();
        ready_(isSetUp);
        if (!isSetUp) return;
        while (!stopRequested_ && loop_.RenderFrame()) {
            loop_.CountFrame();
            Write();
        }
        loop_.TearDown();
    }

    void SetBackground(BackgroundRenderer* renderer) override { loop_.SetBackground(renderer); }
    std::shared_ptr<SceneNode> ClientRoot() override { return loop_.ClientRoot(); }
    SIZE FrameSurfaceSize() const override { return loop_.FrameSurfaceSize(); }
    void SetChromeTitle(const std::wstring& title) override { AsSide().SetChromeTitle(title); }
    void SetChromeTheme(const ChromeTheme& theme) override { AsSide().SetChromeTheme(theme); }
    void SetChromeTitleImage(const std::shared_ptr<ImageAsset>& image) override { AsSide().SetChromeTitleImage(image); }

private:
    RenderSide& AsSide() { return loop_; }

    void Write() {
        const RenderCounters& now = loop_.Counters;
        const Counts counts{now.Turns, now.FramePasses, now.ClientPasses, now.Presents, now.Commits, now.Resizes};
        if (now.Commits == lastCommits_) return FrameLog::Get().Count(window_, counts);
        lastCommits_ = now.Commits;
        FrameLog::Get().Add(window_, {FrameLog::Now(), loop_.FrameSurfaceSize()}, counts);
    }

    HWND window_;
    const std::atomic<bool>& stopRequested_;
    std::function<void(bool)> ready_;
    RenderLoop loop_;
    std::uint64_t lastCommits_ = 0;
};

}  // namespace

// In the place of the toolkit's own, whose file is not linked then.
std::unique_ptr<RenderSide> Tamborel::MakeRenderSide(const RenderSideSetup& setup) {
    return std::make_unique<LoggedSide>(setup);
}

FrameLog& FrameLog::Get() {
    static FrameLog log;
    return log;
}

double FrameLog::Now() {
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

void FrameLog::Add(HWND window, const FinishedFrame& frame, const Counts& counts) {
    const std::lock_guard lock(mutex_);
    entries_[window].counts = counts;
    entries_[window].frames.push_back(frame);
}

void FrameLog::Count(HWND window, const Counts& counts) {
    const std::lock_guard lock(mutex_);
    entries_[window].counts = counts;
}

Counts FrameLog::CountsOf(HWND window) {
    const std::lock_guard lock(mutex_);
    return entries_[window].counts;
}

std::vector<FinishedFrame> FrameLog::TakeFrames(HWND window) {
    const std::lock_guard lock(mutex_);
    return std::exchange(entries_[window].frames, {});
}
