#pragma once

#include <korvanejson/CaeRest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <string_view>

/// How an answer of the server is read.

using ResponseKeyMap = std::map<std::string, std::string>;

/// The keys of an answer, an object node or an array of such; none for any other value.
inline ResponseKeyMap FlattenAnswer(const JSONNode& answer) {
    ResponseKeyMap map;
    if (answer.type() == JSON_NODE) {
        caerest::json::util::ParseNode(answer, map);
    } else if (answer.type() == JSON_ARRAY) {
        for (const JSONNode& element : answer) {
            caerest::json::util::ParseNode(element, map);
        }
    }
    return map;
}

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
