#include "Platform/Linux/Wine/RegistryText.h"

#include "Platform/Linux/Files/CaseFolding.h"
#include "Platform/Text/Unicode.h"

#include <algorithm>
#include <cstddef>

namespace Platform {

namespace {

constexpr std::string_view Signature = "WINE REGISTRY Version 2";

char16_t Fold(char16_t unit) {
    return static_cast<char16_t>(FoldCase(unit));
}

std::u16string Folded(std::wstring_view text) {
    std::u16string folded = Utf16FromWide(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), Fold);
    return folded;
}

int DigitOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 16;
}

/// Takes up to `most` digits off the front.
char16_t TakeNumber(std::string_view& text, int base, int most) {
    unsigned number = 0;
    for (int i = 0; i < most && !text.empty() && DigitOf(text.front()) < base; ++i) {
        number = number * static_cast<unsigned>(base) + static_cast<unsigned>(DigitOf(text.front()));
        text.remove_prefix(1);
    }
    return static_cast<char16_t>(number);
}

/// Takes one UTF-16 code unit, written as itself or as an escape, off the front of a text that isn't empty. The escapes
/// are those of C, with one to four digits after \x and one to three octal ones; a backslash before anything else makes
/// that stand for itself. A byte above 0x7F, which Wine doesn't write, counts as Latin-1.
char16_t TakeUnit(std::string_view& text) {
    const char first = text.front();
    text.remove_prefix(1);
    if (first != '\\' || text.empty()) return static_cast<unsigned char>(first);
    const char escape = text.front();
    if (escape >= '0' && escape <= '7') return TakeNumber(text, 8, 3);
    text.remove_prefix(1);
    switch (escape) {
        case 'a':
            return u'\a';
        case 'b':
            return u'\b';
        case 'e':
            return u'\x1B';
        case 'f':
            return u'\f';
        case 'n':
            return u'\n';
        case 'r':
            return u'\r';
        case 't':
            return u'\t';
        case 'v':
            return u'\v';
        case 'x':
            if (!text.empty() && DigitOf(text.front()) < 16) return TakeNumber(text, 16, 4);
            return u'x';
        default:
            return static_cast<unsigned char>(escape);
    }
}

/// Whether the text up to the unescaped `end` is `folded`, without regard to case. If so, both are taken off the front.
bool TakeName(std::string_view& text, std::u16string_view folded, char end) {
    std::string_view rest = text;
    for (const char16_t unit : folded) {
        if (rest.empty() || rest.front() == end || Fold(TakeUnit(rest)) != unit) return false;
    }
    if (rest.empty() || rest.front() != end) return false;
    text = rest.substr(1);
    return true;
}

/// The text up to the closing quote; nothing where there is none.
std::optional<std::u16string> ParseQuoted(std::string_view text) {
    std::u16string value;
    while (!text.empty() && text.front() != '"') value += TakeUnit(text);
    if (text.empty()) return std::nullopt;
    return value;
}

/// Bytes in hexadecimal, separated by commas; a backslash at the end of a line goes on in the next one. Wine writes a
/// string so when it isn't terminated as it should be.
std::u16string ParseHex(std::string_view text) {
    std::u16string value;
    unsigned pending = 0;
    bool half = false;
    while (!text.empty() && DigitOf(text.front()) < 16) {
        const unsigned byte = TakeNumber(text, 16, 2);
        if (half) value += static_cast<char16_t>(pending | byte << 8U);
        pending = byte;
        half = !half;
        if (text.empty() || text.front() != ',') break;
        text.remove_prefix(1);
        if (!text.starts_with('\\')) continue;
        text.remove_prefix(std::min(text.find_first_not_of("\\\r\n "), text.size()));
    }
    return value;
}

/// The value after the equals sign, if it is of type REG_SZ. `text` goes on to the end of the file.
std::optional<std::wstring> ParseString(std::string_view text) {
    constexpr std::string_view hexString = "hex(1):";
    std::optional<std::u16string> value;
    if (text.starts_with('"')) {
        value = ParseQuoted(text.substr(1, text.find('\n') - 1));
    } else if (text.starts_with(hexString)) {
        value = ParseHex(text.substr(hexString.size()));
    }
    if (!value) return std::nullopt;
    value->resize(std::min(value->find(u'\0'), value->size()));
    return WideFromUtf16(*value);
}

}  // namespace

std::optional<std::wstring> FindRegistryString(std::string_view text, std::wstring_view key, std::wstring_view name) {
    if (!text.starts_with(Signature)) return std::nullopt;
    const std::u16string foldedKey = Folded(key);
    const std::u16string foldedName = Folded(name);
    bool inKey = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.starts_with('[')) {
            line.remove_prefix(1);
            inKey = TakeName(line, foldedKey, ']');
        } else if (inKey) {
            const bool isDefault = line.starts_with('@');
            const bool isNamed = line.starts_with('"');
            if (isDefault || isNamed) line.remove_prefix(1);
            const bool found = name.empty() ? isDefault : isNamed && TakeName(line, foldedName, '"');
            if (found && line.starts_with('=')) {
                return ParseString(text.substr(static_cast<std::size_t>(line.data() - text.data()) + 1));
            }
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return std::nullopt;
}

}  // namespace Platform
