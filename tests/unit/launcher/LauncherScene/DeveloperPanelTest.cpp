// The panel for people who work on the screen, and the simulated states.

#include "SceneTest.h"

namespace {

using Tamborel::InputEventKind;

class DeveloperPanel : public SceneTest {
protected:
    void DragOpacity(float x) { Point(InputEventKind::PointerDown, {x, 841}, 1); }
    std::wstring ColourLabel(std::size_t row) const { return scene_->colorLabels[row]->text; }
};

TEST_F(DeveloperPanel, IsNotThereWithoutItsArgument) {
    Show();
    EXPECT_EQ(scene_->opacityThumb, nullptr);
    EXPECT_EQ(ButtonNamed(L"Reset"), nullptr);
}

TEST_F(DeveloperPanel, ThePressesOfTheOpacitySliderGiveTheToldPercentages) {
    Show(true);
    const struct {
        float x;
        int percent;
    } cases[] = {{250, 0}, {650, 100}, {240, 0}, {659, 100}, {450, 50}};
    for (const auto& [x, percent] : cases) {
        DragOpacity(x);
        EXPECT_EQ(scene_->overlayOpacity, percent) << x;
    }
    // The far edge is outside the node; the handler limits what it is given all the same.
    Tamborel::InputEvent event;
    event.kind = InputEventKind::PointerDown;
    event.x = 660;
    event.buttons = 1;
    for (auto* node : All<Tamborel::RectangleNode>()) {
        if (node->onPointerDown && node->rect.top == 825) node->onPointerDown(event);
    }
    EXPECT_EQ(scene_->overlayOpacity, 100);
}

TEST_F(DeveloperPanel, TheSliderMovesThumbLabelAndCardWithoutARebuild) {
    Show(true);
    const auto nodes = scene_->children;
    DragOpacity(350);
    Frame();
    EXPECT_EQ(scene_->children, nodes);
    EXPECT_EQ(scene_->opacityThumb->center.x, 350);
    EXPECT_EQ(scene_->opacityLabel->text, L"Overlay opacity: 25%");
    EXPECT_TRUE(scene_->opacityLabel->layoutDirty);
    EXPECT_FLOAT_EQ(scene_->cardNode->fillColor.a, 0.25F);
}

TEST_F(DeveloperPanel, ADragThatLeavesTheZoneStopsUntilItReturns) {
    Show(true);
    DragOpacity(450);
    Point(InputEventKind::PointerMove, {500, 800}, 1);
    EXPECT_EQ(scene_->overlayOpacity, 50);
    Point(InputEventKind::PointerMove, {500, 841}, 1);
    EXPECT_EQ(scene_->overlayOpacity, 63);
}

TEST_F(DeveloperPanel, AMoveWithoutTheLeftButtonChangesNothing) {
    Show(true);
    Point(InputEventKind::PointerMove, {450, 841}, 0);
    Point(InputEventKind::PointerDown, {450, 841}, 2);
    EXPECT_EQ(scene_->overlayOpacity, 85);
}

TEST_F(DeveloperPanel, TheColourRowsReadTheirValuesWithSignAndUnit) {
    Show(true);
    renderer_.SetColorGrade({.hue = -180, .saturation = 1.0F, .brightness = -0.5F, .contrast = 1.25F});
    Frame();
    EXPECT_EQ(ColourLabel(0), L"Hue: -180°");
    EXPECT_EQ(ColourLabel(1), L"Saturation: 100%");
    EXPECT_EQ(ColourLabel(2), L"Brightness: -50%");
    EXPECT_EQ(ColourLabel(3), L"Contrast: 125%");
    EXPECT_EQ(scene_->colorThumbs[0]->center.x, 250);
    EXPECT_EQ(scene_->colorThumbs[2]->center, (Tamborel::Point{350, 983}));
    EXPECT_EQ(scene_->backgroundLabel->text, L"Background: Liquid Metal");
}

TEST_F(DeveloperPanel, TheColourSlidersSetTheCurrentKindsGrade) {
    Show(true);
    Point(InputEventKind::PointerDown, {250, 915}, 1);
    Point(InputEventKind::PointerDown, {650, 949}, 1);
    Point(InputEventKind::PointerDown, {350, 983}, 1);
    Point(InputEventKind::PointerDown, {450, 1017}, 1);
    const Tamborel::ColorGrade grade = renderer_.Grade();
    EXPECT_NEAR(grade.hue, -180, 1e-3);
    EXPECT_NEAR(grade.saturation, 2, 1e-5);
    EXPECT_NEAR(grade.brightness, -0.5, 1e-5);
    EXPECT_NEAR(grade.contrast, 1, 1e-5);
}

TEST_F(DeveloperPanel, CopperSwitchesTheEmberAndSaysSoOnTheNextFrame) {
    Show(true);
    ASSERT_NE(ButtonNamed(L"Metal copper: on"), nullptr);
    Click({600, 884});
    EXPECT_EQ(renderer_.SurfaceTuning().emberStrength, 0);
    ASSERT_NE(ButtonNamed(L"Metal copper: off"), nullptr);
    Click({600, 884});
    EXPECT_FLOAT_EQ(renderer_.SurfaceTuning().emberStrength, 0.85F);
    EXPECT_NE(ButtonNamed(L"Metal copper: on"), nullptr);
}

TEST_F(DeveloperPanel, ResetKeepsTheGradeAndResetColorResetsOnlyTheCurrentKinds) {
    Show(true);
    renderer_.SetColorGrade({.hue = 20, .saturation = 0.5F, .brightness = 0, .contrast = 1});
    renderer_.SetBackground(Tamborel::BackgroundKind::DawnGrid);
    renderer_.SetColorGrade({.hue = 30, .saturation = 0.5F, .brightness = 0, .contrast = 1});
    scene_->overlayOpacity = 10;
    scene_->displayMode = 0;
    scene_->fullscreen = false;
    Click({730, 800});
    EXPECT_EQ(scene_->overlayOpacity, 85);
    EXPECT_EQ(scene_->displayMode, 4);
    EXPECT_TRUE(scene_->fullscreen);
    EXPECT_EQ(renderer_.Grade().hue, 30);
    Click({730, 917});
    EXPECT_EQ(renderer_.Grade(), Tamborel::ColorGrade{});
    renderer_.SetBackground(Tamborel::BackgroundKind::LiquidMetal);
    EXPECT_EQ(renderer_.Grade().hue, 20);
}

TEST_F(DeveloperPanel, GameExitWithARealGameClearsTheFlagAndTheGameIsWatchedOn) {
    Show(true);
    scene_->gameHandle = std::make_shared<GameLaunch::Handle>();
    scene_->gameRunning = true;
    scene_->needsRebuild = true;
    Frame();
    Click({620, 800});
    EXPECT_FALSE(scene_->gameRunning);
    EXPECT_NE(scene_->gameHandle, nullptr);
    actions_->exitCode = 5;
    Frame();
    EXPECT_EQ(scene_->statusText, L"Quake II exited with error 5. See baseq2/qconsole.log in the game folder.");
}

TEST_F(DeveloperPanel, TheSimulationWalksThroughTheStatesWithoutAGame) {
    actions_->settings.Folder = L"/never/read";
    Show(true, true);
    EXPECT_TRUE(Shows(L"Smoke test · Game actions are simulated"));
    EXPECT_TRUE(Shows(L"C:\\Games\\Quake II (test fixture)"));
    Click({510, 800});  // No game
    EXPECT_TRUE(Shows(L"No installation selected"));
    Click(kFind);
    EXPECT_TRUE(scene_->installationValid);
    EXPECT_FALSE(scene_->smokeBrowsed);
    Click(kBrowse);
    EXPECT_TRUE(scene_->smokeBrowsed);
    Click(kLaunch);
    EXPECT_TRUE(Shows(L"Quake II is running"));
    EXPECT_FALSE(ButtonNamed(L"No game")->enabled);
    Click({620, 800});  // Game exit
    EXPECT_TRUE(Shows(L"Ready to launch"));
    Click({730, 800});  // Reset
    EXPECT_FALSE(scene_->smokeBrowsed);
    EXPECT_TRUE(scene_->installationValid);
    EXPECT_TRUE(actions_->saved.empty());
    EXPECT_TRUE(actions_->judged.empty());
}

}  // namespace
