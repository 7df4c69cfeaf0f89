#include "Base64.h"

#include <cstdint>

namespace host {

std::string Base64(std::string_view bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + kBase64Unit - 1) / kBase64Unit * 4);
    for (std::size_t place = 0; place < bytes.size(); place += kBase64Unit) {
        const std::string_view unit = bytes.substr(place, kBase64Unit);
        std::uint32_t bits = 0;
        for (std::size_t index = 0; index < kBase64Unit; ++index) {
            bits = bits << 8U | (index < unit.size() ? static_cast<unsigned char>(unit[index]) : 0U);
        }
        for (std::size_t digit = 0; digit < 4; ++digit) {
            // One digit more than the unit has bytes; the rest is padding.
            text += digit <= unit.size() ? kDigits[bits >> (18U - 6U * digit) & 0x3FU] : '=';
        }
    }
    return text;
}

}  // namespace host
