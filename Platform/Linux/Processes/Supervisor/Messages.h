// What a starting process and a supervisor say to each other.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// The order to start a program. The descriptors that come with it are held for as long as the program lives.
struct StartRequest {
    std::string image;           ///< The program's file: an absolute path of this system.
    std::u16string commandLine;  ///< Handed to the program exactly so.
    std::string folder;          ///< The working directory: an absolute path of this system.
    std::uint32_t showWindow = noShowWindow;

    static constexpr std::uint32_t noShowWindow = 0xFFFFFFFF;

    friend bool operator==(const StartRequest&, const StartRequest&) = default;
};

/// What became of it. Failed, or Started (with the supervisor's own pidfd) and later Ended, is all that is ever sent.
struct SupervisorReport {
    enum class Kind : std::uint32_t { Started = 1, Failed = 2, Ended = 3 };

    Kind kind = Kind::Failed;
    std::uint32_t code = 0;   ///< The system error code of a failure, the exit code of an end.
    std::string explanation;  ///< For a failure: one line for the player, UTF-8; may be empty.

    friend bool operator==(const SupervisorReport&, const SupervisorReport&) = default;
};

/// The exit code of a program whose end nobody could report: its supervisor was killed. What a program that was ended
/// from the outside returns on Windows, too.
constexpr std::uint32_t lostExitCode = 1;

std::string Encode(const StartRequest& request);
std::string Encode(const SupervisorReport& report);

/// Nothing for bytes that Encode didn't make.
std::optional<StartRequest> DecodeStartRequest(std::string_view bytes);
std::optional<SupervisorReport> DecodeSupervisorReport(std::string_view bytes);

}  // namespace Platform
