#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace LaunchConsole {

/// Thrown for a command line that doesn't follow the usage text; what() says what is wrong with it, in UTF-8.
class WrongUsage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What may follow the name of a call.
struct Syntax {
    std::vector<std::string> positionals;  ///< Names as in the usage text; each must be given.
    std::vector<std::wstring> flags;       ///< Options that stand alone.
    std::vector<std::wstring> options;     ///< Options that take the next word, whatever it is, as their value.
};

/// The words of one call, sorted by its syntax. Options stand anywhere, each at most once; a word "--" ends them.
class Arguments {
public:
    /// Throws WrongUsage.
    Arguments(const Syntax& syntax, const std::vector<std::wstring>& words);

    const std::wstring& Positional(std::size_t index) const { return positionals_.at(index); }
    bool Has(const std::wstring& option) const { return options_.contains(option); }
    /// No option at all was given.
    bool Plain() const { return options_.empty(); }
    /// The value of an option that was given.
    const std::wstring& Value(const std::wstring& option) const { return options_.at(option); }

private:
    std::vector<std::wstring> positionals_;
    std::map<std::wstring, std::wstring> options_;
};

/// A decimal number, with nothing around it. Throw WrongUsage for other text and for numbers out of range.
std::int32_t SignedNumber(const std::wstring& text);
std::uint32_t UnsignedNumber(const std::wstring& text);

}  // namespace LaunchConsole
