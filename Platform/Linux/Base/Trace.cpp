#include "Platform/Linux/Base/Trace.h"

#include <cstdio>
#include <mutex>
#include <set>
#include <string>

namespace Platform {

namespace {

void WriteOnce(const std::string& line) {
    static std::mutex mutex;
    static auto* const written = new std::set<std::string>;  // guarded by mutex; never destroyed: any thread, any time
    const std::lock_guard lock(mutex);
    if (written->insert(line).second) std::fputs(line.c_str(), stderr);
}

}  // namespace

HRESULT NotImplemented(std::string_view name) noexcept {
    try {
        WriteOnce(std::string(name) + " is not implemented.\n");
    } catch (...) {  // A trace is worth no failure of its own.
    }
    return E_NOTIMPL;
}

HRESULT NoInterface(std::string_view className, REFIID iid) noexcept {
    try {
        char text[40];
        std::snprintf(text, sizeof text, "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", iid.Data1, iid.Data2,
                      iid.Data3, iid.Data4[0], iid.Data4[1], iid.Data4[2], iid.Data4[3], iid.Data4[4], iid.Data4[5],
                      iid.Data4[6], iid.Data4[7]);
        WriteOnce(std::string(className) + " has no interface {" + text + "}.\n");
    } catch (...) {}
    return E_NOINTERFACE;
}

void TraceFailure(std::string_view step, std::string_view cause) noexcept {
    std::fprintf(stderr, "Folder dialog: %.*s: %.*s\n", static_cast<int>(step.size()), step.data(),
                 static_cast<int>(cause.size()), cause.data());
}

}  // namespace Platform
