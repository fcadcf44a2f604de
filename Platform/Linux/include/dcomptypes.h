// Records and enumerations of DirectComposition. Nothing here has a caller yet; the header exists under its name.
#pragma once

#include <minwindef.h>
