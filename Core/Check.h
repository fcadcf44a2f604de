// The one way in which the toolkit looks at the result of a platform call that may fail.
#pragma once

#include <windows.h>

namespace Tamborel {

/// Writes the failure report to the log: the code with the system's text for it, the expression, and the place in the
/// source. It decides nothing: the caller goes on. Any thread.
void ReportFailure(HRESULT code, const char* expression, const char* file, int line) noexcept;

}  // namespace Tamborel

/// Evaluates an expression of type HRESULT. A failure is reported with the expression's text as it stands in the source
/// and returned from the enclosing function. A line break within the expression shows as one blank in the report.
#define TAMBOREL_CHECK(...)                                                                   \
    do {                                                                                      \
        const HRESULT tamborelCheckResult = (__VA_ARGS__);                                    \
        if (tamborelCheckResult < 0) {                                                        \
            ::Tamborel::ReportFailure(tamborelCheckResult, #__VA_ARGS__, __FILE__, __LINE__); \
            return tamborelCheckResult;                                                       \
        }                                                                                     \
    } while (false)
