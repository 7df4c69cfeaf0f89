#include "RepeatedTexts.h"

#include <cstdint>
#include <cstring>

std::size_t RepeatedTexts::PlaceOf(std::string_view text) {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15U;
    const auto wordAt = [text](std::size_t at) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof(word));
        return word;
    };
    std::uint64_t hash = text.size();
    if (text.size() < sizeof(hash)) {
        for (const char character : text) {
            hash = hash << 8U | static_cast<unsigned char>(character);
        }
    } else {
        // Texts of the same length differ at one end or in the middle, most of the time.
        hash ^= wordAt(0) * kMultiplier;
        hash = (hash ^ wordAt(text.size() / 2 - sizeof(hash) / 2)) * kMultiplier;
        hash ^= wordAt(text.size() - sizeof(hash));
    }
    return hash * kMultiplier / (std::uint64_t{1} << 56U);
}

OuString RepeatedTexts::Of(std::string_view text) {
    if (text.empty() || text.size() > kLongest) {
        return TextFromAnsi(text);
    }
    Place& place = places_[PlaceOf(text)];
    if (std::string_view(place.narrow.data(), place.length) != text) {
        place.wide = TextFromAnsi(text);
        place.length = static_cast<unsigned char>(text.copy(place.narrow.data(), kLongest));
    }
    return place.wide;
}
