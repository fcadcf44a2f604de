#include "Platform/Text/Unicode.h"

#include <cstddef>
#include <optional>

namespace Platform {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t lastCodePoint = 0x10FFFF;
constexpr bool wideIsUtf16 = sizeof(wchar_t) == sizeof(char16_t);

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}
constexpr bool IsSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

constexpr char32_t FromPair(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// A byte of a name that isn't UTF-8 stands as this lone surrogate.
constexpr char32_t FromStrayByte(unsigned char byte) {
    return 0xDC00U + byte;
}
constexpr bool IsStrayByte(char32_t unit) {
    return unit >= 0xDC80 && unit <= 0xDCFF;
}

/// Decodes the sequence at `position` and moves past it; nothing, and no move, when it isn't well formed.
std::optional<char32_t> DecodeUtf8(std::string_view text, std::size_t& position) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[position + index]); };
    const unsigned char lead = byte(0);
    std::size_t length = 1;
    char32_t value = lead;
    char32_t least = 0;
    if (lead >= 0x80) {
        if (lead < 0xC2 || lead > 0xF4) return std::nullopt;
        length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        least = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
        value = lead & (0x7FU >> length);
    }
    if (text.size() - position < length) return std::nullopt;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80) return std::nullopt;
        value = (value << 6) | (byte(i) & 0x3FU);
    }
    if (value < least || value > lastCodePoint || IsSurrogate(value)) return std::nullopt;
    position += length;
    return value;
}

void AppendUtf8(std::string& text, char32_t value) {
    const auto put = [&](char32_t byte) { text.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (value < 0x80) {
        put(value);
    } else if (value < 0x800) {
        put(0xC0 | (value >> 6));
        put(0x80 | (value & 0x3F));
    } else if (value < 0x10000) {
        put(0xE0 | (value >> 12));
        put(0x80 | ((value >> 6) & 0x3F));
        put(0x80 | (value & 0x3F));
    } else {
        put(0xF0 | (value >> 18));
        put(0x80 | ((value >> 12) & 0x3F));
        put(0x80 | ((value >> 6) & 0x3F));
        put(0x80 | (value & 0x3F));
    }
}

/// Appends a code point, or a lone surrogate, as UTF-16.
template <class String>
void AppendUtf16(String& text, char32_t value) {
    using Unit = typename String::value_type;
    if (value < 0x10000) {
        text.push_back(static_cast<Unit>(value));
        return;
    }
    text.push_back(static_cast<Unit>(0xD800 + ((value - 0x10000) >> 10)));
    text.push_back(static_cast<Unit>(0xDC00 + ((value - 0x10000) & 0x3FF)));
}

void AppendWide(std::wstring& text, char32_t value) {
    if constexpr (wideIsUtf16) {
        AppendUtf16(text, value);
    } else {
        text.push_back(static_cast<wchar_t>(value));
    }
}

/// Reads the code point at `position` of UTF-16 text and moves past it. A lone surrogate comes back as it is.
template <class View>
char32_t TakeUtf16(View text, std::size_t& position) {
    const char32_t unit = static_cast<char16_t>(text[position++]);
    if (!IsHighSurrogate(unit) || position == text.size()) return unit;
    const char32_t next = static_cast<char16_t>(text[position]);
    if (!IsLowSurrogate(next)) return unit;
    ++position;
    return FromPair(unit, next);
}

/// The same for wide text. With 32 bits to a character every surrogate stands alone; values past Unicode's end become
/// U+FFFD.
char32_t TakeWide(std::wstring_view text, std::size_t& position) {
    if constexpr (wideIsUtf16) {
        return TakeUtf16(text, position);
    } else {
        const auto value = static_cast<char32_t>(text[position++]);
        return value > lastCodePoint ? replacement : value;
    }
}

}  // namespace

std::wstring WideFromUtf8(std::string_view utf8) {
    std::wstring wide;
    wide.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();) {
        const std::optional<char32_t> value = DecodeUtf8(utf8, position);
        if (!value) throw InvalidText("text is not valid UTF-8");
        AppendWide(wide, *value);
    }
    return wide;
}

std::string Utf8FromWide(std::wstring_view wide) {
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::size_t position = 0; position < wide.size();) {
        const char32_t value = TakeWide(wide, position);
        AppendUtf8(utf8, IsSurrogate(value) ? replacement : value);
    }
    return utf8;
}

std::u16string Utf16FromWide(std::wstring_view wide) {
    std::u16string utf16;
    utf16.reserve(wide.size());
    for (std::size_t position = 0; position < wide.size();) AppendUtf16(utf16, TakeWide(wide, position));
    return utf16;
}

std::wstring WideFromUtf16(std::u16string_view utf16) {
    std::wstring wide;
    wide.reserve(utf16.size());
    for (std::size_t position = 0; position < utf16.size();) AppendWide(wide, TakeUtf16(utf16, position));
    return wide;
}

std::wstring WideFromNative(std::string_view native) {
    std::wstring wide;
    wide.reserve(native.size());
    for (std::size_t position = 0; position < native.size();) {
        if (const std::optional<char32_t> value = DecodeUtf8(native, position)) {
            AppendWide(wide, *value);
        } else {
            AppendWide(wide, FromStrayByte(static_cast<unsigned char>(native[position++])));
        }
    }
    return wide;
}

std::string NativeFromWide(std::wstring_view wide) {
    std::string native;
    native.reserve(wide.size());
    for (std::size_t position = 0; position < wide.size();) {
        const char32_t value = TakeWide(wide, position);
        if (IsStrayByte(value)) {
            native.push_back(static_cast<char>(static_cast<unsigned char>(value & 0xFF)));
        } else {
            AppendUtf8(native, IsSurrogate(value) ? replacement : value);
        }
    }
    return native;
}

}  // namespace Platform
