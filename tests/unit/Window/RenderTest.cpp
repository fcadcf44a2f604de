#include "RenderTest.h"

#include "Core/DeviceManager.h"
#include "Scene/SceneNode.h"

namespace Tamborel {

namespace {

HWND FakeWindow() {
    return reinterpret_cast<HWND>(std::uintptr_t{0x1234});
}

}  // namespace

std::string NameOf(std::string_view call) {
    return std::string(call.substr(0, call.find('(')));
}

std::vector<std::string> NamesOf(const std::vector<std::string>& calls) {
    std::vector<std::string> names;
    names.reserve(calls.size());
    for (const std::string& call : calls) names.push_back(NameOf(call));
    return names;
}

RenderTest::RenderTest() {
    windows.Reset();
    EXPECT_GE(DeviceManager::Get().Initialize(), 0);
    recorder.TakeCalls();
    log.Take();
}

RenderTest::~RenderTest() = default;

void RenderTest::TearDown() {
    DeviceManager::Get().Shutdown();
    GraphicsTest::TearDown();
}

std::int64_t LoopTest::now = 0;

LoopTest::LoopTest() : stopEvent(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
    now = 0;
    Fakes::SignalFrameOnPresent(true);
    state.FrameTickEvent.Open();
    const RenderSideSetup setup{.window = FakeWindow(),
                                .state = state,
                                .stopRequested = stopRequested,
                                .stopEvent = stopEvent,
                                .ready = [this](bool ready) { readies.push_back(ready); },
                                .title = L"Window title"};
    loop = std::make_unique<RenderLoop>(setup, [] { return now; });
}

LoopTest::~LoopTest() {
    Fakes::SignalFrameOnPresent(false);
    CloseHandle(stopEvent);
}

void LoopTest::TearDown() {
    loop.reset();
    RenderTest::TearDown();
}

void LoopTest::SetUpLoop() {
    ASSERT_TRUE(loop->SetUp()) << log.Text();
    recorder.TakeCalls();
    log.Take();
}

void LoopTest::Turn() {
    ASSERT_TRUE(loop->RenderFrame());
}

void LoopTest::Settle() {
    for (int turns = 0; state.FrameDirty || state.ClientDirty || state.CommitNeeded; ++turns) {
        ASSERT_LT(turns, 10);
        Turn();
    }
    recorder.TakeCalls();
    log.Take();
}

void LoopTest::Resize(const WindowGeometry& geometry) {
    state.PendingGeometry.Store(geometry);
    state.ResizePending = true;
}

std::vector<std::string> LoopTest::TurnCalls() {
    recorder.TakeCalls();
    Turn();
    return NamesOf(recorder.TakeCalls());
}

}  // namespace Tamborel
