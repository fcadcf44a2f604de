// The screen, node by node, against a table of its own.

#include "SceneTest.h"

#include "Scene/ImagePrimitive.h"

#include <optional>
#include <variant>

namespace {

using Tamborel::Button;
using Tamborel::Color;
using Tamborel::ImagePrimitive;
using Tamborel::Rect;
using Tamborel::RectangleNode;

struct Box {
    float x, y, width, height;
    unsigned fill;
    unsigned stroke = 0;
    float radius = 0;
    float alpha = 1;
};
struct Text {
    float x, y, width, height;
    std::wstring text;
    float size;
    unsigned colour;
    bool semibold = false;
    unsigned align = 0;
    unsigned paragraph = 0;
};
struct Disc {
    float x, y, radius;
    unsigned colour;
};
struct Press {
    float x, y, width, height;
    std::wstring label;
    bool enabled;
    unsigned fill, colour;
    bool bordered = false;
};
struct Border {
    Rect rect;
};
struct Logo {};
struct Backdrop {
    float height;
};
using Row = std::variant<Box, Text, Disc, Press, Border, Logo, Backdrop>;

Color Of(unsigned hex, float alpha = 1) {
    const auto channel = [hex](unsigned shift) { return static_cast<float>(hex >> shift & 255U) / 255.0F; };
    return {channel(16), channel(8), channel(0), alpha};
}

void Expect(const Box& row, const Tamborel::SceneNode& child) {
    const auto* node = dynamic_cast<const RectangleNode*>(&child);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->rect, (Rect{row.x, row.y, row.x + row.width, row.y + row.height}));
    EXPECT_EQ(node->fillColor, Of(row.fill, row.alpha));
    if (row.alpha > 0) {
        EXPECT_EQ(node->strokeWidth, row.stroke ? 1.0F : 0.0F);
    }
    if (row.stroke) {
        EXPECT_EQ(node->strokeColor, Of(row.stroke));
    }
    EXPECT_EQ(node->radiusX, row.radius);
    EXPECT_EQ(node->radiusY, row.radius);
    EXPECT_TRUE(node->HitTest({row.x, row.y}));
}

void Expect(const Text& row, const Tamborel::SceneNode& child) {
    const auto* node = dynamic_cast<const DecorationText*>(&child);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->bounds, (Rect{row.x, row.y, row.x + row.width, row.y + row.height}));
    EXPECT_EQ(node->text, row.text);
    EXPECT_EQ(node->fontFamily, L"Segoe UI");
    EXPECT_EQ(node->fontSize, row.size);
    EXPECT_EQ(node->fontWeight, row.semibold ? 600U : 400U);
    EXPECT_EQ(node->color, Of(row.colour));
    EXPECT_EQ(node->textAlignment, row.align);
    EXPECT_EQ(node->paragraphAlignment, row.paragraph);
}

void Expect(const Disc& row, const Tamborel::SceneNode& child) {
    const auto* node = dynamic_cast<const DecorationEllipse*>(&child);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->center, (Tamborel::Point{row.x, row.y}));
    EXPECT_EQ(node->radiusX, row.radius);
    EXPECT_EQ(node->radiusY, row.radius);
    EXPECT_EQ(node->fillColor, Of(row.colour));
    EXPECT_EQ(node->strokeColor.a, 0);
}

void Expect(const Press& row, const Tamborel::SceneNode& child) {
    const auto* node = dynamic_cast<const Button*>(&child);
    ASSERT_NE(node, nullptr);
    const Button plain;
    EXPECT_EQ(node->rect, (Rect{row.x, row.y, row.x + row.width, row.y + row.height}));
    EXPECT_EQ(node->label, row.label);
    EXPECT_EQ(node->enabled, row.enabled);
    EXPECT_EQ(node->fontSize, 13.0F);
    EXPECT_EQ(node->fontWeight, 400U);
    EXPECT_EQ(node->cornerRadius, row.bordered ? 10.0F : 6.0F);
    EXPECT_EQ(node->normalColor, Of(row.fill));
    EXPECT_EQ(node->hoverColor, Of(row.fill == 0x72D6C8 ? 0x93E7DCU : 0x35433FU));
    EXPECT_EQ(node->pressedColor, Of(0x405550));
    EXPECT_EQ(node->textColor, Of(row.colour));
    EXPECT_EQ(node->disabledColor, plain.disabledColor);
    EXPECT_EQ(node->disabledTextColor, plain.disabledTextColor);
}

void Expect(const Border& row, const Tamborel::SceneNode& child) {
    const auto* node = dynamic_cast<const DecorationRectangle*>(&child);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->rect, row.rect);
    EXPECT_EQ(node->fillColor.a, 0);
    EXPECT_EQ(node->strokeColor, Of(0x455056));
    EXPECT_EQ(node->strokeWidth, 1.0F);
    EXPECT_EQ(node->radiusX, 9.5F);
    EXPECT_EQ(node->radiusY, 9.5F);
}

void Expect(const Backdrop& row, const Tamborel::SceneNode& child) {
    const auto* node = dynamic_cast<const Button*>(&child);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->rect, (Rect{0, 0, 820, row.height}));
    EXPECT_EQ(node->label, L"");
    for (const Color& colour : {node->normalColor, node->hoverColor, node->pressedColor}) EXPECT_EQ(colour.a, 0);
}

class Layout : public SceneTest {
protected:
    void ExpectRows(const std::vector<Row>& rows) {
        ASSERT_EQ(scene_->children.size(), rows.size());
        for (std::size_t index = 0; index < rows.size(); ++index) {
            SCOPED_TRACE("child " + std::to_string(index));
            const Tamborel::SceneNode& child = *scene_->children[index];
            if (std::holds_alternative<Logo>(rows[index])) {
                const auto* node = dynamic_cast<const ImagePrimitive*>(&child);
                ASSERT_NE(node, nullptr);
                EXPECT_EQ(node->asset, scene_->logoImage);
                EXPECT_EQ(node->rect.left, 36);
                EXPECT_EQ(node->rect.top, 24);
                EXPECT_EQ(node->rect.right, 36 + scene_->logoWidth);
                EXPECT_FLOAT_EQ(node->rect.bottom, 24 + scene_->logoWidth * 520 / 2771);
                continue;
            }
            std::visit(
                [&](const auto& row) {
                    if constexpr (!std::is_same_v<std::decay_t<decltype(row)>, Logo>) Expect(row, child);
                },
                rows[index]);
        }
    }
};

constexpr unsigned kBright = 0xE9EEEE;
constexpr unsigned kGrey = 0x9CA8AD;
constexpr unsigned kLine = 0x333B40;
constexpr unsigned kGreen = 0x72D6C8;

/// The screen on a valid folder, with KVR2, fullscreen and mode 4.
std::vector<Row> ReadyRows(float height = 770) {
    return {
        Box{0, 0, 820, height, 0, 0, 12, 0.85F},
        Logo{},
        Text{410, 32, 374, 24, L"© 2026 Velorinth Interactive", 14, kGrey, false, 1},
        Box{36, 96, 748, 1, kLine},
        Text{36, 108, 748, 35, L"Play Quake II with a software renderer", 25, kBright, true},
        Text{36, 149, 748, 26, L"Choose your renderer and display settings, then launch the game.", 14, kGrey},
        Box{36, 185, 748, 1, kLine},
        Text{36, 199, 450, 23, L"Game installation", 13, kBright, true},
        Box{36, 234, 748, 80, 0x171C1F, kLine, 8},
        Box{54, 253, 40, 40, 0x323129, 0, 8},
        Text{60, 258, 35, 30, L"Q II", 16, 0xD5C18E, true},
        Text{110, 246, 400, 26, L"Quake II · Classic installation", 14, kBright, true},
        Text{110, 273, 400, 36, L"/games/quake2", 11, kGrey},
        Text{540, 244, 225, 23, L"● Ready", 11, kGreen},
        Text{540, 269, 225, 40, L"Quake II installation verified.", 11, kGrey},
        Press{36, 325, 148, 35, L"Find automatically", true, 0x272E33, kBright, true},
        Border{{36.5F, 325.5F, 183.5F, 359.5F}},
        Press{194, 325, 161, 35, L"Browse for game…", true, 0x1B2024, kBright, true},
        Border{{194.5F, 325.5F, 354.5F, 359.5F}},
        Text{36, 363, 748, 23, L"", 11, kGrey},
        Text{36, 387, 500, 23, L"Renderer", 13, kBright, true},
        Box{36, 424, 364, 101, 0x223331, kGreen, 8},
        Press{37, 425, 362, 99, L"", true, 0x223331, kBright},
        Disc{59, 450, 7, kGreen},
        Disc{59, 450, 5, 0x223331},
        Disc{59, 450, 3, kGreen},
        Text{78, 434, 70, 28, L"KVR2", 14, kBright, true},
        Text{130, 437, 150, 23, L"MODERN", 10, kGreen},
        Text{78, 466, 310, 46, L"Multithreaded, tile-based rendering\nwith AVX2 and AVX-512 support.", 12, kGrey},
        Box{420, 424, 364, 101, 0x20262A, kLine, 8},
        Press{421, 425, 362, 99, L"", true, 0x20262A, kBright},
        Disc{443, 450, 7, 0x59656B},
        Disc{443, 450, 5, 0x20262A},
        Text{462, 434, 70, 28, L"KVR", 14, kBright, true},
        Text{514, 437, 150, 23, L"ORIGINAL", 10, 0xC7BAA0},
        Text{462, 466, 310, 46, L"The classic software renderer, written in 2003.\nSingle-threaded SSE and MMX.", 12,
             kGrey},
        Box{36, 550, 748, 1, kLine},
        Text{36, 567, 360, 27, L"Resolution", 13, kBright, true},
        Text{432, 567, 350, 27, L"Display mode", 13, kBright, true},
        Box{36, 604, 360, 43, 0x171C1F, 0x455056, 6},
        Press{37, 605, 358, 41, L"", true, 0x171C1F, kBright},
        Text{49, 609, 302, 32, L"800 × 600", 13, kBright},
        Text{365, 608, 20, 32, L"⌄", 16, kGrey},
        Press{432, 611, 35, 22, L"", true, 0x61B5A9, kBright},
        Disc{457, 622, 7, 0xE6EEEE},
        Text{480, 606, 200, 35, L"Fullscreen", 14, kBright},
        Text{36, 655, 360, 22, L"Standard Quake II display modes.", 11, kGrey},
        Text{432, 655, 350, 22, L"Use the entire screen.", 11, kGrey},
        Box{0, 696, 820, 74, 0x20272B},
        Box{0, 696, 820, 1, kLine},
        Text{36, 711, 480, 44, L"Ready to launch", 13, kBright, true, 0, 2},
        Press{588, 711, 196, 44, L"Launch with KVR2 ↗", true, kGreen, 0x112622},
    };
}

TEST_F(Layout, TheReadyScreenIsTheTable) {
    ShowReady();
    ExpectRows(ReadyRows());
}

TEST_F(Layout, TheOriginalRendererAndAWindowSwapMarksKnobAndTexts) {
    ShowReady();
    scene_->modernRenderer = false;
    scene_->fullscreen = false;
    scene_->needsRebuild = true;
    Frame();
    std::vector<Row> rows = ReadyRows();
    rows[21] = Box{36, 424, 364, 101, 0x20262A, kLine, 8};
    rows[22] = Press{37, 425, 362, 99, L"", true, 0x20262A, kBright};
    rows[23] = Disc{59, 450, 7, 0x59656B};
    rows[24] = Disc{59, 450, 5, 0x20262A};
    rows.erase(rows.begin() + 25);
    rows[28] = Box{420, 424, 364, 101, 0x223331, kGreen, 8};
    rows[29] = Press{421, 425, 362, 99, L"", true, 0x223331, kBright};
    rows[30] = Disc{443, 450, 7, kGreen};
    rows[31] = Disc{443, 450, 5, 0x223331};
    rows.insert(rows.begin() + 32, Disc{443, 450, 3, kGreen});
    rows[43] = Press{432, 611, 35, 22, L"", true, 0x455057, kBright};
    rows[44] = Disc{442, 622, 7, 0xE6EEEE};
    rows[47] = Text{432, 655, 350, 22, L"Play in a window on your desktop.", 11, kGrey};
    rows[51] = Press{588, 711, 196, 44, L"Launch with KVR ↗", true, kGreen, 0x112622};
    ExpectRows(rows);
}

TEST_F(Layout, TheOpenListLiesOnTopOfEverything) {
    ShowReady();
    Click(kResolution);
    std::vector<Row> rows = ReadyRows();
    rows.push_back(Backdrop{770});
    rows.push_back(Box{36, 252, 360, 344, 0x20272B, 0x536168, 6});
    const wchar_t* const names[] = {L"320 × 240", L"400 × 300",  L"512 × 384",  L"640 × 480",  L"800 × 600",
                                    L"960 × 720", L"1024 × 768", L"1152 × 864", L"1280 × 960", L"1600 × 1200"};
    for (int mode = 0; mode < 10; ++mode) {
        rows.push_back(Press{40, 256.0F + 33.0F * static_cast<float>(mode), 352, 32,
                             (mode == 4 ? L"●  " : L"    ") + std::wstring(names[mode]), true,
                             mode == 4 ? 0x223331U : 0x20272BU, kBright});
    }
    ExpectRows(rows);
}

TEST_F(Layout, ThePanelMakesTheCardTallerAndFollowsTheLaunchButton) {
    actions_->settings.Folder = L"/games/quake2";
    actions_->validFolders = {L"/games/quake2"};
    Show(true);
    std::vector<Row> rows = ReadyRows(1048);
    const auto press = [&rows](float x, float y, float width, const wchar_t* label, bool enabled) {
        rows.push_back(Press{x, y, width, 28, label, enabled, 0x272E33, kBright});
    };
    const auto zone = [&rows](float top, float bottom) {
        rows.push_back(Box{240, top, 420, bottom - top, 0, 0, 0, 0});
    };
    rows.push_back(Text{36, 787, 350, 25, L"Developer controls", 11, kGrey});
    press(470, 785, 99, L"No game", true);
    press(579, 785, 99, L"Game exit", false);
    press(688, 785, 96, L"Reset", true);
    rows.push_back(Text{36, 829, 210, 26, L"Overlay opacity: 85%", 13, kGrey});
    rows.push_back(Box{250, 839, 400, 4, 0x59656B, 0, 2});
    rows.push_back(Disc{590, 841, 7, kGreen});
    zone(825, 859);
    press(688, 827, 96, L"85% default", true);
    rows.push_back(Text{36, 872, 490, 26, L"Background: Liquid Metal", 13, kGrey});
    press(550, 870, 234, L"Metal copper: on", true);
    const std::pair<const wchar_t*, float> colours[] = {
        {L"Hue: 0°", 450}, {L"Saturation: 100%", 450}, {L"Brightness: 0%", 450}, {L"Contrast: 100%", 450}};
    float y = 915;
    for (const auto& [label, thumb] : colours) {
        rows.push_back(Text{36, y - 12, 210, 26, label, 13, kGrey});
        rows.push_back(Box{250, y - 2, 400, 4, 0x59656B, 0, 2});
        rows.push_back(Disc{thumb, y, 7, kGreen});
        zone(y - 16, y + 16);
        y += 34;
    }
    press(688, 903, 96, L"Reset color", true);
    ExpectRows(rows);
}

TEST_F(Layout, TheFootersSquareCornersStandOutFromTheRoundedCard) {
    ShowReady();
    const auto* card = dynamic_cast<RectangleNode*>(scene_->children[0].get());
    const auto* band = dynamic_cast<RectangleNode*>(scene_->children[48].get());
    ASSERT_TRUE(card && band);
    EXPECT_EQ(card->rect.bottom, band->rect.bottom);
    EXPECT_EQ(card->radiusX, 12);
    EXPECT_EQ(band->radiusX, 0);
}

TEST_F(Layout, ADisabledCardKeepsItsMarkAndTexts) {
    ShowReady();
    scene_->launching = true;
    scene_->needsRebuild = true;
    Frame();
    std::vector<Row> rows = ReadyRows();
    for (const std::size_t index : {15U, 17U, 22U, 30U, 40U, 43U, 51U}) std::get<Press>(rows[index]).enabled = false;
    ExpectRows(rows);
}

TEST_F(Layout, AnEmptyStatusStillHasItsRow) {
    ShowReady();
    const auto* status = dynamic_cast<DecorationText*>(scene_->children[19].get());
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(status->text, L"");
    scene_->statusText = L"Quake II closed.";
    scene_->needsRebuild = true;
    Frame();
    EXPECT_EQ(dynamic_cast<DecorationText*>(scene_->children[19].get())->text, L"Quake II closed.");
}

TEST_F(Layout, TheLogosHeightFollowsItsWidth) {
    ShowReady();
    scene_->logoWidth = 2771;
    scene_->needsRebuild = true;
    Frame();
    EXPECT_EQ(dynamic_cast<ImagePrimitive*>(scene_->children[1].get())->rect, (Rect{36, 24, 2807, 544}));
}

TEST_F(Layout, TheTextsFollowTheState) {
    struct Case {
        bool valid;
        const wchar_t* folder;
        bool checking, running;
        const wchar_t *name, *path, *badge, *footer;
    };
    const Case cases[] = {
        {false, L"", false, false, L"No installation selected", L"Select the folder containing quake2.exe.",
         L"Not selected", L"Select a Quake II installation"},
        {false, L"/bad", false, false, L"Invalid installation", L"/bad", L"Not ready",
         L"Select a Quake II installation"},
        {true, L"/good", true, false, L"Quake II · Classic installation", L"/good", L"Checking…", L"Ready to launch"},
        {true, L"/good", false, true, L"Quake II · Classic installation", L"/good", L"● Ready", L"Quake II is running"},
    };
    Show();
    for (const Case& expected : cases) {
        scene_->installationValid = expected.valid;
        scene_->folder = expected.folder;
        scene_->checking = expected.checking;
        scene_->gameRunning = expected.running;
        scene_->needsRebuild = true;
        Frame();
        for (const wchar_t* text : {expected.name, expected.path, expected.badge, expected.footer}) {
            EXPECT_TRUE(Shows(text)) << testing::PrintToString(std::wstring(text));
        }
        const auto* badge = dynamic_cast<DecorationText*>(scene_->children[13].get());
        ASSERT_NE(badge, nullptr);
        EXPECT_EQ(badge->color, Of(expected.valid && !expected.checking ? kGreen : kGrey));
    }
}

}  // namespace
