#pragma once

#include <OuString.h>

#include <array>
#include <cstddef>
#include <string_view>

namespace host {

/// Wide forms of short texts that came before: names, types and units of metadata, dates, users. Texts share
/// their characters, so one that comes again takes neither time nor memory.
class RepeatedTexts {
public:
    /// The text in wide characters. What it refers to has a NUL after its end and none before.
    OuString Widen(std::string_view text);

private:
    static constexpr std::size_t kPlaces = 1024;
    static constexpr std::size_t kLongest = 32;

    std::array<OuString, kPlaces> texts_;
};

}  // namespace host
