#include "RepeatedTexts.h"

#include <cstdint>

namespace host {

OuString RepeatedTexts::Widen(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    if (text.size() > kLongest) {
        return OuString(text.data(), 0);
    }
    std::uint32_t place = 0;
    for (const char character : text) {
        place = place * 31 + static_cast<unsigned char>(character);
    }
    OuString& known = texts_.at((place ^ (place >> 16U)) % kPlaces);
    // The program's code page is UTF-8, in which both forms say the same. The narrow one is needed again when
    // the text is written.
    if (known.IsEmpty() || known.GetAnsiBuffer() != text) {
        known = OuString(text.data(), 0);
    }
    return known;
}

}  // namespace host
