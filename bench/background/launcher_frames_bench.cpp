// What a frame of the launcher's animated screen costs while nothing on it changes, beside its background in a plain
// Vulkan loop that also brings each picture onto the screen; in turn, in one run. docs/benchmarks.md tells how to read
// the numbers.
#include "BareLoop.h"
#include "bench/Hand.h"
#include "bench/Median.h"
#include "bench/PrivateState.h"
#include "bench/ScreenWatch.h"
#include "bench/StartedProgram.h"
#include "bench/StartReport.h"
#include "PlainPresent.h"
#include "Scenario.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace BackgroundBench;

constexpr std::int64_t second = 1'000'000'000;  // nanoseconds

struct Options {
    bool json = false;
    double seconds = 4;  ///< Of each of the rounds.
    int rounds = 5;
};

Options ReadOptions(int count, char** words) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--json") {
            options.json = true;
        } else if (word == "--seconds" && i + 1 < count) {
            options.seconds = std::atof(words[++i]);
        } else if (word == "--rounds" && i + 1 < count) {
            options.rounds = std::atoi(words[++i]);
        } else {
            throw std::runtime_error("use: launcher_frames_bench [--json] [--rounds N] [--seconds S]");
        }
    }
    if (options.rounds < 1 || !(options.seconds > 0)) throw std::runtime_error("rounds and seconds begin above 0");
    return options;
}

/// One round of one of the two.
struct Cost {
    double rate = 0;       ///< Frames a second.
    double processor = 0;  ///< Milliseconds of all threads, a frame.
};

Cost MeasureLauncher(const StartedProgram& launcher, ScreenWatch& screen, std::int64_t pixels, double seconds) {
    if (!screen.AwaitPicture(pixels)) throw std::runtime_error("The launcher's picture stands still.");
    const std::int64_t begin = StartReport::Nanoseconds();
    const std::int64_t limit = begin + static_cast<std::int64_t>(seconds * static_cast<double>(second));
    const double before = launcher.ProcessorMilliseconds();
    int frames = 0;
    while (screen.AwaitPicture(pixels, limit)) ++frames;
    if (frames == 0) throw std::runtime_error("The launcher's picture stands still.");
    const double used = launcher.ProcessorMilliseconds() - before;
    return {frames * 1e9 / static_cast<double>(StartReport::Nanoseconds() - begin), used / frames};
}

Cost MeasureBare(BareLoop& loop, PlainPresent& present, double seconds) {
    const std::int64_t begin = StartReport::Nanoseconds();
    const std::int64_t limit = begin + static_cast<std::int64_t>(seconds * static_cast<double>(second));
    const double before = StartReport::ProcessorMilliseconds();
    int frames = 0;
    for (; frames == 0 || StartReport::Nanoseconds() < limit; ++frames) {
        loop.DrawFrame();
        present.Show();
    }
    const double used = StartReport::ProcessorMilliseconds() - before;
    return {frames * 1e9 / static_cast<double>(StartReport::Nanoseconds() - begin), used / frames};
}

double Median(const std::vector<Cost>& costs, double Cost::*number) {
    std::vector<double> values;
    values.reserve(costs.size());
    for (const Cost& each : costs) values.push_back(each.*number);
    return ::Median(std::move(values));
}

int Run(const Options& options) {
    const PrivateState state;
    ScreenWatch screen;
    Hand hand;
    BareLoop loop;
    std::vector<Cost> launcher;
    std::vector<Cost> bare;
    WindowPlace place;
    for (int round = 0; round < options.rounds; ++round) {
        {
            const StartedProgram program({OwnFolder() + "../bin/velorinth-launcher"});
            if (!screen.AwaitPicture(10'000)) throw std::runtime_error("The launcher shows nothing.");
            // The first seconds compile programs and set text.
            (void)screen.AwaitPicture(std::int64_t{1} << 40, StartReport::Nanoseconds() + 2 * second);
            place = hand.WindowOf(program.Process()).value_or(WindowPlace{});
            if (place.width <= 0 || place.height <= 0) throw std::runtime_error("The launcher has no window.");
            screen.Clear();
            launcher.push_back(
                MeasureLauncher(program, screen, std::int64_t{place.width} * place.height / 2, options.seconds));
        }
        const auto width = static_cast<std::uint32_t>(place.width);
        const auto height = static_cast<std::uint32_t>(place.height);
        if (round == 0) loop.Prepare({Tamborel::BackgroundKind::LiquidMetal, 0, width, height});
        PlainPresent present(width, height);
        bare.push_back(MeasureBare(loop, present, options.seconds));
    }
    const double ratio = Median(launcher, &Cost::processor) / Median(bare, &Cost::processor);
    std::printf(options.json ? "{\"width\":%d,\"height\":%d,\"launcherRate\":%.2f,\"bareRate\":%.2f,"
                               "\"launcherCpuMs\":%.3f,\"bareCpuMs\":%.3f,\"cpuRatio\":%.3f}\n"
                             : "window                       %d by %d\n"
                               "frames a second, launcher    %8.2f\n"
                               "frames a second, plain loop  %8.2f\n"
                               "processor, launcher          %8.2f ms a frame\n"
                               "processor, plain loop        %8.2f ms a frame\n"
                               "launcher to plain loop       %8.2f\n",
                place.width, place.height, Median(launcher, &Cost::rate), Median(bare, &Cost::rate),
                Median(launcher, &Cost::processor), Median(bare, &Cost::processor), ratio);
    return 0;
}

}  // namespace

int main(int count, char** words) try { return Run(ReadOptions(count, words)); } catch (const std::exception& failure) {
    std::fprintf(stderr, "launcher_frames_bench: %s\n", failure.what());
    return 1;
}
