#include "TextMatch.h"

#include <korvaneexchange/Text.h>

#include <algorithm>
#include <optional>

#include "exchange/Utf8.h"
#include "host/system/Text.h"

namespace host {
namespace {

/// The characters of the text. Bytes that are not UTF-8 become characters that no text has.
std::u32string CharactersOf(std::string_view utf8) {
    std::u32string characters;
    std::size_t length = 1;
    for (std::size_t place = 0; place < utf8.size(); place += length) {
        char32_t character = 0;
        const bool isText = korvane::exchange::DecodeUtf8(utf8, place, character, length);
        characters += isText ? character : 0xDC00 + character;
    }
    return characters;
}

}  // namespace

std::string FoldCase(std::string_view utf8) {
    const bool isAscii =
        std::ranges::all_of(utf8, [](char unit) { return static_cast<unsigned char>(unit) < 0x80; });
    if (isAscii) {
        return ToUpperAscii(utf8);
    }
    OuString text = korvane::exchange::FromUtf8(utf8);
    text.MakeUpper();
    return korvane::exchange::ToUtf8(text);
}

Glob::Glob(std::string_view pattern, GlobStyle style) : style_(style) {
    const std::u32string characters = CharactersOf(FoldCase(pattern));
    for (std::size_t place = 0; place < characters.size();) {
        const char32_t character = characters[place];
        if (character == '*') {
            place = AddStars(characters, place);
        } else if (character == '[') {
            place = AddClass(characters, place);
        } else {
            tokens_.push_back({character == '?' ? TokenKind::One : TokenKind::Character, character});
            ++place;
        }
    }
}

std::size_t Glob::AddStars(std::u32string_view pattern, std::size_t place) {
    const std::size_t end = std::min(pattern.find_first_not_of(U'*', place), pattern.size());
    if (style_ == GlobStyle::Path && end - place == 1) {
        tokens_.push_back({TokenKind::AnyWithinName});
        return end;
    }
    tokens_.push_back({TokenKind::Any});
    if (style_ == GlobStyle::Path && end < pattern.size() && pattern[end] == '/') {
        tokens_.push_back({TokenKind::StartOfName});
        return end + 1;
    }
    return end;
}

std::size_t Glob::AddClass(std::u32string_view pattern, std::size_t place) {
    Token token{TokenKind::OneOf};
    std::size_t next = place + 1;
    if (next < pattern.size() && (pattern[next] == '!' || pattern[next] == '^')) {
        token.isNegated = true;
        ++next;
    }
    // A bracket that comes first stands for itself.
    const std::size_t end = pattern.find(U']', next + 1);
    if (end == std::u32string_view::npos) {
        tokens_.push_back({TokenKind::Character, pattern[place]});
        return place + 1;
    }
    while (next < end) {
        const bool isRange = next + 2 < end && pattern[next + 1] == '-';
        token.ranges.push_back({pattern[next], pattern[isRange ? next + 2 : next]});
        next += isRange ? 3 : 1;
    }
    tokens_.push_back(std::move(token));
    return end + 1;
}

bool Glob::Accepts(const Token& token, char32_t character) const {
    switch (token.kind) {
        case TokenKind::Character:
            return token.character == character;
        case TokenKind::One:
            return style_ == GlobStyle::Name || character != '/';
        case TokenKind::OneOf:
            return (style_ == GlobStyle::Name || character != '/') &&
                   token.isNegated != std::ranges::any_of(token.ranges, [&](const Range& range) {
                       return range.first <= character && character <= range.last;
                   });
        case TokenKind::AnyWithinName:
        case TokenKind::Any:
        case TokenKind::StartOfName:
            break;
    }
    return false;
}

bool Glob::Fits(std::string_view utf8) const {
    const std::u32string text = CharactersOf(FoldCase(utf8));
    /// Where to go on when the last star takes one character more.
    struct Retry {
        std::size_t token;
        std::size_t place;
    };
    std::optional<Retry> within;
    std::optional<Retry> any;
    std::size_t token = 0;
    std::size_t place = 0;
    while (token < tokens_.size() || place < text.size()) {
        const TokenKind kind = token < tokens_.size() ? tokens_[token].kind : TokenKind::Character;
        if (token == tokens_.size()) {
            // Text is left: a star must take more.
        } else if (kind == TokenKind::Any) {
            any = Retry{++token, place};
            within.reset();
            continue;
        } else if (kind == TokenKind::AnyWithinName) {
            within = Retry{++token, place};
            continue;
        } else if (kind == TokenKind::StartOfName) {
            if (place == 0 || text[place - 1] == '/') {
                ++token;
                continue;
            }
        } else if (place < text.size() && Accepts(tokens_[token], text[place])) {
            ++token;
            ++place;
            continue;
        }
        if (within && within->place < text.size() && text[within->place] != '/') {
            place = ++within->place;
            token = within->token;
        } else if (any && any->place < text.size()) {
            within.reset();
            place = ++any->place;
            token = any->token;
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace host
