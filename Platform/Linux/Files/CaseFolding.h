// Comparing names without regard to case, independent of the process's locale.
#pragma once

#include <string_view>

namespace Platform {

/// Lower case of one character by the simple one-to-one mapping; U+0130 and the like, whose mapping takes several
/// characters, stay as they are.
wchar_t FoldCase(wchar_t character) noexcept;

/// Whether two texts are the same but for case, character by character. Any thread.
bool EqualIgnoringCase(std::wstring_view left, std::wstring_view right) noexcept;

/// The same for names as the file system has them. Bytes that are not UTF-8 equal only themselves.
bool EqualNamesIgnoringCase(std::string_view left, std::string_view right);

}  // namespace Platform
