// What the stand-in engine reads from its command line.
#pragma once

#include <windows.h>

/// Stores the value that the last `+set name value` gives, cut to `size` characters with the terminator; empty when
/// there is none. Words are separated by blanks: the engine's command line knows no quotes.
void ArgumentValue(const wchar_t* commandLine, const wchar_t* name, wchar_t* value, size_t size);

/// How often a word stands on the command line.
unsigned ArgumentCount(const wchar_t* commandLine, const wchar_t* word);
