// The debug stream, caught.
#pragma once

#include <string>
#include <vector>

namespace Fakes {

/// While it lives, what goes to the debug stream is kept here and written nowhere else. One at a time; any thread may
/// write meanwhile.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::string Text() const;
    /// The text so far, which is forgotten.
    std::string Take();
};

/// A failure report, taken apart.
struct Report {
    std::string code;  ///< "0x80004005"
    std::string text;  ///< The system's, in the parentheses.
    std::string expression;
    std::string place;  ///< "folder/File.cpp:12"

    friend bool operator==(const Report&, const Report&) = default;
};

/// The reports in a log, in order. Other lines are passed over.
std::vector<Report> ReportsIn(const std::string& log);

}  // namespace Fakes
