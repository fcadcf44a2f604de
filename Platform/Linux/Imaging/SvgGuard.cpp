#include "Platform/Linux/Imaging/SvgGuard.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace Platform::Imaging {

namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsHex(char c) {
    return (c >= '0' && c <= '9') || (Lower(c) >= 'a' && Lower(c) <= 'f');
}

/// The document's ASCII, in lower case: without the zero bytes that are every second one in UTF-16.
std::string AsciiOf(std::span<const std::uint8_t> document) {
    std::string text;
    text.reserve(document.size());
    for (const std::uint8_t byte : document) {
        if (byte != 0) text += Lower(static_cast<char>(byte));
    }
    return text;
}

// Encodings in which what looks like ASCII is ASCII.
bool HasPlainEncoding(std::string_view text) {
    const std::size_t start = text.find('<');
    // Ahead of it a byte order mark at most.
    if (start == std::string_view::npos || start > 3) return false;
    if (!text.substr(start).starts_with("<?xml")) return true;
    const std::string_view declaration = text.substr(start, text.find("?>", start) - start);
    const std::size_t name = declaration.find("encoding");
    if (name == std::string_view::npos) return true;
    const std::size_t open = declaration.find_first_of("\"'", name);
    if (open == std::string_view::npos) return false;
    const std::string_view value =
        declaration.substr(open + 1, declaration.find(declaration[open], open + 1) - open - 1);
    static constexpr std::array<std::string_view, 7> known{"utf-8", "utf8",       "utf-16",      "us-ascii",
                                                           "ascii", "iso-8859-1", "windows-1252"};
    return std::ranges::find(known, value) != known.end();
}

void Append(std::string& text, unsigned code) {
    text += code < 128 ? Lower(static_cast<char>(code)) : '?';
}

/// With "&#100;" and "&#x64;" as the characters that they stand for.
std::string WithoutReferences(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    while (!text.empty()) {
        if (text.starts_with("&#")) {
            const bool hex = text.substr(2).starts_with("x");
            const char* const digits = text.data() + (hex ? 3 : 2);
            const char* const end = text.data() + text.size();
            unsigned code = 0;
            const auto [after, error] = std::from_chars(std::min(digits, end), end, code, hex ? 16 : 10);
            if (error == std::errc() && after != end && *after == ';') {
                Append(plain, code);
                text.remove_prefix(static_cast<std::size_t>(after + 1 - text.data()));
                continue;
            }
        }
        plain += text.front();
        text.remove_prefix(1);
    }
    return plain;
}

/// With "\64 " and "\d", as style sheets may write it, as the characters that they stand for.
std::string WithoutEscapes(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            plain += text[i];
            continue;
        }
        std::size_t end = i + 1;
        while (end < text.size() && end < i + 7 && IsHex(text[end])) ++end;
        if (end == i + 1) continue;  // The next character stands for itself.
        unsigned code = 0;
        std::from_chars(text.data() + i + 1, text.data() + end, code, 16);
        Append(plain, code);
        i = end - 1;
        if (end < text.size() && static_cast<unsigned char>(text[end]) <= ' ') ++i;
    }
    return plain;
}

bool NamesData(std::string text) {
    // Blanks within an address don't count.
    std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) <= ' '; });
    return text.find("data:") != std::string::npos;
}

}  // namespace

bool MayParse(std::span<const std::uint8_t> document) {
    if (document.size() > maxSvgBytes) return false;
    const std::string text = AsciiOf(document);
    if (!HasPlainEncoding(text)) return false;  // Nor is compressed data any.
    if (text.find("<!entity") != std::string::npos) return false;
    const std::string plain = WithoutReferences(text);
    return !NamesData(plain) && !NamesData(WithoutEscapes(plain));
}

}  // namespace Platform::Imaging
