#pragma once

#include <cstdint>

namespace host {

/// A place in a text, counted from 1.
struct TextPlace {
    std::uint32_t line = 1;
    std::uint32_t column = 1;
};

}  // namespace host
