#include "FeedbackReport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

double At(const std::vector<double>& sorted, double share) {
    return sorted[static_cast<std::size_t>(std::lround(share * static_cast<double>(sorted.size() - 1)))];
}

struct Summary {
    const char* name;
    double least, median, high, most;  ///< Milliseconds; `high` is the 95th percentile.
    double inTime;                     ///< Share that came within two frames of the display.
    int medianPictures, mostPictures;
};

Summary Summarize(const Series& series) {
    std::vector<double> times;
    std::vector<int> pictures;
    for (const Answer& answer : series.answers) {
        times.push_back(answer.milliseconds);
        pictures.push_back(answer.pictures);
    }
    std::ranges::sort(times);
    std::ranges::sort(pictures);
    const auto inTime = std::ranges::count_if(times, [](double time) { return time <= 2 * displayPeriod; });
    return {series.name,
            times.front(),
            At(times, 0.5),
            At(times, 0.95),
            times.back(),
            static_cast<double>(inTime) / static_cast<double>(times.size()),
            pictures[pictures.size() / 2],
            pictures.back()};
}

}  // namespace

void PrintTable(const WindowPlace& window, const Pace& pace, const std::vector<Series>& all) {
    std::printf("window %d by %d, a frame of the display every %.2f ms\n", window.width, window.height, displayPeriod);
    std::printf("a picture every %.2f ms, which takes %.2f ms of processor time\n\n", pace.period, pace.processor);
    std::printf("              milliseconds                  frames of the display         within  pictures\n");
    std::printf("%-13s   min  median     95%%     max     min  median     95%%     max  2 frames  median  max\n", "");
    for (const Series& series : all) {
        const Summary each = Summarize(series);
        std::printf("%-13s %5.1f %7.1f %7.1f %7.1f   %5.2f %7.2f %7.2f %7.2f     %3.0f %%  %6d %4d\n", each.name,
                    each.least, each.median, each.high, each.most, each.least / displayPeriod,
                    each.median / displayPeriod, each.high / displayPeriod, each.most / displayPeriod,
                    each.inTime * 100, each.medianPictures, each.mostPictures);
    }
}

void PrintJson(const WindowPlace& window, const Pace& pace, const std::vector<Series>& all) {
    std::printf(
        "{\"window\": [%d, %d], \"picture_period\": %.4f, \"picture_processor\": %.4f, \"display_period\": %.4f",
        window.width, window.height, pace.period, pace.processor, displayPeriod);
    for (const Series& series : all) {
        const Summary each = Summarize(series);
        std::printf(
            ", \"%s\": {\"min\": %.4f, \"median\": %.4f, \"percentile_95\": %.4f, \"max\": %.4f, "
            "\"median_frames\": %.4f, \"percentile_95_frames\": %.4f, \"max_frames\": %.4f, "
            "\"within_two_frames\": %.4f, \"median_pictures\": %d, \"max_pictures\": %d}",
            each.name, each.least, each.median, each.high, each.most, each.median / displayPeriod,
            each.high / displayPeriod, each.most / displayPeriod, each.inTime, each.medianPictures, each.mostPictures);
    }
    std::printf("}\n");
}
