#include "tools/background_shot/Options.h"

#include <array>
#include <charconv>
#include <functional>
#include <map>

namespace BackgroundShot {

const char* const kUsage =
    R"(Draws one picture of a background through the launcher's own renderer, without a window.

background_shot --width W --height H --out FILE.png [option...]

  --kind K               0 to 8; 0 where it isn't given
  --time T  --frame N    seconds and number on the clock and the counter that the kind reads
  --no-background        the flat interior fill in the background's place
  --grade H,S,B,C        hue in degrees, saturation, brightness, contrast
  --white-scale S        multiplies the colours
  --glow G               glow of the sunrise
  --tuning NAME=VALUE,.. timeScale emberStrength pointerStrength viewScale fineDetail sampleSpacing
  --pointer U,V          the pointer's place, 0 to 1, v downward
  --window W,H           window size, pixels; the image's own size with --chrome, else none, which leaves out the frame
  --client-offset X,Y    the image's place in the window
  --chrome F,T,B         frame width, title height, inner border width
  --extension L,T,R,B    client frame extension
  --maximized POLICY     a maximised window: 0 no frame, 1 all kept, 2 nothing kept
  --fills R,G,B,A,..     16 numbers: title bar, frame, inner border, flat interior
  --raw FILE             the image as little-endian 32-bit floats, RGBA, first row on top
  --offscreen-raw FILE   likewise, the offscreen texture

Prints {"width","height","offscreenWidth","offscreenHeight"}. Exit code 0, 1 for a failure, 2 for a wrong command line.
)";

namespace {

double Number(const std::string& text) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) throw WrongUsage("not a number: \"" + text + "\"");
    return value;
}

template <class Integer>
Integer WholeNumber(const std::string& text, Integer least, Integer most) {
    Integer value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < least || value > most) {
        throw WrongUsage("not a whole number from " + std::to_string(least) + " to " + std::to_string(most) + ": \"" +
                         text + "\"");
    }
    return value;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (;;) {
        const std::size_t end = text.find(separator, begin);
        parts.push_back(text.substr(begin, end - begin));
        if (end == std::string::npos) return parts;
        begin = end + 1;
    }
}

template <std::size_t Count>
std::array<float, Count> Numbers(const std::string& text) {
    const auto parts = Split(text, ',');
    if (parts.size() != Count) throw WrongUsage(std::to_string(Count) + " numbers expected: \"" + text + "\"");
    std::array<float, Count> values{};
    for (std::size_t i = 0; i < Count; ++i) values[i] = static_cast<float>(Number(parts[i]));
    return values;
}

void ReadTuning(Tamborel::BackgroundTuning& tuning, const std::string& text) {
    const std::map<std::string, float*> fields = {
        {"timeScale", &tuning.timeScale},
        {"emberStrength", &tuning.emberStrength},
        {"pointerStrength", &tuning.pointerStrength},
        {"viewScale", &tuning.viewScale},
        {"fineDetail", &tuning.fineDetail},
    };
    for (const std::string& part : Split(text, ',')) {
        const std::size_t equals = part.find('=');
        if (equals == std::string::npos) throw WrongUsage("NAME=VALUE expected: \"" + part + "\"");
        const std::string name = part.substr(0, equals);
        const std::string value = part.substr(equals + 1);
        if (name == "sampleSpacing") {
            tuning.sampleSpacing = WholeNumber<std::int32_t>(value, 2, 4);
        } else if (const auto field = fields.find(name); field != fields.end()) {
            *field->second = static_cast<float>(Number(value));
        } else {
            throw WrongUsage("no such tuning: \"" + name + "\"");
        }
    }
}

void ReadFills(Tamborel::BlitFrameRecord& record, const std::string& text) {
    const auto all = Numbers<16>(text);
    std::size_t at = 0;
    for (auto* fill : {&record.titleBarFill, &record.frameFill, &record.innerBorderColor, &record.flatInteriorFill}) {
        for (float& component : *fill) component = all[at++];
    }
}

using Reader = std::function<void(Options&, const std::string&)>;

const std::map<std::string, Reader>& Readers() {
    static const std::map<std::string, Reader> readers = {
        {"--kind",
         [](Options& o, const std::string& v) {
             o.kind = static_cast<Tamborel::BackgroundKind>(
                 WholeNumber<std::uint32_t>(v, 0, Tamborel::kBackgroundKindCount - 1));
         }},
        {"--time", [](Options& o, const std::string& v) { o.time = Number(v); }},
        {"--frame", [](Options& o, const std::string& v) { o.frame = WholeNumber<std::int32_t>(v, 0, 0x7FFFFFFF); }},
        {"--width", [](Options& o, const std::string& v) { o.width = WholeNumber<std::uint32_t>(v, 1, 16384); }},
        {"--height", [](Options& o, const std::string& v) { o.height = WholeNumber<std::uint32_t>(v, 1, 16384); }},
        {"--white-scale", [](Options& o, const std::string& v) { o.whiteScale = static_cast<float>(Number(v)); }},
        {"--glow", [](Options& o, const std::string& v) { o.glow = static_cast<float>(Number(v)); }},
        {"--grade",
         [](Options& o, const std::string& v) {
             const auto n = Numbers<4>(v);
             o.grade = Tamborel::ColorGrade{n[0], n[1], n[2], n[3]};
         }},
        {"--tuning", [](Options& o, const std::string& v) { ReadTuning(o.tuning, v); }},
        {"--pointer", [](Options& o, const std::string& v) { o.pointer = Numbers<2>(v); }},
        {"--window",
         [](Options& o, const std::string& v) {
             const auto n = Numbers<2>(v);
             o.record.windowMetrics[0] = n[0];
             o.record.windowMetrics[1] = n[1];
         }},
        {"--client-offset",
         [](Options& o, const std::string& v) {
             const auto n = Numbers<2>(v);
             o.record.windowMetrics[2] = n[0];
             o.record.windowMetrics[3] = n[1];
         }},
        {"--chrome",
         [](Options& o, const std::string& v) {
             o.record.chromeMetrics = Numbers<3>(v);
             o.record.innerBorderEnabled = 1;
         }},
        {"--extension", [](Options& o, const std::string& v) { o.record.clientFrameExtension = Numbers<4>(v); }},
        {"--maximized",
         [](Options& o, const std::string& v) {
             o.record.isMaximized = 1;
             o.record.maximizedChromePolicy = WholeNumber<std::uint32_t>(v, 0, 2);
         }},
        {"--fills", [](Options& o, const std::string& v) { ReadFills(o.record, v); }},
        {"--out", [](Options& o, const std::string& v) { o.out = v; }},
        {"--raw", [](Options& o, const std::string& v) { o.raw = v; }},
        {"--offscreen-raw", [](Options& o, const std::string& v) { o.offscreenRaw = v; }},
    };
    return readers;
}

}  // namespace

Options ReadOptions(const std::vector<std::string>& words) {
    Options options;
    options.record.useThemeBackground = 1;
    bool windowGiven = false;
    bool chromeGiven = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--no-background") {
            options.record.useThemeBackground = 0;
            continue;
        }
        const auto reader = Readers().find(word);
        if (reader == Readers().end()) throw WrongUsage("unknown option: \"" + word + "\"");
        if (++i == words.size()) throw WrongUsage(word + " needs a value");
        reader->second(options, words[i]);
        windowGiven |= word == "--window";
        chromeGiven |= word == "--chrome";
    }
    if (options.width == 0 || options.height == 0) throw WrongUsage("--width and --height are needed");
    if (options.out.empty()) throw WrongUsage("--out is needed");
    if (!options.record.useThemeBackground && !options.offscreenRaw.empty()) {
        throw WrongUsage("--offscreen-raw needs a background");
    }
    if (chromeGiven && !windowGiven) {
        options.record.windowMetrics[0] = static_cast<float>(options.width);
        options.record.windowMetrics[1] = static_cast<float>(options.height);
    }
    return options;
}

}  // namespace BackgroundShot
