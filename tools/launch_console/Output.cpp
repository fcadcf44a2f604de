#include "tools/launch_console/Output.h"

#include <ostream>

#include "Platform/Text/Unicode.h"

namespace LaunchConsole {

void Output::Write(const Record& record) {
    stream_ << record.dump(-1, ' ', false, Record::error_handler_t::replace) << '\n' << std::flush;
}

std::string Text(std::wstring_view text) {
    return Platform::Utf8FromWide(text);
}

}  // namespace LaunchConsole
