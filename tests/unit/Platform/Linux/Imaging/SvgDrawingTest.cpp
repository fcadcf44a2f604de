// Documents to pixels, and what a document must not do.

#include "Platform/Linux/Imaging/SvgDrawing.h"
#include "Platform/Linux/Imaging/SvgGuard.h"
#include "tests/support/Pictures.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <random>
#include <string>

namespace {

using Platform::Imaging::MayParse;
using Platform::Imaging::SvgDrawing;

std::span<const std::uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

constexpr int side = 32;

/// A picture of 32 by 32 pixels.
struct Painted {
    bool parsed = false;
    bool painted = false;
    std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(side * side);

    std::uint32_t At(int x, int y) const { return pixels[static_cast<std::size_t>(y * side + x)]; }
};

/// Paints a document as assets do: root at 100 %, a viewport of 16 by 16, 8 pixels from the left and the top.
Painted Paint(std::string_view document) {
    Painted result;
    std::optional<SvgDrawing> drawing = SvgDrawing::Parse(BytesOf(document));
    if (!drawing) return result;
    result.parsed = true;
    drawing->SetWidth({100.0F, true});
    drawing->SetHeight({100.0F, true});
    result.painted = drawing->Paint(16, 16, {1, 0, 0, 1, 8, 8}, result.pixels.data(), side, side);
    return result;
}

bool ViewportIs(const Painted& painted, std::uint32_t color) {
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const bool inside = x >= 8 && x < 24 && y >= 8 && y < 24;
            if (painted.At(x, y) != (inside ? color : 0U)) return false;
        }
    }
    return true;
}

constexpr const char* redBox =
    R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 4 4"><rect width="4" height="4" fill="#f00"/></svg>)";

TEST(SvgDrawing, ViewBoxFillsTheViewport) {
    EXPECT_TRUE(ViewportIs(Paint(redBox), 0xFFFF0000));
}

TEST(SvgDrawing, SizeInTheFileIsOverridden) {
    const Painted painted = Paint(
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="3" height="200" style="width:5px" viewBox="0 0 4 4"><rect width="4" height="4" fill="#f00"/></svg>)");
    EXPECT_TRUE(ViewportIs(painted, 0xFFFF0000));
}

TEST(SvgDrawing, WithoutAViewBoxOneUnitIsOneOfTheViewport) {
    const Painted painted = Paint(
        R"(<svg xmlns="http://www.w3.org/2000/svg" width="4" height="4"><rect width="4" height="4" fill="#f00"/></svg>)");
    EXPECT_EQ(painted.At(8, 8), 0xFFFF0000);
    EXPECT_EQ(painted.At(11, 11), 0xFFFF0000);
    EXPECT_EQ(painted.At(12, 12), 0U);
}

TEST(SvgDrawing, AspectIsKeptByTheViewBox) {
    const Painted painted = Paint(
        R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 8 4"><rect width="8" height="4" fill="#f00"/></svg>)");
    EXPECT_EQ(painted.At(8, 16), 0xFFFF0000);
    EXPECT_EQ(painted.At(16, 9), 0U);  // Above: the box is half as high as wide, and in the middle.
}

TEST(SvgDrawing, NothingIsPaintedOutsideTheViewport) {
    const Painted painted = Paint(
        R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 4 4" overflow="visible"><rect x="-99" y="-99" width="999" height="999" fill="#f00"/></svg>)");
    EXPECT_TRUE(ViewportIs(painted, 0xFFFF0000));
}

TEST(SvgDrawing, DocumentInUtf16IsRead) {
    std::string wide = "\xFF\xFE";
    for (const char c : std::string_view(redBox)) wide += {c, '\0'};
    EXPECT_TRUE(ViewportIs(Paint(wide), 0xFFFF0000));
}

TEST(SvgDrawing, WhatIsNoSvgIsRefused) {
    for (const char* text : {"", " ", "<", "<svg", "<html/>", "no document",
                             "<svg xmlns=\"http://www.w3.org/2000/svg\">", "\x1f\x8b\x08\x00"}) {
        EXPECT_FALSE(Paint(text).parsed) << text;
    }
}

TEST(SvgGuard, CompressedDocumentIsRefused) {
    static constexpr char gzip[] = "\x1F\x8B\x08\x00\x00\x00\x00\x00\x02\x03<svg/>";
    EXPECT_FALSE(MayParse(BytesOf(std::string_view(gzip, sizeof gzip - 1))));
}

TEST(SvgGuard, OversizedDocumentIsRefused) {
    std::string document = redBox;
    document.resize(Platform::Imaging::maxSvgBytes, ' ');
    EXPECT_TRUE(MayParse(BytesOf(document)));
    document += ' ';
    EXPECT_FALSE(MayParse(BytesOf(document)));
}

TEST(SvgGuard, EncodingInWhichAsciiIsNotAsciiIsRefused) {
    EXPECT_TRUE(MayParse(BytesOf("<?xml version='1.0' encoding='UTF-8'?><svg/>")));
    EXPECT_TRUE(MayParse(BytesOf("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?><svg/>")));
    EXPECT_FALSE(MayParse(BytesOf("<?xml version='1.0' encoding='UTF-7'?><svg/>")));
    EXPECT_FALSE(MayParse(BytesOf("\x4C\x6F\xA7\x94\x93")));  // "<?xml" in EBCDIC.
}

TEST(SvgGuard, NestedEntitiesAreRefusedAtNoCost) {
    std::string document = "<?xml version=\"1.0\"?><!DOCTYPE svg [<!ENTITY a0 \"<rect width='9' height='9'/>\">";
    for (int i = 1; i < 30; ++i) {
        const std::string before = "&a" + std::to_string(i - 1) + ";";
        document += "<!ENTITY a" + std::to_string(i) + " \"";
        for (int n = 0; n < 10; ++n) document += before;
        document += "\">";
    }
    document += "]><svg xmlns=\"http://www.w3.org/2000/svg\">&a29;</svg>";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Paint(document).parsed);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(SvgGuard, DataAddressIsRefusedInEveryDisguise) {
    for (const char* text :
         {"<svg><image href=\"data:image/png;base64,AAAA\"/></svg>", "<svg><image href=\"DaTa:image/png\"/></svg>",
          "<svg><image href=\"&#100;ata:image/png\"/></svg>",
          "<svg><image href=\"&#x64;&#97;ta&#58;image/png\"/></svg>",
          "<svg><image href=\" da&#10;ta\t:image/png\"/></svg>",
          "<svg><style>rect { fill: url(\\64 ata:image/svg+xml,x#y) }</style></svg>",
          "<svg><style>rect { fill: url(da\\ta\\:image/svg+xml,x#y) }</style></svg>",
          "<svg><style>rect { fill: url(&#92;64 ata:x#y) }</style></svg>"}) {
        EXPECT_FALSE(MayParse(BytesOf(text))) << text;
    }
    EXPECT_TRUE(MayParse(BytesOf("<svg><desc>C:\\Users\\me &#; &#x; &# data</desc></svg>")));
}

/// Tells whether a file was opened by anybody.
class OpenWatch {
public:
    explicit OpenWatch(const std::filesystem::path& folder) : events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        EXPECT_GE(inotify_add_watch(events_, folder.c_str(), IN_OPEN | IN_ACCESS), 0);
    }
    ~OpenWatch() { close(events_); }
    OpenWatch(const OpenWatch&) = delete;
    OpenWatch& operator=(const OpenWatch&) = delete;

    bool Saw() const {
        char event[4096];
        return read(events_, event, sizeof event) > 0;
    }

private:
    int events_;
};

TEST(SvgDrawing, NamesOfFilesOutsideLoadNothingAndTheRestIsDrawn) {
    TemporaryFolder folder;
    const auto write = [&](const char* name, std::string_view text) {
        std::ofstream(folder.Path() / name, std::ios::binary) << text;
    };
    const Pictures::Bytes green = Pictures::Png(Pictures::Plain(4, 4, 0xFF00FF00));
    write("green.png", std::string(green.begin(), green.end()));
    write(
        "green.svg",
        R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 4 4"><g id="g"><rect width="4" height="4" fill="#0f0"/></g></svg>)");
    write("green.css", "rect { fill: #0f0 !important }");
    const std::string at = "file://" + folder.Path().string() + "/green";
    const std::string open =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
        "xmlns:xi=\"http://www.w3.org/2001/XInclude\" viewBox=\"0 0 4 4\"><rect width=\"4\" height=\"4\" "
        "fill=\"#f00\"/>";
    const OpenWatch watch(folder.Path());
    for (const std::string& document :
         {open + "<image href=\"" + at + ".png\" width=\"4\" height=\"4\"/></svg>",
          open + "<image xlink:href=\"" + folder.Path().string() + "/green.png\" width=\"4\" height=\"4\"/></svg>",
          open + "<image href=\"" + at + ".svg\" width=\"4\" height=\"4\"/></svg>",
          open + "<use href=\"" + at + ".svg#g\"/></svg>",
          open + "<style>@import url(\"" + at + ".css\");</style></svg>",
          "<?xml-stylesheet type=\"text/css\" href=\"" + at + ".css\"?>" + open + "</svg>",
          open + "<xi:include href=\"" + at + ".svg\" parse=\"xml\"/></svg>",
          "<!DOCTYPE svg SYSTEM \"" + at + ".svg\">" + open + "</svg>"}) {
        EXPECT_TRUE(ViewportIs(Paint(document), 0xFFFF0000)) << document;
    }
    EXPECT_FALSE(Paint("<!DOCTYPE svg [<!ENTITY x SYSTEM \"" + at + ".svg\">]>" + open + "&x;</svg>").parsed);
    EXPECT_FALSE(watch.Saw());
    // The watch itself works.
    std::ifstream(folder.Path() / "green.css").get();
    EXPECT_TRUE(watch.Saw());
}

TEST(SvgDrawing, ReferencesThatMultiplyEndInTime) {
    std::string document = "<svg xmlns=\"http://www.w3.org/2000/svg\"><defs><g id=\"a0\"/>";
    for (int i = 1; i < 20; ++i) {
        document += "<g id=\"a" + std::to_string(i) + "\">";
        for (int n = 0; n < 10; ++n) document += "<use href=\"#a" + std::to_string(i - 1) + "\"/>";
        document += "</g>";
    }
    document += "</defs><use href=\"#a19\"/><use id=\"self\" href=\"#self\"/></svg>";
    const auto start = std::chrono::steady_clock::now();
    const Painted painted = Paint(document);
    EXPECT_TRUE(painted.parsed);
    EXPECT_FALSE(painted.painted);  // The renderer gives up.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

constexpr const char* rich =
    R"svg(<?xml version="1.0" encoding="UTF-8"?><svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 40 40">
<defs><linearGradient id="g" x2="1"><stop offset="0" stop-color="#f80"/><stop offset="1" stop-color="#08f"/></linearGradient>
<filter id="b"><feGaussianBlur stdDeviation="2"/></filter><clipPath id="c"><circle cx="20" cy="20" r="16"/></clipPath>
<mask id="m"><rect width="40" height="20" fill="#fff"/></mask></defs>
<style>.s { stroke: #0a0; stroke-width: 1.5 }</style>
<g clip-path="url(#c)" transform="rotate(10)"><rect class="s" width="40" height="40" fill="url(#g)" filter="url(#b)"/>
<path d="M2 2 C 10 0 20 20 30 5 A 4 4 0 0 1 8 9 Z" mask="url(#m)" opacity=".5"/></g>
<use href="#c"/><polygon points="1,1 9,3 5,8"/><text x="3" y="30">ab</text></svg>)svg";

TEST(DamagedSvg, EveryTruncationIsRefusedOrStaysInside) {
    const std::string whole = rich;
    ASSERT_TRUE(Paint(whole).painted);
    for (std::size_t size = 0; size < whole.size(); size += 3) EXPECT_FALSE(Paint(whole.substr(0, size)).parsed);
}

TEST(DamagedSvg, FlippedBitsNeverCrashNorPaintOutsideTheViewport) {
    std::mt19937 random(20240608);
    for (int round = 0; round < 600; ++round) {
        std::string document = rich;
        for (unsigned flips = 1 + random() % 4; flips > 0; --flips) {
            document[random() % document.size()] ^= static_cast<char>(1U << random() % 7);
        }
        const Painted painted = Paint(document);
        for (int y = 0; painted.painted && y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                if (x >= 8 && x < 24 && y >= 8 && y < 24) continue;
                ASSERT_EQ(painted.At(x, y), 0U) << x << ", " << y << " of " << document;
            }
        }
    }
}

}  // namespace
