#include "Platform/Linux/Processes/AttributeList.h"

#include "Platform/Linux/Base/Errors.h"

#include <algorithm>

namespace {

using Attribute = PROC_THREAD_ATTRIBUTE_LIST::Attribute;

static_assert(sizeof(PROC_THREAD_ATTRIBUTE_LIST) % alignof(Attribute) == 0);

// As many kinds as there are; a count beyond it is a mistake and could overflow the size.
constexpr DWORD maximumAttributes = 64;

Attribute* AttributesOf(LPPROC_THREAD_ATTRIBUTE_LIST list) {
    return reinterpret_cast<Attribute*>(list + 1);
}

}  // namespace

std::span<const HANDLE> Platform::HandlesOf(const PROC_THREAD_ATTRIBUTE_LIST* list) noexcept {
    if (!list) return {};
    const Attribute* const first = reinterpret_cast<const Attribute*>(list + 1);
    const Attribute* const last = first + list->count;
    const Attribute* const found = std::find_if(
        first, last, [](const Attribute& attribute) { return attribute.kind == PROC_THREAD_ATTRIBUTE_HANDLE_LIST; });
    if (found == last) return {};
    return {static_cast<const HANDLE*>(found->value), found->size / sizeof(HANDLE)};
}

BOOL InitializeProcThreadAttributeList(LPPROC_THREAD_ATTRIBUTE_LIST list, DWORD count, DWORD flags,
                                       PSIZE_T size) noexcept {
    if (!size || flags != 0 || count > maximumAttributes) return Platform::Fail(ERROR_INVALID_PARAMETER);
    const SIZE_T needed = sizeof *list + count * sizeof(Attribute);
    const bool fits = list && *size >= needed;
    *size = needed;
    if (!fits) return Platform::Fail(ERROR_INSUFFICIENT_BUFFER);
    list->capacity = count;
    list->count = 0;
    return TRUE;
}

BOOL UpdateProcThreadAttribute(LPPROC_THREAD_ATTRIBUTE_LIST list, DWORD flags, DWORD_PTR attribute, PVOID value,
                               SIZE_T size, PVOID previousValue, PSIZE_T returnSize) noexcept {
    const bool known =
        attribute == PROC_THREAD_ATTRIBUTE_HANDLE_LIST && value && size != 0 && size % sizeof(HANDLE) == 0;
    if (!list || flags != 0 || previousValue || returnSize || !known) return Platform::Fail(ERROR_INVALID_PARAMETER);
    if (!Platform::HandlesOf(list).empty()) return Platform::Fail(ERROR_INVALID_PARAMETER);
    if (list->count == list->capacity) return Platform::Fail(ERROR_GEN_FAILURE);
    AttributesOf(list)[list->count++] = {.kind = attribute, .value = value, .size = size};
    return TRUE;
}

void DeleteProcThreadAttributeList(LPPROC_THREAD_ATTRIBUTE_LIST list) noexcept {
    // The memory is the caller's; a list that is used after this has nothing in it.
    if (list) list->count = list->capacity = 0;
}
