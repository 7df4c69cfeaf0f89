#include "GlobPattern.h"

#include <algorithm>
#include <array>
#include <string>

namespace host {
namespace {

#if defined(_WIN32)
constexpr bool kHasCase = false;
#else
constexpr bool kHasCase = true;
#endif

bool IsLower(unsigned char byte) {
    return byte >= 'a' && byte <= 'z';
}
bool IsUpper(unsigned char byte) {
    return byte >= 'A' && byte <= 'Z';
}
bool IsDigit(unsigned char byte) {
    return byte >= '0' && byte <= '9';
}
bool IsAlpha(unsigned char byte) {
    return IsLower(byte) || IsUpper(byte);
}
bool IsGraph(unsigned char byte) {
    return byte > 0x20 && byte < 0x7F;
}

struct NamedClass {
    std::string_view name;
    bool (*has)(unsigned char byte);
};

// As in the C locale, whatever the locale is.
constexpr std::array kClasses = {
    NamedClass{"alnum", [](unsigned char byte) { return IsAlpha(byte) || IsDigit(byte); }},
    NamedClass{"alpha", &IsAlpha},
    NamedClass{"blank", [](unsigned char byte) { return byte == ' ' || byte == '\t'; }},
    NamedClass{"cntrl", [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; }},
    NamedClass{"digit", &IsDigit},
    NamedClass{"graph", &IsGraph},
    NamedClass{"lower", &IsLower},
    NamedClass{"print", [](unsigned char byte) { return IsGraph(byte) || byte == ' '; }},
    NamedClass{"punct", [](unsigned char byte) { return IsGraph(byte) && !IsAlpha(byte) && !IsDigit(byte); }},
    NamedClass{"space", [](unsigned char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }},
    NamedClass{"upper", &IsUpper},
    NamedClass{"xdigit",
               [](unsigned char byte) {
                   return IsDigit(byte) || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
               }},
};

void AddOtherCase(std::bitset<256>& characters) {
    for (unsigned byte = 'a'; !kHasCase && byte <= 'z'; ++byte) {
        const unsigned upper = byte - 'a' + 'A';
        characters[byte] = characters[upper] = characters[byte] || characters[upper];
    }
}

}  // namespace

class GlobPattern::Parser {
public:
    Parser(std::string_view pattern, GlobPattern& glob) : rest_(pattern), glob_(glob) {}

    void Parse();

private:
    char Take() {
        const char first = rest_.front();
        rest_.remove_prefix(1);
        return first;
    }
    void AddOne(const std::bitset<256>& characters) {
        glob_.names_.back().signs.push_back({Sign::Kind::One, characters});
        AddOtherCase(glob_.names_.back().signs.back().characters);
    }
    void TakeStars();
    bool TakeSet();
    bool TakeNamedClass(std::bitset<256>& characters);

    std::string_view rest_;
    GlobPattern& glob_;
};

void GlobPattern::Parser::Parse() {
    glob_.names_.emplace_back();
    while (!rest_.empty() && glob_.isValid_) {
        char character = Take();
        if (character == '*') {
            TakeStars();
            continue;
        }
        if (character == '?') {
            AddOne(std::bitset<256>().set());
            continue;
        }
        if (character == '[') {
            glob_.isValid_ = TakeSet();
            continue;
        }
        if (character == '\\') {
            if (rest_.empty()) {
                glob_.isValid_ = false;
                break;
            }
            character = Take();
        }
        if (character == '/') {
            glob_.names_.emplace_back();
        } else {
            AddOne(std::bitset<256>().set(static_cast<unsigned char>(character)));
        }
    }
}

void GlobPattern::Parser::TakeStars() {
    const bool isFirst = glob_.names_.back().signs.empty();
    std::size_t count = 1;
    while (!rest_.empty() && rest_.front() == '*') {
        Take();
        ++count;
    }
    const bool isLast = rest_.empty() || rest_.front() == '/';
    if (isFirst && isLast && count == 2) {
        glob_.names_.back().isAnyNames = true;
    }
    glob_.names_.back().signs.push_back({Sign::Kind::Many, {}});
}

/// Takes what is behind an opening bracket. Returns false if it is not closed.
bool GlobPattern::Parser::TakeSet() {
    std::bitset<256> characters;
    const bool isNegative = !rest_.empty() && (rest_.front() == '!' || rest_.front() == '^');
    if (isNegative) {
        Take();
    }
    // A closing bracket in the first place stands for itself.
    for (bool isFirst = true; !rest_.empty() && (isFirst || rest_.front() != ']'); isFirst = false) {
        if (rest_.starts_with("[:")) {
            if (!TakeNamedClass(characters)) {
                return false;
            }
            continue;
        }
        const auto takeOne = [&]() -> int {
            const char character = Take();
            if (character != '\\') {
                return static_cast<unsigned char>(character);
            }
            return rest_.empty() ? -1 : static_cast<unsigned char>(Take());
        };
        const int from = takeOne();
        int to = from;
        if (rest_.size() >= 2 && rest_[0] == '-' && rest_[1] != ']') {
            Take();
            to = takeOne();
        }
        if (from < 0 || to < 0) {
            return false;
        }
        for (int byte = from; byte <= to; ++byte) {
            characters.set(static_cast<std::size_t>(byte));
        }
    }
    if (rest_.empty()) {
        return false;
    }
    Take();
    AddOtherCase(characters);
    AddOne(isNegative ? ~characters : characters);
    return true;
}

bool GlobPattern::Parser::TakeNamedClass(std::bitset<256>& characters) {
    const std::size_t end = rest_.find(']', 2);
    if (end == std::string_view::npos) {
        return false;
    }
    if (rest_[end - 1] != ':' || end < 3) {
        // Without the second colon the bracket is a character like others.
        characters.set('[');
        Take();
        return true;
    }
    const std::string_view name = rest_.substr(2, end - 3);
    const auto* const found = std::ranges::find(kClasses, name, &NamedClass::name);
    if (found == kClasses.end()) {
        return false;
    }
    for (std::size_t byte = 0; byte < characters.size(); ++byte) {
        characters[byte] = characters[byte] || found->has(static_cast<unsigned char>(byte));
    }
    rest_.remove_prefix(end + 1);
    return true;
}

GlobPattern::GlobPattern(std::string_view pattern) {
    Parser(pattern, *this).Parse();
}

bool GlobPattern::FitsName(const Name& name, std::string_view text) {
    const std::vector<Sign>& signs = name.signs;
    std::size_t sign = 0;
    std::size_t place = 0;
    // Where to go on if what is behind the last star does not fit here.
    std::size_t behindStar = signs.size() + 1;
    std::size_t nextPlace = 0;
    while (place < text.size()) {
        if (sign < signs.size() && signs[sign].kind == Sign::Kind::Many) {
            behindStar = ++sign;
            nextPlace = place;
        } else if (sign < signs.size() && signs[sign].characters[static_cast<unsigned char>(text[place])]) {
            ++sign;
            ++place;
        } else if (behindStar <= signs.size()) {
            sign = behindStar;
            place = ++nextPlace;
        } else {
            return false;
        }
    }
    return std::all_of(signs.begin() + static_cast<std::ptrdiff_t>(sign), signs.end(),
                       [](const Sign& left) { return left.kind == Sign::Kind::Many; });
}

bool GlobPattern::Fits(std::string_view path) const {
    if (!isValid_) {
        return false;
    }
    // The same as in a name, with names for characters and ** for the star.
    const auto endOf = [&](std::size_t begin) { return std::min(path.find('/', begin), path.size()); };
    std::size_t name = 0;
    std::size_t begin = 0;
    std::size_t behindStar = names_.size() + 1;
    std::size_t nextBegin = 0;
    while (begin <= path.size()) {
        const bool isLast = name + 1 == names_.size();
        if (name < names_.size() && names_[name].isAnyNames && isLast) {
            return true;
        }
        if (name < names_.size() && names_[name].isAnyNames) {
            behindStar = ++name;
            nextBegin = begin;
        } else if (name < names_.size() && FitsName(names_[name], path.substr(begin, endOf(begin) - begin))) {
            ++name;
            begin = endOf(begin) + 1;
        } else if (behindStar <= names_.size()) {
            name = behindStar;
            nextBegin = endOf(nextBegin) + 1;
            begin = nextBegin;
        } else {
            return false;
        }
    }
    return name == names_.size();
}

}  // namespace host
