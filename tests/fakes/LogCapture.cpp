#include "tests/fakes/LogCapture.h"

#include "Platform/Linux/Base/DebugOutput.h"

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

namespace Fakes {

namespace {

std::mutex mutex;
std::string captured;  // guarded by mutex

void Keep(const char* text) {
    const std::lock_guard lock(mutex);
    captured += text;
}

}  // namespace

LogCapture::LogCapture() {
    Take();
    Platform::SetDebugOutput(Keep);
}

LogCapture::~LogCapture() {
    Platform::SetDebugOutput(nullptr);
}

std::string LogCapture::Text() const {
    const std::lock_guard lock(mutex);
    return captured;
}

std::string LogCapture::Take() {
    const std::lock_guard lock(mutex);
    return std::exchange(captured, {});
}

std::vector<Report> ReportsIn(const std::string& log) {
    // What stands between two of a report's fixed parts, taken off the front of `rest`.
    const auto take = [](std::string_view& rest, std::string_view end) {
        const std::size_t at = std::min(rest.find(end), rest.size());
        const std::string_view taken = rest.substr(0, at);
        rest.remove_prefix(std::min(at + end.size(), rest.size()));
        return std::string(taken);
    };
    constexpr std::string_view start = "[Tamborel] FAILED ";
    std::vector<Report> reports;
    for (std::size_t at = log.find(start); at != std::string::npos; at = log.find(start, at + 1)) {
        std::string_view rest = std::string_view(log).substr(at + start.size());
        Report report;
        report.code = take(rest, " (");
        report.text = take(rest, ")\n  expr : ");
        report.expression = take(rest, "\n  at   : ");
        report.place = take(rest, "\n");
        const bool wellFormed = report.code.size() == 10 && report.code.starts_with("0x") && !report.place.empty() &&
                                report.place.back() >= '0' && report.place.back() <= '9';
        if (wellFormed) reports.push_back(std::move(report));
    }
    return reports;
}

}  // namespace Fakes
