// The system's profile functions.
#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Files/NameLookup.h"
#include "Platform/Linux/Profile/ProfileFile.h"
#include "Platform/Linux/Profile/ProfileText.h"

#include <windows.h>

#include <algorithm>
#include <new>

namespace {

/// The value as the file has it; nothing, and ERROR_FILE_NOT_FOUND as the last error, where file, section or key is
/// missing.
std::optional<std::wstring> Read(LPCWSTR section, LPCWSTR key, LPCWSTR fileName) {
    std::optional<std::wstring> value;
    if (section && key && fileName) {
        if (const std::optional<std::string> content = Platform::ReadProfileFile(Platform::NativePath(fileName))) {
            value = Platform::ProfileText(*content).Value(section, key);
        }
    }
    SetLastError(value ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND);
    if (value) value->resize(std::min(value->find(L'\0'), value->size()));  // what a caller's C string can hold
    return value;
}

/// A default as it is given out: without the blanks at its end.
std::wstring Default(LPCWSTR value) {
    std::wstring text = value ? value : L"";
    text.resize(text.find_last_not_of(L' ') + 1);  // npos + 1 is 0
    return text;
}

}  // namespace

DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue, LPWSTR buffer, DWORD size,
                               LPCWSTR fileName) noexcept try {
    if (!buffer || size == 0) return 0;
    const std::wstring value = Read(section, key, fileName).value_or(Default(defaultValue));
    const std::size_t length = value.copy(buffer, size - 1);
    buffer[length] = L'\0';
    return static_cast<DWORD>(length);
} catch (const std::exception&) {
    *buffer = L'\0';
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return 0;
}

UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT defaultValue, LPCWSTR fileName) noexcept try {
    const std::wstring text = Read(section, key, fileName).value_or(std::wstring());
    if (text.empty()) return static_cast<UINT>(defaultValue);
    std::size_t position = std::min(text.find_first_not_of(L" \t"), text.size());
    const bool negative = text.substr(position).starts_with(L'-');
    if (negative || text.substr(position).starts_with(L'+')) ++position;
    UINT number = 0;
    for (; position < text.size() && text[position] >= L'0' && text[position] <= L'9'; ++position) {
        number = number * 10 + static_cast<UINT>(text[position] - L'0');
    }
    return negative ? 0 - number : number;
} catch (const std::exception&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return static_cast<UINT>(defaultValue);
}

BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR fileName) noexcept try {
    // Without a key or a value the system removes things; nobody here does.
    if (!section || !key || !value || !fileName || !*fileName) return Platform::Fail(ERROR_INVALID_PARAMETER);
    if (!Platform::ProfileText::CanHold(section, key, value)) return Platform::Fail(ERROR_INVALID_PARAMETER);
    const DWORD error = Platform::EditProfileFile(Platform::NativePath(fileName), section, key, value);
    return error == ERROR_SUCCESS ? TRUE : Platform::Fail(error);
} catch (const std::exception&) {
    return Platform::Fail(ERROR_NOT_ENOUGH_MEMORY);
}
