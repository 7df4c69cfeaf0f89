#include "NodeReading.h"

bool IsText(const OuString& text, std::string_view ascii) {
    const wchar_t* rest = CharactersOf(text);
    for (const char character : ascii) {
        if (*rest != static_cast<wchar_t>(character)) {
            return false;
        }
        ++rest;
    }
    // A text may hold a NUL and go on behind it; its own equality sees that.
    return *rest == L'\0' && text == CharactersOf(text);
}
