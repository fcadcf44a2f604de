// Conversions between UTF-8, UTF-16 and wide text, the same on both platforms.
//
// wchar_t holds UTF-16 code units on Windows and UTF-32 on Linux. Where behaviour is told in 16-bit code units (hashes,
// typed characters), convert with Utf16FromWide first.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace Platform {

/// Thrown for text that is not valid in the encoding it claims.
class InvalidText : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Strict: throws InvalidText on overlong forms, surrogates, truncated sequences and values above U+10FFFF.
std::wstring WideFromUtf8(std::string_view utf8);

/// Surrogates that stand alone become U+FFFD.
std::string Utf8FromWide(std::wstring_view wide);

/// The 16-bit code units of the text. Lone surrogates pass through as they are.
std::u16string Utf16FromWide(std::wstring_view wide);

/// The reverse of Utf16FromWide.
std::wstring WideFromUtf16(std::u16string_view utf16);

/// File names as the system gives them (any bytes): valid UTF-8 is decoded, each other byte 0x80 to 0xFF becomes the
/// lone surrogate U+DC00 plus the byte. Lossless.
std::wstring WideFromNative(std::string_view native);

/// The reverse of WideFromNative. A lone surrogate outside U+DC80 to U+DCFF becomes U+FFFD.
std::string NativeFromWide(std::wstring_view wide);

}  // namespace Platform
