#include "Platform/Linux/Processes/Supervisor/Messages.h"

#include <cstring>

namespace Platform {

namespace {

// Both ends are built together and run on one machine: numbers go in its own byte order.
void Put(std::string& bytes, std::uint32_t number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void PutText(std::string& bytes, std::string_view text) {
    Put(bytes, static_cast<std::uint32_t>(text.size()));
    bytes.append(text);
}

class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    std::uint32_t Number() {
        std::uint32_t number = 0;
        const std::string_view taken = Take(sizeof number);
        if (valid_) std::memcpy(&number, taken.data(), sizeof number);
        return number;
    }

    std::string_view Text() { return Take(Number()); }

    void Reject() { valid_ = false; }
    bool ValidToTheEnd() const { return valid_ && rest_.empty(); }

private:
    std::string_view Take(std::size_t size) {
        if (!valid_ || rest_.size() < size) {
            valid_ = false;
            return {};
        }
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }

    std::string_view rest_;
    bool valid_ = true;
};

}  // namespace

std::string Encode(const StartRequest& request) {
    std::string bytes;
    Put(bytes, request.showWindow);
    PutText(bytes, request.image);
    PutText(bytes, {reinterpret_cast<const char*>(request.commandLine.data()), request.commandLine.size() * 2});
    PutText(bytes, request.folder);
    return bytes;
}

std::string Encode(const SupervisorReport& report) {
    std::string bytes;
    Put(bytes, static_cast<std::uint32_t>(report.kind));
    Put(bytes, report.code);
    PutText(bytes, report.explanation);
    return bytes;
}

std::optional<StartRequest> DecodeStartRequest(std::string_view bytes) {
    Reader reader(bytes);
    StartRequest request;
    request.showWindow = reader.Number();
    request.image = reader.Text();
    const std::string_view units = reader.Text();
    if (units.size() % 2 != 0) return std::nullopt;
    request.commandLine.resize(units.size() / 2);
    if (!units.empty()) std::memcpy(request.commandLine.data(), units.data(), units.size());
    request.folder = reader.Text();
    if (!reader.ValidToTheEnd()) return std::nullopt;
    return request;
}

std::optional<SupervisorReport> DecodeSupervisorReport(std::string_view bytes) {
    Reader reader(bytes);
    SupervisorReport report;
    const std::uint32_t kind = reader.Number();
    if (kind < 1 || kind > 3) reader.Reject();
    report.kind = static_cast<SupervisorReport::Kind>(kind);
    report.code = reader.Number();
    report.explanation = reader.Text();
    if (!reader.ValidToTheEnd()) return std::nullopt;
    return report;
}

}  // namespace Platform
