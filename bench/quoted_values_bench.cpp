// Throughput of the scan of Steam's text files, on what they hold and on the largest and worst of what they could.
#include "launcher/GameDiscovery/QuotedValues.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace {

constexpr std::size_t largestFile = 4'194'304;

std::string Repeated(const std::string& piece, std::size_t size) {
    std::string text;
    text.reserve(size + piece.size());
    while (text.size() < size) text += piece;
    return text;
}

/// A library's block, as the client writes it.
std::string Typical() {
    std::string block =
        "\t\"1\"\n\t{\n\t\t\"path\"\t\t\"D:\\\\Games\\\\SteamLibrary\"\n\t\t\"label\"\t\t\"\"\n"
        "\t\t\"contentid\"\t\t\"7268437120394871234\"\n\t\t\"totalsize\"\t\t\"1000186310656\"\n\t\t\"apps\"\n\t\t{\n";
    for (int app = 0; app < 40; ++app) block += "\t\t\t\"" + std::to_string(220 + 10 * app) + "\"\t\t\"4718592000\"\n";
    return Repeated(block + "\t\t}\n\t}\n", std::size_t{64} * 1024);
}

std::string OneValue(char character) {
    const std::string start = "\"path\" \"";
    return start + std::string((largestFile - start.size() - 1) / 2 * 2, character) + '"';
}

void Scan(benchmark::State& state, const std::string& text) {
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(GameDiscovery::FindQuotedValues(text, "path"));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
    state.counters["MB/s"] =
        benchmark::Counter(static_cast<double>(state.iterations() * text.size()) / 1e6, benchmark::Counter::kIsRate);
}

}  // namespace

BENCHMARK_CAPTURE(Scan, typical_64_kib, Typical());
BENCHMARK_CAPTURE(Scan, one_value_4_mib, OneValue('x'));
BENCHMARK_CAPTURE(Scan, one_value_of_backslashes_4_mib, OneValue('\\'));
BENCHMARK_CAPTURE(Scan, all_backslashes_4_mib, std::string(largestFile, '\\'));
BENCHMARK_CAPTURE(Scan, all_quotes_4_mib, std::string(largestFile, '"'));
BENCHMARK_CAPTURE(Scan, starts_without_an_end_4_mib, Repeated("\"path\" \"a\\\n", largestFile));

BENCHMARK_MAIN();
