#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace GameDiscovery {

/// Values of a key in one of Steam's text files, in file order, escapes of `\` and `"` undone; at any nesting depth,
/// for this is a scan and no parser of the format. Empty for a file that can't be read or is larger than 4 MiB.
std::vector<std::string> ReadQuotedValues(const std::filesystem::path& file, std::string_view key);

/// The scan itself. Finds the non-overlapping matches of the ECMAScript expression
/// `"key"\s*"((?:\\.|[^"\\])*)"`, in one pass: linear time, constant stack. `key` stands for itself: it must hold no
/// quote and no backslash, and characters special to regular expressions have no meaning in it.
std::vector<std::string> FindQuotedValues(std::string_view text, std::string_view key);

}  // namespace GameDiscovery
