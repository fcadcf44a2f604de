#pragma once

#include <string>
#include <vector>

/// What the scan for quoted values has to agree with: the expression it stands for, walked by the standard library, and
/// the undoing of escapes in its plainest form. For short texts: the library's stack grows with the text. One thread.
std::vector<std::string> ValuesByExpression(const std::string& text, const std::string& key);
