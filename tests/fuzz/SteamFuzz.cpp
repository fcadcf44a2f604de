// Steam's text files: the scan for values, and their conversion to text. Small inputs are compared with the expression
// that the scan stands for.
#include "Expect.h"
#include "launcher/GameDiscovery/QuotedValues.h"
#include "Platform/Text/Unicode.h"
#include "ValuesByExpression.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

/// The standard library's expressions recurse once a character.
constexpr std::size_t longestCompared = 512;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const std::string key : {"path", "installdir", "p"}) {
        const std::vector<std::string> values = GameDiscovery::FindQuotedValues(text, key);
        std::size_t total = 0;
        for (const std::string& value : values) {
            total += value.size() + key.size() + 4;
            try {
                const std::wstring wide = Platform::WideFromUtf8(value);
                Expect(Platform::Utf8FromWide(wide) == value, "UTF-8 to come back as it was");
            } catch (const Platform::InvalidText&) {
                Expect(!value.empty(), "an empty text to be valid");
            }
        }
        Expect(total <= size, "no more text in the values than in the file");
        if (size <= longestCompared) Expect(values == ValuesByExpression(text, key), "the expression's matches");
    }
    return 0;
}
