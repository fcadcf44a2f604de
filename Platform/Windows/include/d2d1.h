// The cross compiler's own header, told that methods return records through a hidden pointer. The system's library does
// so, while GCC would return small ones in registers.
#pragma once

#ifndef WIDL_EXPLICIT_AGGREGATE_RETURNS
#define WIDL_EXPLICIT_AGGREGATE_RETURNS
#endif

#include_next <d2d1.h>
