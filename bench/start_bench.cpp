// How quickly a window of the toolkit's is there and what it costs, beside the least that any Vulkan program needs
// (bare_vulkan.cpp), measured alternately in one run. docs/benchmarks.md tells how to read the numbers.
#include "MeasuredProgram.h"
#include "Median.h"
#include "ScreenWatch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Options {
    bool json = false;
    int runs = 15;
    int width = 820;
    int height = 770;
    double seconds = 5;  ///< Of each animation.
    int kind = 0;        ///< The background of the animations.
};

/// One number of the result: where it belongs and what it is called.
struct Result {
    const char* group;
    const char* name;
    const char* unit;
    double value;
};

Options ReadOptions(int count, char** words) {
    Options options;
    const auto usage = [] {
        return std::runtime_error(
            "use: start_bench [--json] [--runs N] [--size WIDTHxHEIGHT] [--seconds S] [--kind K]");
    };
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--json") {
            options.json = true;
            continue;
        }
        if (++i == count) throw usage();
        if (word == "--runs") {
            options.runs = std::atoi(words[i]);
        } else if (word == "--size") {
            if (std::sscanf(words[i], "%dx%d", &options.width, &options.height) != 2) throw usage();
        } else if (word == "--seconds") {
            options.seconds = std::atof(words[i]);
        } else if (word == "--kind") {
            options.kind = std::atoi(words[i]);
        } else {
            throw usage();
        }
    }
    if (options.runs < 1 || options.width < 1 || options.height < 1) throw usage();
    return options;
}

double Median(const std::vector<Report>& reports, const char* name) {
    std::vector<double> values;
    values.reserve(reports.size());
    for (const Report& each : reports) values.push_back(each.at(name));
    return ::Median(std::move(values));
}

/// Starts a program and waits for its picture, which the report has as "picture".
Report RunToPicture(ScreenWatch& screen, const char* program, const Options& options) {
    screen.Clear();
    MeasuredProgram run({program, std::to_string(options.width), std::to_string(options.height)});
    // Windows have a rim that is no picture yet, and may be larger than the screen.
    const auto shown = screen.AwaitPicture(std::int64_t{options.width} * options.height / 2);
    Report report = run.Finish();
    if (!shown) throw std::runtime_error(std::string(program) + " showed no picture.");
    report["picture"] = static_cast<double>(*shown - run.Started()) / 1e6;
    return report;
}

void MeasureStart(ScreenWatch& screen, const Options& options, std::vector<Result>& results) {
    std::vector<Report> bare;
    std::vector<Report> ours;
    RunToPicture(screen, "bare_vulkan", options);  // fills the system's caches
    RunToPicture(screen, "window_probe", options);
    for (int i = 0; i < options.runs; ++i) {
        bare.push_back(RunToPicture(screen, "bare_vulkan", options));
        ours.push_back(RunToPicture(screen, "window_probe", options));
    }
    const double toolkit = Median(ours, "toolkit");
    const double device = Median(ours, "device");
    const double picture = Median(ours, "picture");
    const double peak = Median(ours, "peak");
    const double barePicture = Median(bare, "picture");
    const double barePeak = Median(bare, "peak");
    results.insert(results.end(), {{"start", "toolkit", "ms", toolkit},
                                   {"start", "device", "ms", device - toolkit},
                                   {"start", "first_frame", "ms", picture - device},
                                   {"start", "total", "ms", picture},
                                   {"start", "bare_total", "ms", barePicture},
                                   {"start", "total_ratio", "", picture / barePicture},
                                   {"memory", "peak", "MiB", peak},
                                   {"memory", "bare_peak", "MiB", barePeak},
                                   {"memory", "peak_ratio", "", peak / barePeak}});
}

void MeasureAnimation(const char* group, int width, int height, const Options& options, std::vector<Result>& results) {
    MeasuredProgram run({"window_probe", std::to_string(width), std::to_string(height), std::to_string(options.seconds),
                         std::to_string(options.kind)});
    const Report report = run.Finish();
    results.insert(results.end(), {{group, "frames_per_second", "1/s", report.at("rate")},
                                   {group, "processor_per_frame", "ms", report.at("processor")},
                                   {group, "render_thread_per_frame", "ms", report.at("thread")}});
}

void MeasureScene(std::vector<Result>& results) {
    MeasuredProgram run({"scene_probe"});
    const Report report = run.Finish();
    results.insert(results.end(), {{"scene_200_nodes", "unchanged", "ms", report.at("unchanged")},
                                   {"scene_200_nodes", "one_changed", "ms", report.at("changed")},
                                   {"scene_200_nodes", "empty_scene", "ms", report.at("empty")},
                                   {"scene_200_nodes", "unchanged_all_threads", "ms", report.at("unchanged_all")},
                                   {"scene_200_nodes", "one_changed_all_threads", "ms", report.at("changed_all")},
                                   {"scene_200_nodes", "empty_all_threads", "ms", report.at("empty_all")}});
}

double Load() {
    double load = 0;
    std::ifstream("/proc/loadavg") >> load;
    return load;
}

void PrintTable(const std::vector<Result>& results) {
    const char* group = "";
    for (const Result& each : results) {
        if (std::strcmp(group, each.group) != 0) std::printf("%s\n", group = each.group);
        std::printf("  %-26s %10.3f %s\n", each.name, each.value, each.unit);
    }
}

void PrintJson(const std::vector<Result>& results) {
    const char* group = nullptr;
    std::printf("{");
    for (const Result& each : results) {
        const bool opens = !group || std::strcmp(group, each.group) != 0;
        if (opens) std::printf("%s\"%s\": {", group ? "}, " : "", each.group);
        std::printf("%s\"%s\": %.4f", opens ? "" : ", ", each.name, each.value);
        group = each.group;
    }
    std::printf("}}\n");
}

int Run(const Options& options) {
    std::vector<Result> results{{"machine", "load_before", "", Load()}};
    {
        ScreenWatch screen;
        MeasureStart(screen, options, results);
    }
    MeasureScene(results);
    if (options.seconds > 0) {
        MeasureAnimation("animation_1538x1505", 1538, 1505, options, results);
        MeasureAnimation("animation_1280x984", 1280, 984, options, results);
    }
    results.insert(results.begin() + 1, {"machine", "load_after", "", Load()});
    options.json ? PrintJson(results) : PrintTable(results);
    return 0;
}

}  // namespace

int main(int count, char** words) try { return Run(ReadOptions(count, words)); } catch (const std::exception& failure) {
    std::fprintf(stderr, "start_bench: %s\n", failure.what());
    return 1;
}
