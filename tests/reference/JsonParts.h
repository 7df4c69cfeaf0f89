#pragma once

#include <libjson.h>

#include <string>

#include "Random.h"

inline json_string JsonText(const std::string& text) {
    return {text.data(), text.size()};
}

inline JSONNode Named(const std::string& name, const JSONNode& value) {
    JSONNode node = value;
    node.set_name(JsonText(name));
    return node;
}

inline JSONNode String(const std::string& name, const std::string& value) {
    return JSONNode(JsonText(name), JsonText(value));
}

/// Some come as a server sends them: as text.
inline JSONNode MaybeThroughText(Random& random, const JSONNode& node) {
    const bool isDocument = node.type() == JSON_NODE || node.type() == JSON_ARRAY;
    return isDocument && random.OneIn(3)
               ? libjson::parse(random.OneIn(4) ? node.write_formatted() : node.write())
               : node;
}
