#include "Report.h"

#include <algorithm>
#include <cstdio>

namespace BackgroundBench {

double SizeResult::CopyMilliseconds() const {
    std::vector<double> medians;
    for (const KindResult& each : kinds) medians.push_back(each.copy.median);
    std::ranges::sort(medians);
    return medians.empty() ? 0.0 : medians[medians.size() / 2];
}

void PrintLine(const KindResult& result) {
    const Scenario& scenario = result.scenario;
    const auto index = static_cast<std::size_t>(scenario.kind);
    std::printf("%u by %u, kind %zu (%s", scenario.width, scenario.height, index,
                Tamborel::kBackgroundDisplayNames[index]);
    if (scenario.spacing != 0) std::printf(", spacing %d", scenario.spacing);
    std::printf(")\n");
    const auto line = [&](const char* name, const Timing& timing) {
        std::printf("  %-16s median %8.2f ms  95%% %8.2f ms  cpu %8.2f ms  %6.2f copies, %6.2f by cpu\n", name,
                    timing.median, timing.slow, timing.cpu, timing.median / result.copy.median,
                    timing.cpu / result.copy.cpu);
    };
    line("copy", result.copy);
    line("stage", result.stage);
    line("blit", result.blit);
    line("bare frame", result.bareFrame);
    line("toolkit frame", result.frame);
    std::printf("  the toolkit adds %.1f%% time, %.1f%% processor time\n",
                100.0 * (result.frame.median / result.bareFrame.median - 1.0),
                100.0 * (result.frame.cpu / result.bareFrame.cpu - 1.0));
    std::fflush(stdout);
}

void PrintJson(const std::vector<SizeResult>& results) {
    std::printf("{\"sizes\":[");
    const char* betweenSizes = "";
    for (const SizeResult& size : results) {
        std::printf("%s{\"width\":%u,\"height\":%u,\"copyMs\":%.4f,\"kinds\":[", betweenSizes, size.width, size.height,
                    size.CopyMilliseconds());
        betweenSizes = ",";
        const char* betweenKinds = "";
        for (const KindResult& each : size.kinds) {
            std::printf(
                "%s{\"kind\":%u,\"spacing\":%d,\"stageMs\":%.4f,\"blitMs\":%.4f,\"frameMs\":%.4f,"
                "\"bareFrameMs\":%.4f,\"cpuMsPerFrame\":%.4f}",
                betweenKinds, static_cast<std::uint32_t>(each.scenario.kind), each.scenario.spacing, each.stage.median,
                each.blit.median, each.frame.median, each.bareFrame.median, each.frame.cpu);
            betweenKinds = ",";
        }
        std::printf("]}");
    }
    std::printf("]}\n");
}

}  // namespace BackgroundBench
