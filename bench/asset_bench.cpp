// How long the first use of all built-in assets takes: asset_bench [runs]. Each run is a process of its own, since an
// asset is deciphered once; it includes what the cryptographic library does at its first call.
#include "Core/EmbeddedAssets.h"
#include "Median.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

using Tamborel::EmbeddedResource;
namespace Assets = Tamborel::Assets;

struct Times {
    double drawings;  // milliseconds
    double fonts;
};

double MillisecondsFor(const std::vector<EmbeddedResource*>& resources) {
    const auto start = std::chrono::steady_clock::now();
    for (EmbeddedResource* const resource : resources) {
        if (resource->Data().second == 0) std::abort();
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

Times MeasureInThisProcess() {
    // The order of a program's start: fonts first.
    const double fonts = MillisecondsFor({&Assets::FontRegular, &Assets::FontSemibold, &Assets::FontBold});
    const double drawings =
        MillisecondsFor({&Assets::AppIcon, &Assets::ReservedGlyphFirst, &Assets::ReservedGlyphSecond,
                         &Assets::MinimizeGlyph, &Assets::MaximizeGlyph, &Assets::CloseGlyph});
    return {drawings, fonts};
}

bool MeasureInAChild(Times& times) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return false;
    const pid_t child = fork();
    if (child < 0) return false;
    if (child == 0) {
        const Times measured = MeasureInThisProcess();
        _exit(write(ends[1], &measured, sizeof(measured)) == sizeof(measured) ? 0 : 1);
    }
    close(ends[1]);
    const bool read = ::read(ends[0], &times, sizeof(times)) == sizeof(times);
    close(ends[0]);
    int status = 0;
    return waitpid(child, &status, 0) == child && status == 0 && read;
}

}  // namespace

int main(int argc, char** argv) {
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 51;
    std::vector<double> all;
    std::vector<double> fonts;
    for (int run = 0; run < runs; ++run) {
        Times times{};
        if (!MeasureInAChild(times)) {
            std::fputs("A run failed.\n", stderr);
            return 1;
        }
        all.push_back(times.fonts + times.drawings);
        fonts.push_back(times.fonts);
    }
    std::printf(
        "deciphering all nine assets, median of %d starts: %.3f ms, of which the fonts and the library's start: "
        "%.3f ms\n",
        runs, Median(all), Median(fonts));
    return 0;
}
