#include "ValuesByExpression.h"

#include <map>
#include <regex>

std::vector<std::string> ValuesByExpression(const std::string& text, const std::string& key) {
    // Compiling one takes many times as long as a short text does.
    static std::map<std::string, std::regex> expressions;
    const auto [found, isNew] = expressions.try_emplace(key);
    if (isNew) found->second = '"' + key + R"tail("\s*"((?:\\.|[^"\\])*)")tail";
    const std::regex& expression = found->second;

    std::vector<std::string> values;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
        const std::string raw = (*match)[1];
        std::string value;
        for (std::size_t i = 0; i < raw.size(); ++i) {
            if (raw[i] == '\\' && i + 1 < raw.size() && (raw[i + 1] == '\\' || raw[i + 1] == '"')) ++i;
            value += raw[i];
        }
        values.push_back(value);
    }
    return values;
}
