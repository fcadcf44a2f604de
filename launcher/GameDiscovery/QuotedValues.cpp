#include "launcher/GameDiscovery/QuotedValues.h"

#include "launcher/GameDiscovery/FileReader.h"

#include <cstring>

namespace GameDiscovery {

namespace {

constexpr std::size_t none = std::string_view::npos;

/// The first `wanted` in [from, to), or `none`. memchr, since it is many times as quick as a loop over characters, save
/// where it has no way to go.
std::size_t Find(std::string_view text, char wanted, std::size_t from, std::size_t to) {
    if (from >= to) return none;
    if (text[from] == wanted) return from;
    const void* const found = std::memchr(text.data() + from, wanted, to - from);
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) : none;
}

/// The white space of the C locale.
bool IsSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// The quote that ends the value that starts at `position`, or `none` when no value does. A value is made of escape
/// pairs (a backslash and any character but a line's end) and of characters that are neither quote nor backslash.
std::size_t EndOfValue(std::string_view text, std::size_t position) {
    std::size_t quote = none;
    for (;;) {
        if (quote == none || quote < position) quote = Find(text, '"', position, text.size());
        if (quote == none) return none;
        const std::size_t backslash = Find(text, '\\', position, quote);
        if (backslash == none) return quote;
        // A quote follows, so there is a next character.
        const char escaped = text[backslash + 1];
        if (escaped == '\n' || escaped == '\r') return none;
        position = backslash + 2;
    }
}

/// Undoes the escapes of backslash and quote. All other backslashes stay, one at the end too.
std::string Unescape(std::string_view value) {
    std::string result;
    result.reserve(value.size());
    for (std::size_t position = 0;;) {
        const std::size_t backslash = Find(value, '\\', position, value.size());
        if (backslash == none || backslash + 1 == value.size()) return result.append(value.substr(position));
        result.append(value.substr(position, backslash - position));
        const char next = value[backslash + 1];
        if (next != '\\' && next != '"') result += '\\';
        result += next;
        position = backslash + 2;
    }
}

}  // namespace

// Why this is linear although a failed attempt goes back to just behind its start: a value fails only where the text
// ends or a line's end is escaped, so every quote between its start and that place stands behind a backslash. A key in
// quotes has a closing quote that doesn't, hence no attempt that starts in between gets as far as a value. Each byte is
// thus looked at by the walk over quotes once, and by one value at the most that fails and one that doesn't.
std::vector<std::string> FindQuotedValues(std::string_view text, std::string_view key) {
    std::vector<std::string> values;
    std::size_t open = Find(text, '"', 0, text.size());
    while (open != none) {
        const std::size_t close = Find(text, '"', open + 1, text.size());
        if (close == none) break;
        std::size_t next = close;
        if (text.substr(open + 1, close - open - 1) == key) {
            std::size_t start = close + 1;
            while (start < text.size() && IsSpace(text[start])) ++start;
            if (start < text.size() && text[start] == '"') {
                const std::size_t end = EndOfValue(text, start + 1);
                if (end != none) {
                    values.push_back(Unescape(text.substr(start + 1, end - start - 1)));
                    next = Find(text, '"', end + 1, text.size());
                }
            }
        }
        open = next;
    }
    return values;
}

std::vector<std::string> ReadQuotedValues(const std::filesystem::path& file, std::string_view key) {
    constexpr std::uint64_t largestFile = 0x400000;
    FileReader reader(file);
    const std::optional<std::uint64_t> size = reader.Size();
    if (!size || *size > largestFile) return {};
    std::string text(static_cast<std::size_t>(*size), '\0');
    const std::optional<std::size_t> read = reader.Read(std::as_writable_bytes(std::span(text)));
    if (!read) return {};
    text.resize(*read);
    return FindQuotedValues(text, key);
}

}  // namespace GameDiscovery
