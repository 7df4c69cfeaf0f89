#pragma once

#include <string>
#include <string_view>

#include "libjson.h"
#include "support/TextUnits.h"

// json_string and std::string are two types in some builds: the tests convert between them here.

inline json_string Text(std::string_view text) {
    return json_string(text.data(), text.size());
}
inline std::string Plain(const json_string& text) {
    return std::string(text.c_str(), text.size());
}

inline JSONNode Parse(std::string_view text) {
    return libjson::parse(Text(text));
}
inline std::string Write(const JSONNode& node) {
    return Plain(node.write());
}
inline std::string NameOf(const JSONNode& node) {
    return Plain(node.name());
}
inline std::string ValueOf(const JSONNode& node) {
    return Plain(node.as_string());
}
