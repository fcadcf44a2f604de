// Processor identification.
#pragma once

#include <cpuid.h>  // GCC and clang: __cpuid_count, and in newer versions __cpuidex itself

#if !defined(__cpuidex) && (!defined(__GNUC__) || __GNUC__ < 11 || defined(__clang__))
/// Stores EAX, EBX, ECX and EDX of a `cpuid` leaf and sub-leaf.
inline void __cpuidex(int info[4], int leaf, int subleaf) {
    __cpuid_count(leaf, subleaf, info[0], info[1], info[2], info[3]);
}
#endif
