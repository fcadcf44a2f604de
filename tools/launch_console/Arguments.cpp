#include "tools/launch_console/Arguments.h"

#include <algorithm>
#include <charconv>

#include "Platform/Text/Unicode.h"

namespace LaunchConsole {

namespace {

bool Contains(const std::vector<std::wstring>& list, const std::wstring& word) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

template <class Number>
Number Parse(const std::wstring& text) {
    const std::string digits = Platform::Utf8FromWide(text);
    Number number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (error == std::errc::result_out_of_range) throw WrongUsage("The number is out of range: " + digits);
    if (error != std::errc() || stop != end) throw WrongUsage("This is not a number: \"" + digits + "\"");
    return number;
}

}  // namespace

Arguments::Arguments(const Syntax& syntax, const std::vector<std::wstring>& words) {
    bool optionsEnded = false;
    for (auto word = words.begin(); word != words.end(); ++word) {
        // A lone "-" is a name like any other.
        if (optionsEnded || word->size() < 2 || word->front() != L'-') {
            positionals_.push_back(*word);
            continue;
        }
        if (*word == L"--") {
            optionsEnded = true;
            continue;
        }
        const std::string name = Platform::Utf8FromWide(*word);
        const bool takesValue = Contains(syntax.options, *word);
        if (!takesValue && !Contains(syntax.flags, *word)) throw WrongUsage("Unknown option: " + name);
        if (Has(*word)) throw WrongUsage("Given twice: " + name);
        if (takesValue && word + 1 == words.end()) throw WrongUsage("A value is missing after " + name);
        const std::wstring& option = *word;
        options_[option] = takesValue ? *++word : std::wstring();
    }
    if (positionals_.size() < syntax.positionals.size()) {
        throw WrongUsage("Missing: " + syntax.positionals[positionals_.size()]);
    }
    if (positionals_.size() > syntax.positionals.size()) {
        throw WrongUsage("One too many: " + Platform::Utf8FromWide(positionals_[syntax.positionals.size()]));
    }
}

std::int32_t SignedNumber(const std::wstring& text) {
    return Parse<std::int32_t>(text);
}

std::uint32_t UnsignedNumber(const std::wstring& text) {
    return Parse<std::uint32_t>(text);
}

}  // namespace LaunchConsole
