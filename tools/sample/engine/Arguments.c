#include "Arguments.h"

#include <wchar.h>

typedef struct Word {
    const wchar_t* text;
    size_t length;
} Word;

// The next word, or one of length 0 at the end. `*position` moves behind it.
static Word NextWord(const wchar_t** position) {
    const wchar_t* start = *position + wcsspn(*position, L" \t");
    Word word = {start, wcscspn(start, L" \t")};
    *position = start + word.length;
    return word;
}

static BOOL Equals(Word word, const wchar_t* text) {
    return word.length == wcslen(text) && wmemcmp(word.text, text, word.length) == 0;
}

void ArgumentValue(const wchar_t* commandLine, const wchar_t* name, wchar_t* value, size_t size) {
    value[0] = L'\0';
    for (Word word = NextWord(&commandLine); word.length; word = NextWord(&commandLine)) {
        if (!Equals(word, L"+set")) continue;
        if (!Equals(NextWord(&commandLine), name)) continue;
        const Word given = NextWord(&commandLine);
        const size_t length = given.length < size ? given.length : size - 1;
        wmemcpy(value, given.text, length);
        value[length] = L'\0';
    }
}

unsigned ArgumentCount(const wchar_t* commandLine, const wchar_t* word) {
    unsigned count = 0;
    for (Word next = NextWord(&commandLine); next.length; next = NextWord(&commandLine)) {
        if (Equals(next, word)) ++count;
    }
    return count;
}
