#include "tools/scene_shot/Options.h"

#include <gtest/gtest.h>

using namespace SceneShot;

namespace {

Scene Named(std::string name, std::string shows) {
    return {std::move(name), std::move(shows), [](const View& view) { return RootInUnits(view); }};
}

}  // namespace

TEST(SceneShotOptions, AllAreRead) {
    const Options options = ReadOptions({"--scene", "text", "--width", "300", "--height", "200", "--dpi", "144",
                                         "--out", "a.png", "--nodes", "a.json"});
    EXPECT_EQ(options.scene, "text");
    EXPECT_EQ(options.view.width, 300U);
    EXPECT_EQ(options.view.height, 200U);
    EXPECT_EQ(options.view.Scale(), 1.5F);
    EXPECT_EQ(options.view.UnitsWide(), 200.0F);
    EXPECT_EQ(options.out, "a.png");
    EXPECT_EQ(options.nodes, "a.json");
}

TEST(SceneShotOptions, NodesAndDpiMayBeLeftOut) {
    const Options options = ReadOptions({"--scene", "text", "--width", "1", "--height", "1", "--out", "a.png"});
    EXPECT_EQ(options.view.Scale(), 1.0F);
    EXPECT_EQ(options.nodes, "");
}

TEST(SceneShotOptions, AWrongCommandLineIsRefused) {
    const std::vector<std::string> good = {"--scene", "text", "--width", "1", "--height", "1", "--out", "a.png"};
    for (std::size_t left = 0; left < good.size(); left += 2) {
        std::vector<std::string> words = good;
        words.erase(words.begin() + static_cast<std::ptrdiff_t>(left),
                    words.begin() + static_cast<std::ptrdiff_t>(left) + 2);
        EXPECT_THROW(ReadOptions(words), WrongUsage) << good[left];
    }
    const auto with = [&good](std::vector<std::string> more) {
        more.insert(more.begin(), good.begin(), good.end());
        return more;
    };
    for (const char* side : {"0", "-1", "16385", "1.5", "wide", ""}) {
        EXPECT_THROW(ReadOptions(with({"--width", side})), WrongUsage) << side;
    }
    for (const char* dpi : {"0", "-96", "nan", "inf", "large", ""}) {
        EXPECT_THROW(ReadOptions(with({"--dpi", dpi})), WrongUsage) << dpi;
    }
    EXPECT_THROW(ReadOptions(with({"--colour", "red"})), WrongUsage);
    EXPECT_THROW(ReadOptions(with({"--nodes"})), WrongUsage);
}

TEST(SceneShotOptions, ASceneTakesItsOwnWhereverItIsNamed) {
    std::string colour;
    bool large = false;
    Scene scene = Named("one", "first");
    scene.options = {{"--colour", "NAME", "of it", [&colour](const std::string& value) { colour = value; }},
                     {"--large", "", "larger", [&large](const std::string&) { large = true; }}};
    Scenes scenes;
    scenes.Add(scene);
    scenes.Add(Named("two", "second"));
    const std::vector<std::string> words = {"--large",  "--colour", "red",   "--width", "1",
                                            "--height", "1",        "--out", "a.png",   "--scene"};
    const auto of = [&words](const std::string& name) {
        std::vector<std::string> more = words;
        more.push_back(name);
        return more;
    };
    EXPECT_EQ(ReadOptions(of("one"), scenes).out, "a.png");
    EXPECT_EQ(colour, "red");
    EXPECT_TRUE(large);
    EXPECT_THROW(ReadOptions(of("two"), scenes), WrongUsage);
    EXPECT_THROW(ReadOptions(of("three"), scenes), WrongUsage);
    EXPECT_THROW(ReadOptions({"--scene", "one", "--colour"}, scenes), WrongUsage);
    EXPECT_NE(Usage(scenes).find("--colour NAME"), std::string::npos);
}

TEST(SceneShotScenes, AreFoundByNameAndListed) {
    Scenes scenes;
    scenes.Add(Named("one", "first"));
    scenes.Add(Named("two", "second"));
    scenes.Add(Named("one", "replaced"));
    ASSERT_NE(scenes.Find("one"), nullptr);
    EXPECT_EQ(scenes.Find("one")->shows, "replaced");
    EXPECT_EQ(scenes.Find("three"), nullptr);
    EXPECT_EQ(scenes.All().size(), 2U);
    EXPECT_NE(Usage(scenes).find("two"), std::string::npos);
    EXPECT_NE(Usage(scenes).find("second"), std::string::npos);
}

TEST(SceneShotScenes, ARootInUnitsScalesItsChildren) {
    EXPECT_EQ(RootInUnits({100, 100, 144})->localTransform, (Tamborel::Matrix3x2{1.5F, 0, 0, 1.5F, 0, 0}));
}
