#pragma once

#include <string>
#include <string_view>

#include "libjson.h"

// json_string and std::string are two types in some builds: the tests go from one to the other here.

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

/// Sets the text units for as long as it lives.
class UnitsFor {
public:
    explicit UnitsFor(libjson::text_units units) : before_(libjson::get_text_units()) {
        libjson::set_text_units(units);
    }
    ~UnitsFor() { libjson::set_text_units(before_); }
    UnitsFor(const UnitsFor&) = delete;
    UnitsFor& operator=(const UnitsFor&) = delete;

private:
    libjson::text_units before_;
};
