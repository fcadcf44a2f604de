// What the backgrounds cost; docs/backgrounds.md says how to read it.
#include "BareLoop.h"
#include "Report.h"
#include "Timing.h"
#include "ToolkitLoop.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>

namespace {

using namespace BackgroundBench;

constexpr const char* kUsage =
    R"(Measures the backgrounds: a frame through the toolkit, and the same programs in a plain Vulkan loop.

background_bench [--json] [--kind K] [--width W] [--height H] [--seconds S]

Without a size: 1538 by 1505, 1280 by 984 and 3840 by 2160. Without a kind: all nine. S is how long each single
measurement takes, 1 second where it isn't given. Run it on an idle machine.
)";

struct Options {
    bool json = false;
    std::optional<std::uint32_t> kind;
    std::optional<std::uint32_t> width;
    std::optional<std::uint32_t> height;
    double seconds = 1.0;
};

class WrongUsage : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

template <class Value>
Value Number(const char* text, Value least, Value most) {
    Value value{};
    const char* const end = text + std::strlen(text);
    const auto [rest, error] = std::from_chars(text, end, value);
    if (error != std::errc{} || rest != end || value < least || value > most) {
        throw WrongUsage(std::string("not a fitting number: ") + text);
    }
    return value;
}

Options ReadOptions(int count, char** words) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--json") {
            options.json = true;
            continue;
        }
        if (word != "--kind" && word != "--width" && word != "--height" && word != "--seconds") {
            throw WrongUsage("unknown option: " + word);
        }
        if (++i == count) throw WrongUsage(word + " needs a value");
        if (word == "--kind") options.kind = Number<std::uint32_t>(words[i], 0, 8);
        if (word == "--width") options.width = Number<std::uint32_t>(words[i], 1, 16384);
        if (word == "--height") options.height = Number<std::uint32_t>(words[i], 1, 16384);
        if (word == "--seconds") options.seconds = Number<double>(words[i], 0.01, 60.0);
    }
    if (options.width.has_value() != options.height.has_value()) {
        throw WrongUsage("--width and --height go together");
    }
    return options;
}

std::vector<std::array<std::uint32_t, 2>> SizesFor(const Options& options) {
    if (options.width) return {{*options.width, *options.height}};
    return {{1538, 1505}, {1280, 984}, {3840, 2160}};
}

/// The kinds to measure; the metal surface stands for each of its spacings.
std::vector<Scenario> ScenariosFor(const Options& options, std::uint32_t width, std::uint32_t height) {
    std::vector<Scenario> scenarios;
    for (std::uint32_t index = 0; index < Tamborel::kBackgroundKindCount; ++index) {
        if (options.kind && *options.kind != index) continue;
        const auto kind = static_cast<Tamborel::BackgroundKind>(index);
        if (kind == Tamborel::BackgroundKind::LiquidMetalSurface) {
            scenarios.push_back({kind, 2, width, height});
            scenarios.push_back({kind, 4, width, height});
        } else {
            scenarios.push_back({kind, 0, width, height});
        }
    }
    return scenarios;
}

KindResult MeasureKind(BareLoop& bare, ToolkitLoop& toolkit, const Scenario& scenario, double seconds) {
    bare.Prepare(scenario);
    toolkit.Prepare(scenario);
    const std::array<std::function<void()>, 5> works = {
        [&] { bare.DrawStage(); },    [&] { bare.DrawBlit(); }, [&] { bare.DrawFrame(); },
        [&] { toolkit.DrawFrame(); }, [&] { bare.DrawCopy(); },
    };
    const auto timings = MeasureInTurn(seconds, works);
    return {scenario, timings[0], timings[1], timings[2], timings[3], timings[4]};
}

int Run(const Options& options) {
    BareLoop bare;
    ToolkitLoop toolkit;
    std::vector<SizeResult> results;
    for (const auto& [width, height] : SizesFor(options)) {
        SizeResult size{width, height, {}};
        for (const Scenario& scenario : ScenariosFor(options, width, height)) {
            size.kinds.push_back(MeasureKind(bare, toolkit, scenario, options.seconds));
            if (!options.json) PrintLine(size.kinds.back());
        }
        results.push_back(size);
    }
    if (options.json) PrintJson(results);
    return 0;
}

}  // namespace

int main(int count, char** words) {
    try {
        return Run(ReadOptions(count, words));
    } catch (const WrongUsage& error) {
        std::fprintf(stderr, "background_bench: %s\n\n%s", error.what(), kUsage);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "background_bench: %s\n", error.what());
        return 1;
    }
}
