// The attributes of a process start, as the caller's memory holds them.
#pragma once

#include <windows.h>

#include <span>

/// The head of the list; its attributes follow it in the same memory.
struct PROC_THREAD_ATTRIBUTE_LIST {
    DWORD capacity;
    DWORD count;
    struct Attribute {
        DWORD_PTR kind;
        PVOID value;
        SIZE_T size;
    };
};

static_assert(sizeof(STARTUPINFOEXW) == 112);
static_assert(PROC_THREAD_ATTRIBUTE_HANDLE_LIST == 0x20002);

namespace Platform {

/// The handles of a list's handle attribute; empty where it has none. `list` may be null.
std::span<const HANDLE> HandlesOf(const PROC_THREAD_ATTRIBUTE_LIST* list) noexcept;

}  // namespace Platform
