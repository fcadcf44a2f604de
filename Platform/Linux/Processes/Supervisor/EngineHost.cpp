#include "Platform/Linux/Processes/Supervisor/EngineHost.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace Platform {

namespace {

struct Pipe {
    FileDescriptor read;
    FileDescriptor write;

    Pipe() {
        int ends[2] = {-1, -1};
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe2");
        read.Reset(ends[0]);
        write.Reset(ends[1]);
    }
};

void PutNumber(std::string& bytes, std::size_t number) {
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>((number >> shift) & 0xFF));
}

}  // namespace

std::vector<HostReport> TakeHostReports(std::string& text) {
    constexpr std::string_view mark = "engine_host ";
    constexpr std::pair<std::string_view, HostReport::Kind> words[] = {
        {"ready", HostReport::Kind::Ready},
        {"started", HostReport::Kind::Started},
        {"failed", HostReport::Kind::Failed},
        {"exit", HostReport::Kind::Exit},
    };
    std::vector<HostReport> reports;
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
        const std::string line = text.substr(0, end);
        text.erase(0, end + 1);
        if (!line.starts_with(mark)) continue;
        const std::string_view said = std::string_view(line).substr(mark.size());
        const std::string_view word = said.substr(0, said.find(' '));
        const std::string_view digits = said.substr(std::min(word.size() + 1, said.size()));
        for (const auto& [name, kind] : words) {
            if (word != name) continue;
            HostReport report{.kind = kind, .number = 0};
            std::from_chars(digits.data(), digits.data() + digits.size(), report.number);
            reports.push_back(report);
        }
    }
    return reports;
}

EngineHost::EngineHost(ChildProcesses& children, const std::vector<std::string>& command) {
    Pipe orders;
    Pipe reports;
    // Room for a whole order: a write that had to wait could wait for ever, since processes that Wine leaves behind
    // hold the other end too.
    fcntl(orders.write.Get(), F_SETPIPE_SZ, 256 * 1024);
    fcntl(reports.read.Get(), F_SETFL, O_NONBLOCK);
    loader_ = children.Start(command, orders.read.Get(), reports.write.Get(), OnDeath::Kill);
    orders_ = std::move(orders.write);
    reports_ = std::move(reports.read);
}

void EngineHost::Order(const StartRequest& request) {
    const std::string_view commandLine{reinterpret_cast<const char*>(request.commandLine.data()),
                                       request.commandLine.size() * sizeof(char16_t)};
    // Mirrors struct Request of engine_host.c: little-endian numbers, then the three texts.
    std::string bytes;
    PutNumber(bytes, request.showWindow);
    PutNumber(bytes, request.image.size());
    PutNumber(bytes, commandLine.size());
    PutNumber(bytes, request.folder.size());
    bytes.append(request.image).append(commandLine).append(request.folder);
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t written = write(orders_.Get(), rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return;  // The host is gone, as its loader's end is about to tell.
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
}

std::optional<HostReport> EngineHost::NextReport() {
    Read();
    if (reported_.empty()) return std::nullopt;
    const HostReport first = reported_.front();
    reported_.pop_front();
    return first;
}

void EngineHost::Read() {
    constexpr std::size_t longestLine = std::size_t{64} << 10;
    std::array<char, 4096> buffer{};
    while (reports_) {
        const ssize_t size = read(reports_.Get(), buffer.data(), buffer.size());
        if (size < 0 && errno == EINTR) continue;
        if (size < 0) break;
        if (size == 0) reports_.Reset();  // Else poll(2) would report the hang-up again and again.
        unread_.append(buffer.data(), static_cast<std::size_t>(size));
        for (const HostReport& report : TakeHostReports(unread_)) reported_.push_back(report);
        if (unread_.size() > longestLine) unread_.clear();
    }
}

}  // namespace Platform
