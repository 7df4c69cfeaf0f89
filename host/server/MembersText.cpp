#include "MembersText.h"

#include <libjson.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

#include "format/MemberNames.h"

namespace member = format::member;

namespace host {
namespace {

std::string Rewritten(std::string_view text) {
    const JSONNode node = libjson::parse(json_string(text.data(), text.size()));
    if (node.type() != JSON_NODE) {
        throw std::invalid_argument("they are not an object");
    }
    const auto written = node.write();
    return {written.c_str(), written.size()};
}

/// The characters that are written as they are. The NUL after the end of a text is none of them.
/// Measured: with comparisons instead of a table, finding the places takes 1.4 times as long; eight
/// characters at once 1.2 times, because most texts are short.
constexpr std::array<bool, 256> kIsPlain = [] {
    std::array<bool, 256> isPlain{};
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte) {
        isPlain[byte] = byte != '"' && byte != '\\' && byte != '/';
    }
    return isPlain;
}();

const char* SkipPlain(const char* at) {
    while (kIsPlain[static_cast<unsigned char>(*at)]) {
        ++at;
    }
    return at;
}

constexpr bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

const char* SkipDigits(const char* at) {
    while (IsDigit(*at)) {
        ++at;
    }
    return at;
}

constexpr std::uint32_t kNoCode = 0x110000;

/// The value of \uXXXX as it is written: with capital letters.
std::uint32_t CodeAt(const char* at) {
    if (at[0] != '\\' || at[1] != 'u') {
        return kNoCode;
    }
    std::uint32_t code = 0;
    for (int index = 2; index < 6; ++index) {
        const char digit = at[index];
        if (!IsDigit(digit) && (digit < 'A' || digit > 'F')) {
            return kNoCode;
        }
        code = code << 4U | static_cast<std::uint32_t>(IsDigit(digit) ? digit - '0' : digit - 'A' + 10);
    }
    return code;
}

constexpr std::size_t kSizeOfCode = 6;

}  // namespace

bool NeedsNoEscape(std::string_view text) {
    return std::ranges::all_of(
        text, [](char character) { return kIsPlain[static_cast<unsigned char>(character)]; });
}

MembersText::MembersText()
    : keepsCodePoints_(libjson::parse(R"(["\u4E2D"])").write() == json_string(R"(["\u4E2D"])")) {}

std::string_view MembersText::Read(std::string_view text, MembersLayout& layout) {
    if (Scan(text, false, layout)) {
        return text;
    }
    rewritten_ = Rewritten(text);
    if (!Scan(rewritten_, true, layout)) {
        throw std::invalid_argument("they have no form that is known");
    }
    return rewritten_;
}

/// Returns false if the text may be different when it is written again.
bool MembersText::Scan(std::string_view text, bool isWritten, MembersLayout& layout) {
    layout.edits.clear();
    layout.hasKey = layout.hasType = layout.hasSubType = false;
    isWritten_ = isWritten;
    at_ = text.data();
    end_ = text.data() + text.size();
    open_.clear();
    layout.isEmpty = text == "{}";
    if (layout.isEmpty || *at_ != '{') {
        return layout.isEmpty;
    }
    do {
        // After the brace or the comma.
        ++at_;
        const char* const name = at_ + 1;
        if (!SkipName()) {
            return false;
        }
        const char* const value = at_;
        if (!SkipValue()) {
            return false;
        }
        // Between the quotes, of which the second is followed by a colon.
        AddMember(text, {name, static_cast<std::size_t>(value - name) - 2}, value, layout);
    } while (*at_ == ',');
    return *at_ == '}' && at_ + 1 == end_;
}

void MembersText::AddMember(std::string_view text, std::string_view name, const char* value,
                            MembersLayout& layout) {
    using Kind = MembersEdit::Kind;
    const auto begin = static_cast<std::size_t>(value - text.data());
    const auto end = static_cast<std::size_t>(at_ - text.data());
    const bool isContainer = *value == '{' || *value == '[';
    if (name == member::kType) {
        if (!layout.hasType) {
            layout.edits.push_back({Kind::AfterType, end, end});
        }
        layout.hasType = true;
    } else if (name == member::kDatabaseKey) {
        if (layout.hasKey) {
            // With its quotes, its colon and the comma before it.
            layout.edits.push_back({Kind::RepeatedKey, begin - name.size() - 4, end});
        } else {
            layout.edits.push_back({Kind::Key, begin, end});
        }
        layout.hasKey = true;
    } else if (name == member::kChildren && isContainer) {
        layout.edits.push_back({Kind::Children, begin, end});
    } else if (name == member::kFiles && isContainer) {
        layout.edits.push_back({Kind::Files, begin, end});
    } else if (name == member::kSubType) {
        layout.hasSubType = true;
    }
}

/// Skips a value with everything in it.
bool MembersText::SkipValue() {
    for (;;) {
        const char first = *at_;
        if (first == '{' || first == '[') {
            const char closing = first == '{' ? '}' : ']';
            ++at_;
            if (*at_ != closing) {
                open_.push_back(closing);
                if (first == '{' && !SkipName()) {
                    return false;
                }
                continue;
            }
            ++at_;
        } else if (first == '"' ? !SkipText() : !SkipWordOrNumber()) {
            return false;
        }
        while (!open_.empty() && *at_ == open_.back()) {
            ++at_;
            open_.pop_back();
        }
        if (open_.empty()) {
            return true;
        }
        if (*at_++ != ',' || (open_.back() == '}' && !SkipName())) {
            return false;
        }
    }
}

bool MembersText::SkipName() {
    return *at_ == '"' && SkipText() && *at_++ == ':';
}

bool MembersText::SkipText() {
    at_ = SkipPlain(at_ + 1);
    while (*at_ == '\\') {
        if (!SkipEscape()) {
            return false;
        }
        at_ = SkipPlain(at_);
    }
    return *at_++ == '"';
}

bool MembersText::SkipEscape() {
    constexpr std::string_view kLetters = "\"\\/bfnrt";
    if (at_[1] == 'u') {
        return SkipCode();
    }
    if (at_[1] == '\0' || kLetters.find(at_[1]) == std::string_view::npos) {
        return false;
    }
    at_ += 2;
    return true;
}

bool MembersText::SkipCode() {
    const std::uint32_t code = CodeAt(at_);
    if (code == kNoCode) {
        return false;
    }
    at_ += kSizeOfCode;
    if (isWritten_) {
        return true;
    }
    if (code < 0x20) {
        // Those with a letter are written with it.
        return code != '\b' && code != '\t' && code != '\n' && code != '\f' && code != '\r';
    }
    if (code <= 0xFF) {
        return code >= 0x7F;
    }
    if (code < 0xD800 || code > 0xDFFF) {
        return keepsCodePoints_;
    }
    // What is written of half a pair depends on what stands around it.
    const std::uint32_t low = code < 0xDC00 ? CodeAt(at_) : kNoCode;
    at_ += kSizeOfCode;
    return keepsCodePoints_ && low >= 0xDC00 && low <= 0xDFFF;
}

bool MembersText::SkipNumber() {
    at_ += *at_ == '-' ? 1 : 0;
    const char* const digits = at_;
    at_ = SkipDigits(at_);
    if (at_ == digits || (*digits == '0' && at_ != digits + 1)) {
        return false;
    }
    if (*at_ == '.') {
        const char* const fraction = at_ + 1;
        at_ = SkipDigits(fraction);
        if (at_ == fraction) {
            return false;
        }
    }
    if (*at_ == 'e' || *at_ == 'E') {
        at_ += at_[1] == '+' || at_[1] == '-' ? 2 : 1;
        const char* const exponent = at_;
        at_ = SkipDigits(exponent);
        return at_ != exponent;
    }
    return true;
}

bool MembersText::SkipWordOrNumber() {
    for (const std::string_view word : {"true", "false", "null"}) {
        if (*at_ == word.front()) {
            const bool isWord = static_cast<std::size_t>(end_ - at_) >= word.size() &&
                                std::string_view(at_, word.size()) == word;
            at_ += isWord ? word.size() : 0;
            return isWord;
        }
    }
    return SkipNumber();
}

}  // namespace host
