// Comparing text. Implemented in Platform/Linux/Files.
#pragma once

#include <minwindef.h>

constexpr int CSTR_LESS_THAN = 1;
constexpr int CSTR_EQUAL = 2;
constexpr int CSTR_GREATER_THAN = 3;

/// Compares two texts code unit by code unit, with `ignoreCase` after folding each by the simple one-to-one mapping,
/// whatever the locale. A length of -1 means up to the terminator. One of the CSTR_ values; 0 for a null text or a
/// length below -1. Any thread.
int CompareStringOrdinal(LPCWSTR left, int leftLength, LPCWSTR right, int rightLength, BOOL ignoreCase) noexcept;
