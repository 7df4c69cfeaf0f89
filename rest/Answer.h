#pragma once

#include <korvanejson/CaeRest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>

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
inline int ReadIdentifier(const std::string& text) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp<long long>(std::strtoll(text.c_str(), nullptr, 10), Limits::min(), Limits::max()));
}
