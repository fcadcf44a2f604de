// Plain types of the DXGI interfaces.
#pragma once

#include <dxgicommon.h>
#include <dxgiformat.h>
#include <winerror.h>
