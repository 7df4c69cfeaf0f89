#include "PageText.h"

#include <array>

#include "exchange/Utf8.h"

namespace host {
namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// What ends a script element, begins a comment or an entity in it, or ends a line of a script.
bool IsEscapedInScript(char32_t character) {
    return character < 0x20 || character == '<' || character == '>' || character == '&' ||
           character == 0x2028 || character == 0x2029;
}

void AppendEscape(std::string& text, char32_t character) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    text += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += kDigits[character >> static_cast<unsigned>(shift) & 0xFU];
    }
}

}  // namespace

void PageText::Add(std::string_view text) {
    buffer_ += text;
    if (buffer_.size() >= kPiece) {
        Finish();
    }
}

void PageText::Finish() {
    if (const std::error_code error = buffer_.empty() ? std::error_code() : put_(buffer_)) {
        throw Ended{error};
    }
    buffer_.clear();
}

template <typename AddCharacter>
void PageText::ForEachCharacter(std::string_view utf8, const AddCharacter& add) {
    std::size_t length = 1;
    for (std::size_t place = 0; place < utf8.size(); place += length) {
        char32_t character = 0;
        const bool isWhole = korvane::exchange::DecodeUtf8(utf8, place, character, length);
        add(isWhole ? character : 0xFFFD, isWhole ? utf8.substr(place, length) : kReplacement);
    }
}

void PageText::AddHtml(std::string_view utf8) {
    struct Entity {
        char32_t character;
        std::string_view name;
    };
    // A NUL has no entity; HTML has no way to say it.
    constexpr std::array kEntities = {Entity{'<', "&lt;"}, Entity{'>', "&gt;"}, Entity{'&', "&amp;"},
                                      Entity{'"', "&quot;"}, Entity{0, kReplacement}};
    ForEachCharacter(utf8, [this, &kEntities](char32_t character, std::string_view bytes) {
        for (const Entity& entity : kEntities) {
            if (entity.character == character) {
                bytes = entity.name;
            }
        }
        buffer_ += bytes;
    });
    Add({});
}

void PageText::AddJson(std::string_view utf8) {
    buffer_ += '"';
    ForEachCharacter(utf8, [this](char32_t character, std::string_view bytes) {
        if (IsEscapedInScript(character)) {
            AppendEscape(buffer_, character);
            return;
        }
        if (character == '"' || character == '\\') {
            buffer_ += '\\';
        }
        buffer_ += bytes;
    });
    Add("\"");
}

void PageText::AddNumber(std::int64_t number) {
    Add(std::to_string(number));
}

void PageText::AddName(std::string_view name, bool isFirst) {
    Add(isFirst ? "\"" : ",\"");
    Add(name);
    Add("\":");
}

void PageText::AddMember(std::string_view name, std::string_view utf8) {
    if (!utf8.empty()) {
        AddName(name);
        AddJson(utf8);
    }
}

}  // namespace host
