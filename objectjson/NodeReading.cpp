#include "NodeReading.h"

bool IsText(const OuString& text, std::string_view ascii) {
    const wchar_t* rest = CharactersOf(text);
    for (const char character : ascii) {
        if (*rest != static_cast<wchar_t>(character)) {
            return false;
        }
        ++rest;
    }
    return *rest == L'\0';
}
