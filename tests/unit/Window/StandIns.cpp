#include "StandIns.h"

#include "Core/Toolkit.h"

namespace Tamborel {

namespace {

class StandInSide : public RenderSide {
public:
    explicit StandInSide(const RenderSideSetup& setup) : setup_(setup) {}
    ~StandInSide() override { ++RenderStandIn::Get().ended; }

    void Run() override {
        const bool succeeds = RenderStandIn::Get().setUpSucceeds;
        setup_.state.SurfacesReady = succeeds;
        setup_.ready(succeeds);
        if (!succeeds) return;
        while (!setup_.stopRequested) {
            setup_.state.Closures.RunPending();
            if (setup_.state.InSizeMove && RenderStandIn::Get().countsFrames) {
                ++setup_.state.FrameCounter;
                setup_.state.FrameTickEvent.Signal();
            }
            if (WaitForSingleObjectEx(setup_.stopEvent, 1, FALSE) == WAIT_OBJECT_0) return;
        }
    }

    void SetBackground(BackgroundRenderer* renderer) override { RenderStandIn::Get().background = renderer; }
    std::shared_ptr<SceneNode> ClientRoot() override { return nullptr; }

private:
    const RenderSideSetup setup_;
};

}  // namespace

RenderStandIn& RenderStandIn::Get() {
    static RenderStandIn instance;
    return instance;
}

void RenderStandIn::Reset() {
    setUpSucceeds = true;
    made = 0;
    ended = 0;
    countsFrames = true;
    background = nullptr;
}

std::unique_ptr<RenderSide> MakeRenderSide(const RenderSideSetup& setup) {
    ++RenderStandIn::Get().made;
    return std::make_unique<StandInSide>(setup);
}

std::atomic<int> WindowCount::added{0};
std::atomic<int> WindowCount::released{0};

void AddWindowRef() {
    ++WindowCount::added;
}

void ReleaseWindowRef() {
    ++WindowCount::released;
}

}  // namespace Tamborel
