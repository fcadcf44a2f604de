// Status codes of the functions that answer NTSTATUS. Failures are negative.
#pragma once

#include <minwindef.h>

using NTSTATUS = LONG;

constexpr NTSTATUS STATUS_SUCCESS = 0;
constexpr auto STATUS_INVALID_HANDLE = static_cast<NTSTATUS>(0xC0000008);
constexpr auto STATUS_INVALID_PARAMETER = static_cast<NTSTATUS>(0xC000000D);
constexpr auto STATUS_NO_MEMORY = static_cast<NTSTATUS>(0xC0000017);
constexpr auto STATUS_BUFFER_TOO_SMALL = static_cast<NTSTATUS>(0xC0000023);
constexpr auto STATUS_NOT_SUPPORTED = static_cast<NTSTATUS>(0xC00000BB);
constexpr auto STATUS_INTERNAL_ERROR = static_cast<NTSTATUS>(0xC00000E5);
constexpr auto STATUS_NOT_FOUND = static_cast<NTSTATUS>(0xC0000225);
constexpr auto STATUS_AUTH_TAG_MISMATCH = static_cast<NTSTATUS>(0xC000A002);
