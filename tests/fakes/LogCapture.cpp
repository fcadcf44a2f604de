#include "tests/fakes/LogCapture.h"

#include "Platform/Linux/Base/DebugOutput.h"

#include <mutex>
#include <regex>
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
    static const std::regex pattern(
        "\\[Tamborel\\] FAILED (0x[0-9A-F]{8}) \\((.*)\\)\n  expr : (.*)\n  at   : (.*:[0-9]+)\n");
    std::vector<Report> reports;
    for (std::sregex_iterator each(log.begin(), log.end(), pattern), end; each != end; ++each)
        reports.push_back({(*each)[1], (*each)[2], (*each)[3], (*each)[4]});
    return reports;
}

}  // namespace Fakes
