// baseq2/qconsole.log, the engine's own account of a run.
#pragma once

#include <windows.h>

/// Opens the log in the working directory for appending. Without a baseq2 folder there is no log, and the engine runs
/// on.
HANDLE OpenLog(void);

/// Appends one line, formatted as by wprintf, as UTF-8. Each line is one write, so runs that overlap keep theirs whole.
void LogLine(HANDLE log, const wchar_t* format, ...);
