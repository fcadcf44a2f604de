// The frame of tests about text: fake devices, a context to draw in, and the record of both.
#pragma once

#include "Core/DeviceManager.h"
#include "Scene/DrawContext.h"
#include "tests/fakes/FakeDirect2D.h"
#include "tests/fakes/FakeTextLayout.h"
#include "tests/fakes/GraphicsTest.h"

#include <wrl/client.h>

#include <memory>
#include <string>
#include <vector>

namespace Tamborel {

using Lines = std::vector<std::string>;

class TextTest : public Fakes::GraphicsTest {
protected:
    void SetUp() override {
        ASSERT_EQ(DeviceManager::Get().Initialize(), S_OK);
        target.Attach(new Fakes::FakeDrawingContext(nullptr));
        context = std::make_unique<DrawContext>(target.Get(), &cache, 1.0F);
        recorder.TakeCalls();
    }

    void TearDown() override {
        Fakes::SetTextRuns(Fakes::DefaultTextRuns());
        context.reset();
        cache.brushes.clear();
        target.Reset();
        DeviceManager::Get().Shutdown();
        GraphicsTest::TearDown();
    }

    /// What a call to `step` does.
    template <class Step>
    Lines CallsOf(Step step) {
        recorder.TakeCalls();
        step();
        return recorder.TakeCalls();
    }

    Microsoft::WRL::ComPtr<Fakes::FakeDrawingContext> target;
    BrushCache cache;
    std::unique_ptr<DrawContext> context;
};

}  // namespace Tamborel
