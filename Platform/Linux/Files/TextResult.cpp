#include "Platform/Linux/Files/TextResult.h"

#include <algorithm>

namespace Platform {

DWORD CopyOrTellSize(std::wstring_view text, LPWSTR buffer, DWORD size) noexcept {
    const auto length = static_cast<DWORD>(text.size());
    if (!buffer || length >= size) return length + 1;
    *std::ranges::copy(text, buffer).out = L'\0';
    return length;
}

}  // namespace Platform
