#include "Platform/Linux/Files/CaseFolding.h"

#include "Platform/Text/Unicode.h"

#include <windows.h>

#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <compare>
#include <cstddef>

namespace Platform {

namespace {

constexpr bool IsAscii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}

template <class Character>
constexpr Character FoldAscii(Character character) {
    return character >= Character{'A'} && character <= Character{'Z'} ? static_cast<Character>(character - 'A' + 'a')
                                                                      : character;
}

}  // namespace

wchar_t FoldCase(wchar_t character) noexcept {
    if (static_cast<unsigned long>(character) < 0x80) return FoldAscii(character);
    // Built into the C library (glibc 2.35 and later). Without it only ASCII letters fold.
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (!unicode) return character;
    return static_cast<wchar_t>(towlower_l(static_cast<wint_t>(character), unicode));
}

bool EqualIgnoringCase(std::wstring_view left, std::wstring_view right) noexcept {
    return std::ranges::equal(left, right, {}, FoldCase, FoldCase);
}

bool EqualNamesIgnoringCase(std::string_view left, std::string_view right) {
    if (std::ranges::all_of(left, IsAscii) && std::ranges::all_of(right, IsAscii)) {
        return std::ranges::equal(left, right, {}, FoldAscii<char>, FoldAscii<char>);
    }
    return EqualIgnoringCase(WideFromNative(left), WideFromNative(right));
}

}  // namespace Platform

int CompareStringOrdinal(LPCWSTR left, int leftLength, LPCWSTR right, int rightLength, BOOL ignoreCase) noexcept {
    if (!left || !right || leftLength < -1 || rightLength < -1) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto text = [](LPCWSTR characters, int length) {
        return length < 0 ? std::wstring_view(characters)
                          : std::wstring_view(characters, static_cast<std::size_t>(length));
    };
    const std::wstring_view one = text(left, leftLength);
    const std::wstring_view other = text(right, rightLength);
    const auto order = std::lexicographical_compare_three_way(
        one.begin(), one.end(), other.begin(), other.end(), [ignoreCase](wchar_t a, wchar_t b) {
            return ignoreCase ? Platform::FoldCase(a) <=> Platform::FoldCase(b) : a <=> b;
        });
    if (order < 0) return CSTR_LESS_THAN;
    return order > 0 ? CSTR_GREATER_THAN : CSTR_EQUAL;
}
