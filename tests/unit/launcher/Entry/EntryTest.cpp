// Start and end of the launcher, in order, against a toolkit that only writes down what it is asked.

#include "launcher/Entry/Entry.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using Log = std::vector<std::string>;

/// What the recording toolkit answers, and what it was asked.
struct Recording {
    Log log;
    HRESULT initialize = S_OK;
    bool create = true;
    bool ready = true;
    std::optional<RECT> workArea = RECT{0, 0, 3000, 2000};
    std::wstring commandLine = L"launcher";
    Tamborel::WindowConfig config;
};
Recording* recording = nullptr;

void Say(std::string what) {
    recording->log.push_back(std::move(what));
}

struct FakeRenderer {
    FakeRenderer() { Say("renderer made"); }
    ~FakeRenderer() { Say("renderer gone"); }
    void SetBackground(Tamborel::BackgroundKind kind) {
        Say("background " + std::to_string(static_cast<unsigned>(kind)));
    }
    void SetColorGrade(const Tamborel::ColorGrade& given) {
        Say("grade");
        grade = given;
    }
    Tamborel::BackgroundTuning SurfaceTuning() const {
        Tamborel::BackgroundTuning tuning;
        tuning.viewScale = 3.5F;
        return tuning;
    }
    void SetSurfaceTuning(const Tamborel::BackgroundTuning& given) {
        Say("tuning");
        tuning = given;
    }
    static inline Tamborel::ColorGrade grade;
    static inline Tamborel::BackgroundTuning tuning;
};

struct FakeRoot {
    template <class Node>
    void AddChild(const std::shared_ptr<Node>&) {
        Say("scene attached");
    }
};

struct FakeWindow {
    FakeWindow() { Say("window made"); }
    ~FakeWindow() { Say("window gone"); }
    bool Create(HINSTANCE, int showCommand, const Tamborel::WindowConfig& config) {
        Say("create " + std::to_string(showCommand));
        recording->config = config;
        return recording->create;
    }
    bool WaitUntilReady() {
        Say("wait until ready");
        return recording->ready;
    }
    void SetBackgroundRenderer(FakeRenderer*) { Say("background renderer set"); }
    void PostToRenderThread(std::function<void()> closure) {
        Say("posted");
        closures.push_back(std::move(closure));
    }
    std::shared_ptr<FakeRoot> ClientRoot() const { return std::make_shared<FakeRoot>(); }
    void Shutdown() {
        Say("window shut down");
        closures.clear();
    }
    static inline std::vector<std::function<void()>> closures;
};

struct FakeScene {
    FakeScene(FakeWindow*, FakeRenderer*, bool developerControls, bool simulate) {
        Say(std::string("scene made") + (developerControls ? " developer" : "") + (simulate ? " simulated" : ""));
    }
    ~FakeScene() { Say("scene gone"); }
};

struct RecordingSystem {
    using BackgroundRenderer = FakeRenderer;
    using FrameWindow = FakeWindow;
    using LauncherScene = FakeScene;

    static void SetDpiAwareness() { Say("dpi awareness"); }
    static HRESULT Initialize() {
        Say("initialize");
        return recording->initialize;
    }
    static std::wstring CommandLine() {
        Say("command line");
        return recording->commandLine;
    }
    static std::optional<RECT> PrimaryWorkArea() {
        Say("work area");
        return recording->workArea;
    }
    static void WaitForWindows() {
        Say("wait for windows");
        // The render thread runs what was posted, in the order of posting.
        for (const auto& closure : FakeWindow::closures) closure();
        FakeWindow::closures.clear();
    }
    static void Shutdown() { Say("shutdown"); }
};

class Entry : public testing::Test {
protected:
    Entry() { recording = &recording_; }
    ~Entry() override {
        FakeWindow::closures.clear();
        recording = nullptr;
    }
    int Run() { return static_cast<int>(RunLauncher<RecordingSystem>(nullptr, SW_SHOWNORMAL)); }
    Tamborel::WindowConfig Fitted(const RECT& work) {
        recording_.workArea = work;
        EXPECT_EQ(Run(), 0);
        return recording_.config;
    }

    Recording recording_;
};

TEST_F(Entry, AGoodRunBringsUpAndTakesDownInOrder) {
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(recording_.log, (Log{"dpi awareness",    "initialize",       "command line",
                                   "renderer made",    "window made",      "work area",
                                   "create 1",         "wait until ready", "background renderer set",
                                   "posted",           "scene made",       "posted",
                                   "wait for windows", "background 0",     "grade",
                                   "tuning",           "scene attached",   "window shut down",
                                   "scene gone",       "window gone",      "renderer gone",
                                   "shutdown"}));
}

TEST_F(Entry, AToolkitThatDoesNotStartEndsWith1AndNothingElseExists) {
    recording_.initialize = E_FAIL;
    EXPECT_EQ(Run(), 1);
    EXPECT_EQ(recording_.log, (Log{"dpi awareness", "initialize"}));
}

TEST_F(Entry, AWindowThatCannotBeMadeEndsWith2AndTheToolkitGoesFirst) {
    recording_.create = false;
    EXPECT_EQ(Run(), 2);
    EXPECT_EQ(recording_.log, (Log{"dpi awareness", "initialize", "command line", "renderer made", "window made",
                                   "work area", "create 1", "shutdown", "window gone", "renderer gone"}));
}

TEST_F(Entry, AWindowThatDoesNotBecomeReadyEndsWith2AndTheToolkitGoesFirst) {
    recording_.ready = false;
    EXPECT_EQ(Run(), 2);
    EXPECT_EQ(recording_.log,
              (Log{"dpi awareness", "initialize", "command line", "renderer made", "window made", "work area",
                   "create 1", "wait until ready", "shutdown", "window gone", "renderer gone"}));
}

TEST_F(Entry, TheLookIsSetWithAllOtherTuningKept) {
    ASSERT_EQ(Run(), 0);
    EXPECT_EQ(FakeRenderer::grade,
              (Tamborel::ColorGrade{.hue = 21.0F, .saturation = 0.45F, .brightness = 0.0F, .contrast = 1.0F}));
    Tamborel::BackgroundTuning expected;
    expected.viewScale = 3.5F;
    expected.emberStrength = 0;
    EXPECT_EQ(FakeRenderer::tuning, expected);
}

TEST_F(Entry, TheWindowHasTheLaunchersTitleAndFrame) {
    ASSERT_EQ(Run(), 0);
    const Tamborel::WindowConfig& config = recording_.config;
    EXPECT_EQ(config.title, L"Velorinth Launcher for Quake II");
    EXPECT_TRUE(config.resizable);
    ASSERT_TRUE(config.theme);
    EXPECT_EQ(config.theme->FrameWidth, 8.0F);
    EXPECT_EQ(config.theme->TitleHeight, 36.0F);
    EXPECT_EQ(config.theme->Scale, 1.0F);
    EXPECT_EQ(config.theme->InnerBorderWidth, 1.0F);
    EXPECT_EQ(config.theme->ClientExtensionLeft, 0.0F);
    EXPECT_EQ(config.theme->ClientExtensionBottom, 0.0F);
    EXPECT_FALSE(config.theme->ButtonWidth);
    EXPECT_FALSE(config.theme->TitleBarFill);
}

TEST_F(Entry, OnASmallWorkAreaTheWindowFillsIt) {
    const Tamborel::WindowConfig config = Fitted({0, 40, 1280, 1024});
    EXPECT_EQ(config.width, 1280);
    EXPECT_EQ(config.height, 984);
    EXPECT_EQ(config.x, 0);
    EXPECT_EQ(config.y, 40);
}

TEST_F(Entry, OnALowWideWorkAreaTheWindowIsCentredSideways) {
    const Tamborel::WindowConfig config = Fitted({0, 0, 1920, 1040});
    EXPECT_EQ(config.width, 1538);
    EXPECT_EQ(config.height, 1040);
    EXPECT_EQ(config.x, 191);
    EXPECT_EQ(config.y, 0);
}

TEST_F(Entry, AnOddFreeWidthLeavesTheWindowOnePixelLeftOfTheCentre) {
    const Tamborel::WindowConfig config = Fitted({0, 0, 1541, 2000});
    EXPECT_EQ(config.x, 1);
    EXPECT_EQ(config.y, 247);
}

TEST_F(Entry, WithoutAMonitorSizeAndPositionStay) {
    recording_.workArea.reset();
    ASSERT_EQ(Run(), 0);
    EXPECT_EQ(recording_.config.width, 1538);
    EXPECT_EQ(recording_.config.height, 1505);
    EXPECT_EQ(recording_.config.x, CW_USEDEFAULT);
    EXPECT_EQ(recording_.config.y, CW_USEDEFAULT);
}

TEST_F(Entry, ArgumentsChangeNothing) {
    ASSERT_EQ(Run(), 0);
    const Log plain = std::exchange(recording_.log, {});
    recording_.commandLine = L"launcher --developer --smoke -windowed /reset";
    ASSERT_EQ(Run(), 0);
    EXPECT_EQ(recording_.log, plain);
}

}  // namespace
