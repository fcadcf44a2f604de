// What the parts of the log share. For this folder's log alone.
#pragma once

#include <cstdio>

namespace Tamborel {

/// The open log file, or null. A plain variable: it is set before the program has other threads that log.
extern std::FILE* logStream;

}  // namespace Tamborel
