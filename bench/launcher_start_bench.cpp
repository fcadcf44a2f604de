// From the start of the launcher's process to its first complete picture, and the most memory it has had resident,
// beside the least windows of other toolkits in the same run. docs/benchmarks.md tells how to read the numbers.
#include "Completeness.h"
#include "Hand.h"
#include "Median.h"
#include "PrivateState.h"
#include "ScreenWatch.h"
#include "StartedProgram.h"
#include "StartReport.h"

#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::int64_t second = 1'000'000'000;

/// Less than a picture of any of the programs; more than a cursor or an edge.
constexpr std::int64_t smallestPicture = 2'000;  // pixels

struct Options {
    bool json = false;
    int runs = 15;
};

Options ReadOptions(int count, char** words) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--json") {
            options.json = true;
        } else if (word == "--runs" && i + 1 < count) {
            options.runs = std::atoi(words[++i]);
        } else {
            throw std::runtime_error("use: launcher_start_bench [--json] [--runs N]");
        }
    }
    if (options.runs < 1) throw std::runtime_error("--runs needs a number from 1 on");
    return options;
}

void Sleep(double seconds) {
    const auto nanoseconds = static_cast<std::int64_t>(seconds * static_cast<double>(second));
    const timespec span{static_cast<time_t>(nanoseconds / second), static_cast<long>(nanoseconds % second)};
    nanosleep(&span, nullptr);
}

/// One of the programs that are compared.
struct Subject {
    const char* name;
    std::vector<std::string> words;
    std::optional<Completeness> complete;
    std::vector<double> first, whole, processor, peak;
};

class Comparison {
public:
    explicit Comparison(int runs) : runs_(runs), before_(watch_.LookAtAll()) {
        subjects_.push_back({"launcher", {OwnFolder() + "../bin/velorinth-launcher"}, {}, {}, {}, {}, {}});
    }

    std::vector<Subject>& Run() {
        const WindowPlace window = Learn(subjects_.front());
        for (const char* const name : {"gtk_window", "qt_quick_window"}) {
            const std::string path = OwnFolder() + name;
            if (access(path.c_str(), X_OK) != 0) continue;
            subjects_.push_back(
                {name, {path, std::to_string(window.width), std::to_string(window.height)}, {}, {}, {}, {}, {}});
            Learn(subjects_.back());
        }
        for (int i = 0; i < runs_; ++i) {
            for (Subject& subject : subjects_) Measure(subject);
        }
        return subjects_;
    }

private:
    /// A start that fills the caches and shows what the finished picture is like.
    WindowPlace Learn(Subject& subject) {
        Hand hand;
        watch_.Clear();
        auto program = std::make_unique<StartedProgram>(subject.words);
        if (!watch_.AwaitPicture(smallestPicture)) throw std::runtime_error(subject.words.front() + " shows nothing.");
        Sleep(0.7);
        const WindowPlace place = hand.WindowOf(program->Process()).value_or(WindowPlace{});
        std::vector<ScreenPicture> finished;
        // From early on and far apart, so that a slow animation is told from what stands still.
        for (const double span : {0.0, 0.2, 0.4, 0.8, 1.6, 2.0}) {
            Sleep(span);
            finished.push_back(watch_.LookAtAll());
        }
        subject.complete.emplace(before_, finished);
        program.reset();
        AwaitEmptyScreen();
        return place;
    }

    void Measure(Subject& subject) {
        const Completeness& complete = *subject.complete;
        watch_.Clear();
        auto program = std::make_unique<StartedProgram>(subject.words);
        const std::int64_t limit = program->Started() + 20 * second;
        std::int64_t first = 0;
        std::size_t most = 0;
        for (;;) {
            const auto shown = watch_.AwaitPicture(smallestPicture, limit);
            if (!shown) {
                throw std::runtime_error(std::string(subject.name) + " never was complete: " + std::to_string(most) +
                                         " of " + std::to_string(complete.Points().size()) + " points.");
            }
            if (first == 0) first = *shown;
            const std::size_t finished = complete.Finished(watch_.Look(complete.Points()));
            most = std::max(most, finished);
            if (finished < complete.Enough()) continue;
            subject.first.push_back(static_cast<double>(first - program->Started()) / 1e6);
            subject.whole.push_back(static_cast<double>(*shown - program->Started()) / 1e6);
            subject.processor.push_back(program->ProcessorMilliseconds());
            break;
        }
        Sleep(0.3);  // What comes right after the picture counts as memory of the start.
        subject.peak.push_back(program->Mebibytes("VmHWM"));
        program.reset();
        AwaitEmptyScreen();
    }

    void AwaitEmptyScreen() {
        const std::int64_t limit = StartReport::Nanoseconds() + 10 * second;
        while (watch_.LookAtAll().pixels != before_.pixels) {
            if (StartReport::Nanoseconds() > limit) throw std::runtime_error("Something else draws on the screen.");
            Sleep(0.02);
        }
        Sleep(0.1);
    }

    int runs_;
    ScreenWatch watch_;
    ScreenPicture before_;
    std::vector<Subject> subjects_;
};

double Load() {
    double load = 0;
    std::ifstream("/proc/loadavg") >> load;
    return load;
}

void PrintTable(const std::vector<Subject>& subjects) {
    std::printf("%-16s %12s %12s %12s %12s %10s %8s\n", "median of runs", "first", "complete", "processor", "peak",
                "points", "steady");
    for (const Subject& each : subjects) {
        std::printf("%-16s %9.1f ms %9.1f ms %9.1f ms %8.1f MiB %10zu %8zu\n", each.name, Median(each.first),
                    Median(each.whole), Median(each.processor), Median(each.peak), each.complete->Points().size(),
                    each.complete->Steady());
    }
    const Subject& launcher = subjects.front();
    for (std::size_t i = 1; i < subjects.size(); ++i) {
        std::printf("launcher by %-16s complete %.3f (aim 0.33)  processor %.3f  peak %.3f (aim 0.5)\n",
                    subjects[i].name, Median(launcher.whole) / Median(subjects[i].whole),
                    Median(launcher.processor) / Median(subjects[i].processor),
                    Median(launcher.peak) / Median(subjects[i].peak));
    }
    if (subjects.size() == 1) std::printf("Neither GTK 4 nor Qt Quick was there when this was built.\n");
}

void PrintJson(const std::vector<Subject>& subjects, double loadBefore) {
    std::printf("{\"machine\": {\"load_before\": %.4f, \"load_after\": %.4f}", loadBefore, Load());
    const Subject& launcher = subjects.front();
    for (const Subject& each : subjects) {
        std::printf(
            ", \"%s\": {\"first\": %.4f, \"complete\": %.4f, \"complete_min\": %.4f, \"processor\": %.4f, "
            "\"peak\": %.4f",
            each.name, Median(each.first), Median(each.whole), std::ranges::min(each.whole), Median(each.processor),
            Median(each.peak));
        if (&each != &launcher) {
            std::printf(", \"complete_ratio\": %.4f, \"peak_ratio\": %.4f", Median(launcher.whole) / Median(each.whole),
                        Median(launcher.peak) / Median(each.peak));
        }
        std::printf("}");
    }
    std::printf("}\n");
}

int Run(const Options& options) {
    const PrivateState state;
    const double load = Load();
    Comparison comparison(options.runs);
    const std::vector<Subject>& subjects = comparison.Run();
    if (options.json) {
        PrintJson(subjects, load);
    } else {
        PrintTable(subjects);
        std::printf("load before %.2f, after %.2f\n", load, Load());
    }
    return 0;
}

}  // namespace

int main(int count, char** words) try { return Run(ReadOptions(count, words)); } catch (const std::exception& failure) {
    std::fprintf(stderr, "launcher_start_bench: %s\n", failure.what());
    return 1;
}
