#pragma once

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace LaunchConsole {

/// One line of output. Fields keep the order in which they are given.
using Record = nlohmann::ordered_json;

/// Writes records, one a line, flushed at once so that a reader at the other end of a pipe has each when it is made.
/// Text that is not UTF-8 has U+FFFD where it isn't.
class Output {
public:
    explicit Output(std::ostream& stream) : stream_(stream) {}
    void Write(const Record& record);

private:
    std::ostream& stream_;
};

/// Text for a record: UTF-8, with U+FFFD for what has no place in it.
std::string Text(std::wstring_view text);

}  // namespace LaunchConsole
