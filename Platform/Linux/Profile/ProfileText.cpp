#include "Platform/Linux/Profile/ProfileText.h"

#include "Platform/Linux/Files/CaseFolding.h"
#include "Platform/Text/Unicode.h"

#include <algorithm>

namespace Platform {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16LittleMark = "\xFF\xFE";
constexpr std::string_view utf16BigMark = "\xFE\xFF";
constexpr std::wstring_view blanks = L" \t\v\f";
constexpr std::wstring_view lineBreaks = L"\r\n";

std::wstring_view Trim(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// What a read gives for the text after a line's '='.
std::wstring_view ReadAs(std::wstring_view text) {
    text = Trim(text);
    const bool quoted =
        text.size() >= 2 && text.front() == text.back() && (text.front() == L'"' || text.front() == L'\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

bool HasBreak(std::wstring_view text) {
    return text.find_first_of(lineBreaks) != std::wstring_view::npos || text.find(L'\0') != std::wstring_view::npos;
}

/// The name of a "[section]" line; nothing for any other line.
std::optional<std::wstring_view> SectionName(std::wstring_view line) {
    line = Trim(line);
    const std::size_t end = line.find(L']');
    if (!line.starts_with(L'[') || end == std::wstring_view::npos) return std::nullopt;
    return Trim(line.substr(1, end - 1));
}

/// One line of the text: where it starts, where its content ends, and where the next one starts.
struct Line {
    std::size_t begin;
    std::size_t end;
    std::size_t next;
};

Line LineAt(std::wstring_view text, std::size_t begin) {
    const auto isBreak = [](wchar_t character) { return character == L'\r' || character == L'\n'; };
    std::size_t end = begin;
    while (end < text.size() && !isBreak(text[end])) ++end;
    const std::size_t length = text.substr(end).starts_with(L"\r\n") ? 2 : 1;
    return {begin, end, std::min(end + length, text.size())};
}

char16_t Unit(std::string_view bytes, std::size_t index, bool bigEndian) {
    const auto byte = [&](std::size_t offset) { return static_cast<unsigned char>(bytes[2 * index + offset]); };
    const unsigned unit = bigEndian ? byte(0) * 256U + byte(1) : byte(1) * 256U + byte(0);
    return static_cast<char16_t>(unit);
}

}  // namespace

/// Where a key stands, or where it would be put.
struct ProfileText::Place {
    bool sectionExists = false;
    bool keyExists = false;
    std::size_t valueBegin = 0;  // The value as it stands, quotes included and blanks around it not.
    std::size_t valueEnd = 0;
    std::size_t sectionEnd = 0;  // After the section's last line that isn't blank.
};

ProfileText::ProfileText(std::string_view bytes) {
    const auto skipMark = [&](std::string_view mark) {
        if (!bytes.starts_with(mark)) return false;
        bytes.remove_prefix(mark.size());
        return marked_ = true;
    };
    if (skipMark(utf16LittleMark))
        encoding_ = Encoding::Utf16Little;
    else if (skipMark(utf16BigMark))
        encoding_ = Encoding::Utf16Big;
    else
        skipMark(utf8Mark);

    if (encoding_ == Encoding::Utf8) {
        text_ = WideFromNative(bytes);
        return;
    }
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size() / 2; ++i) units += Unit(bytes, i, encoding_ == Encoding::Utf16Big);
    text_ = WideFromUtf16(units);
    halfUnit_ = bytes.substr(bytes.size() / 2 * 2);
}

std::string ProfileText::Bytes() const {
    if (encoding_ == Encoding::Utf8) return (marked_ ? std::string(utf8Mark) : std::string()) + NativeFromWide(text_);
    const bool bigEndian = encoding_ == Encoding::Utf16Big;
    std::string bytes(bigEndian ? utf16BigMark : utf16LittleMark);
    for (const char16_t unit : Utf16FromWide(text_)) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes + halfUnit_;
}

ProfileText::Place ProfileText::Find(std::wstring_view section, std::wstring_view key) const {
    section = Trim(section);
    key = Trim(key);
    const std::wstring_view text = text_;
    Place place;
    for (Line line{0, 0, 0}; line.next < text.size();) {
        line = LineAt(text, line.next);
        const std::wstring_view content = Trim(text.substr(line.begin, line.end - line.begin));
        if (const std::optional<std::wstring_view> name = SectionName(content)) {
            if (place.sectionExists) break;
            place.sectionExists = EqualIgnoringCase(*name, section);
            place.sectionEnd = line.next;
            continue;
        }
        if (!place.sectionExists || content.empty()) continue;
        place.sectionEnd = line.next;
        const std::size_t equals = content.find(L'=');
        if (content.starts_with(L';') || equals == std::wstring_view::npos) continue;
        if (!EqualIgnoringCase(Trim(content.substr(0, equals)), key)) continue;
        const std::wstring_view value = Trim(content.substr(equals + 1));
        place.keyExists = true;
        // An empty value stands at the end of the line, behind the blanks that may follow the '='.
        place.valueBegin = value.empty() ? line.end : static_cast<std::size_t>(value.data() - text.data());
        place.valueEnd = place.valueBegin + value.size();
        break;
    }
    return place;
}

std::optional<std::wstring> ProfileText::Value(std::wstring_view section, std::wstring_view key) const {
    const Place place = Find(section, key);
    if (!place.keyExists) return std::nullopt;
    return std::wstring(ReadAs(std::wstring_view(text_).substr(place.valueBegin, place.valueEnd - place.valueBegin)));
}

bool ProfileText::SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value) {
    const Place place = Find(section, key);
    if (place.keyExists) {
        const std::wstring_view old =
            std::wstring_view(text_).substr(place.valueBegin, place.valueEnd - place.valueBegin);
        if (ReadAs(old) == ReadAs(value)) return false;
        text_.replace(place.valueBegin, place.valueEnd - place.valueBegin, value);
        return true;
    }
    const std::wstring lineEnd(LineEnd());
    std::size_t position = place.sectionExists ? place.sectionEnd : text_.size();
    std::wstring added;
    if (position > 0 && lineBreaks.find(text_[position - 1]) == std::wstring_view::npos) added = lineEnd;
    if (!place.sectionExists) added.append(L"[").append(Trim(section)).append(L"]").append(lineEnd);
    added.append(Trim(key)).append(L"=").append(value).append(lineEnd);
    text_.insert(position, added);
    return true;
}

std::wstring_view ProfileText::LineEnd() const {
    const std::wstring_view text = text_;
    const Line first = LineAt(text, 0);
    return first.next > first.end ? text.substr(first.end, first.next - first.end) : std::wstring_view(L"\n");
}

bool ProfileText::CanHold(std::wstring_view section, std::wstring_view key, std::wstring_view value) {
    if (HasBreak(section) || HasBreak(key) || HasBreak(value)) return false;
    section = Trim(section);
    key = Trim(key);
    if (section.empty() || section.find(L']') != std::wstring_view::npos) return false;
    return !key.empty() && key.front() != L';' && key.front() != L'[' && key.find(L'=') == std::wstring_view::npos;
}

}  // namespace Platform
