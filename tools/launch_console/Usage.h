#pragma once

namespace LaunchConsole {

/// The calls and their arguments, for wrong usage.
const char* UsageText();

/// The usage text and what there is to know about the output.
const char* HelpText();

}  // namespace LaunchConsole
