// Streams in memory. Implemented in Platform/Linux/Com.
#pragma once

#include <objidl.h>

/// A stream over a copy of the bytes, with one reference. Null if there is no memory for it.
IStream* WINAPI SHCreateMemStream(const BYTE* bytes, UINT size) noexcept;
