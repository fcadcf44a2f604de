#include "tools/launch_console/Console.h"

#include <exception>
#include <ostream>

#include "tools/launch_console/Arguments.h"
#include "tools/launch_console/Calls.h"
#include "tools/launch_console/Output.h"
#include "tools/launch_console/Usage.h"

namespace LaunchConsole {

namespace {

Status Run(const std::vector<std::wstring>& words, std::ostream& out, std::ostream& err) {
    try {
        if (words.size() == 1 && (words.front() == L"--help" || words.front() == L"-h")) {
            out << HelpText() << std::flush;
            return out ? Status::Positive : Status::Negative;
        }
        const Call& call = FindCall(words);
        Output output(out);
        const Arguments arguments(call.syntax, {words.begin() + 1, words.end()});
        const Status status = call.run(arguments, output, err);
        if (out) return status;
        err << "The result could not be written.\n";
        return Status::Negative;
    } catch (const WrongUsage& error) {
        err << error.what() << "\n\n" << UsageText();
        return Status::WrongUsage;
    } catch (const std::exception& error) {
        err << error.what() << '\n';
        return Status::Negative;
    }
}

}  // namespace

int RunConsole(const std::vector<std::wstring>& arguments, std::ostream& out, std::ostream& err) noexcept {
    const Status status = Run(arguments, out, err);
    err.flush();
    return static_cast<int>(status);
}

}  // namespace LaunchConsole
