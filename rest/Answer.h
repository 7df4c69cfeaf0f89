#pragma once

#include <algorithm>
#include <limits>
#include <string_view>

/// How an answer of the server is read.

/// An identifier as atoi reads it, with the nearest limit instead of an overflow.
inline int ReadIdentifier(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    // One more than the greatest number, for the least.
    constexpr long long kBeyond = std::numeric_limits<int>::max() + 1LL;
    long long number = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') {
            break;
        }
        number = std::min(number * 10 + (digit - '0'), kBeyond);
    }
    return static_cast<int>(isNegative ? -number : std::min(number, kBeyond - 1));
}
