#include "JsonText.h"

#include <array>
#include <cstdio>
#include <utility>

#include "exchange/Utf8.h"

namespace host {

void JsonText::Begin(std::string_view name, bool isContainer) {
    if (!isFirst_) {
        text_ += ',';
    }
    isFirst_ = isContainer;
    if (!open_.empty() && open_.back() == '}') {
        Quote(name);
        text_ += ':';
    }
}

void JsonText::OpenObject(std::string_view name) {
    Begin(name, true);
    text_ += '{';
    open_ += '}';
}

void JsonText::OpenArray(std::string_view name) {
    Begin(name, true);
    text_ += '[';
    open_ += ']';
}

void JsonText::End() {
    text_ += open_.back();
    open_.pop_back();
    isFirst_ = false;
}

void JsonText::Text(std::string_view name, std::string_view value) {
    Begin(name, false);
    Quote(value);
}

void JsonText::Number(std::string_view name, std::uint64_t value) {
    Begin(name, false);
    text_ += std::to_string(value);
}

void JsonText::Flag(std::string_view name, bool value) {
    Begin(name, false);
    text_ += value ? "true" : "false";
}

void JsonText::Element(std::string_view json) {
    Begin({}, false);
    text_ += '\n';
    text_ += json;
}

std::string JsonText::Take() {
    return std::move(text_);
}

void JsonText::Quote(std::string_view text) {
    text_ += '"';
    std::size_t length = 1;
    for (std::size_t place = 0; place < text.size(); place += length) {
        char32_t character = 0;
        if (!korvane::exchange::DecodeUtf8(text, place, character, length)) {
            text_ += "\xEF\xBF\xBD";
        } else if (character == '"' || character == '\\') {
            text_ += '\\';
            text_ += static_cast<char>(character);
        } else if (character < 0x20 || character == 0x7F) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(character));
            text_ += escape.data();
        } else {
            text_ += text.substr(place, length);
        }
    }
    text_ += '"';
}

}  // namespace host
