#pragma once

#include <cstddef>
#include <string_view>

namespace korvane::exchange {

/// Reads the character of UTF-8 at the place. Returns false, with the length 1 and the byte as the character,
/// if there is no well-formed sequence.
inline bool DecodeUtf8(std::string_view text, std::size_t place, char32_t& character, std::size_t& length) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char lead = byteAt(place);
    length = 1;
    character = lead;
    if (lead < 0x80) {
        return true;
    }
    const std::size_t wanted = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - place < wanted) {
        return false;
    }
    char32_t value = lead & (0x7FU >> wanted);
    for (std::size_t index = 1; index < wanted; ++index) {
        const unsigned char next = byteAt(place + index);
        if ((next & 0xC0U) != 0x80) {
            return false;
        }
        value = (value << 6U) | (next & 0x3FU);
    }
    const bool isOverlong = (wanted == 3 && value < 0x800) || (wanted == 4 && value < 0x10000);
    if (isOverlong || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
        return false;
    }
    character = value;
    length = wanted;
    return true;
}

}  // namespace korvane::exchange
