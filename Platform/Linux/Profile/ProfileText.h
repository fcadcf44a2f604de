// The text of a profile file: "[section]" and "key=value" lines.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// A profile file's content, read and edited in memory. What an edit doesn't concern comes out byte for byte as it went
/// in: encoding, byte order mark, line ends, comments, unknown lines, bytes that are not valid in the encoding.
///
/// The encoding is UTF-8, or UTF-16 where a byte order mark says so. A line ends with CR LF, LF or CR. The first
/// section of a name counts, and the first key of a name in it; names match without regard to case or blanks around
/// them. A line that starts with ';' is a comment; one without '=' means nothing.
class ProfileText {
public:
    explicit ProfileText(std::string_view bytes);

    /// The value of a key, without blanks around it and then without one pair of the same quotes, " or '; nothing when
    /// there is no such key.
    std::optional<std::wstring> Value(std::wstring_view section, std::wstring_view key) const;

    /// Makes Value give what it would give for a line with this value. Returns whether that changed the text. Section,
    /// key and value must be ones that CanHold accepts.
    bool SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value);

    /// The content in its encoding.
    std::string Bytes() const;

    /// Whether the format can hold a line: no line break or NUL anywhere, no name that would read as something else.
    static bool CanHold(std::wstring_view section, std::wstring_view key, std::wstring_view value);

private:
    enum class Encoding { Utf8, Utf16Little, Utf16Big };

    struct Place;
    Place Find(std::wstring_view section, std::wstring_view key) const;
    std::wstring_view LineEnd() const;

    Encoding encoding_ = Encoding::Utf8;
    bool marked_ = false;   // Whether a byte order mark leads the content.
    std::string halfUnit_;  // The odd last byte of UTF-16 content, if it has one.
    std::wstring text_;     // The content without mark and half unit.
};

}  // namespace Platform
