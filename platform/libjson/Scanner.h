#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

#include "Number.h"
#include "PlainRun.h"
#include "TextUnits.h"
#include "libjson.h"

namespace libjson::detail {

/// Why a text is not a document, and the character that shows it. Without a reason it is one.
struct Fault {
    const char* at;
    const char* reason;
};

/// Reads a text by the grammar of RFC 8259 and reports what it holds, in order, to a sink:
///   Open(type), Close()   an array or object begins and ends; its name, if any, came before
///   GuessName(at, end)    what may be done in place of the next, where the name at that place is one that
///                         the sink knows to be without escapes: returns the place after its closing quote,
///                         or null
///   MemberName(text)      the name of the value that comes next
///   Value(type, text)     a value without children: its characters, its digits, or its word
/// The texts are void after the call. The text that is read must be followed by a NUL.
template <class Sink>
class Scanner {
public:
    Scanner(std::string_view text, text_units units, Sink& sink)
        : at_(text.data()), end_(text.data() + text.size()), units_(units), sink_(sink) {}

    Fault Scan() {
        constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
        if (std::string_view(at_, static_cast<std::size_t>(end_ - at_)).starts_with(kByteOrderMark)) {
            return {at_, "a document must not begin with a byte order mark"};
        }
        bool valid = ReadFirst();
        while (valid && !open_.empty()) {
            valid = open_.back() == JSON_NODE ? ReadMember() : ReadElement();
        }
        if (valid) {
            SkipBlanks();
            if (at_ != end_) {
                Fail("nothing may follow the value of a document");
            }
        }
        return {at_, reason_};
    }

private:
    bool Fail(const char* reason) noexcept {
        reason_ = reason;
        return false;
    }

    bool FailAt(const char* at, const char* reason) noexcept {
        at_ = at;
        return Fail(reason);
    }

    /// Fails with the reason, unless it is that the text ends too early.
    bool FailHere(const char* reason, const char* reasonAtEnd) noexcept {
        return Fail(at_ == end_ ? reasonAtEnd : reason);
    }

    void SkipBlanks() noexcept {
        const char* at = at_;
        while (static_cast<unsigned char>(*at) <= ' ' &&
               (*at == ' ' || *at == '\n' || *at == '\t' || *at == '\r')) {
            ++at;
        }
        at_ = at;
    }

    bool ReadFirst() {
        SkipBlanks();
        if (at_ == end_) {
            return Fail("the text is empty: a document is one value");
        }
        return ReadValue();
    }

    /// Reads what follows the start of an object or one of its members, up to the next value or the end.
    bool ReadMember() {
        SkipBlanks();
        if (*at_ == '}') {
            return Close();
        }
        if (!isFirst_) {
            if (*at_ != ',') {
                return FailHere("a comma or a closing brace is missing here", kEndsInObject);
            }
            ++at_;
            SkipBlanks();
        }
        if (*at_ != '"') {
            return FailHere("the name of a member is missing here, in double quotes", kEndsInObject);
        }
        if (const char* const past = sink_.GuessName(at_ + 1, end_)) {
            at_ = past;
        } else if (std::string_view name; ReadString(name)) {
            sink_.MemberName(name);
        } else {
            return false;
        }
        SkipBlanks();
        if (*at_ != ':') {
            return FailHere("a colon is missing here, between a name and its value", kEndsInObject);
        }
        ++at_;
        SkipBlanks();
        return at_ == end_ ? Fail(kEndsInObject) : ReadValue();
    }

    /// Reads what follows the start of an array or one of its elements, up to the next value or the end.
    bool ReadElement() {
        SkipBlanks();
        if (*at_ == ']') {
            return Close();
        }
        if (!isFirst_) {
            if (*at_ != ',') {
                return FailHere("a comma or a closing bracket is missing here", kEndsInArray);
            }
            ++at_;
            SkipBlanks();
        }
        return at_ == end_ ? Fail(kEndsInArray) : ReadValue();
    }

    bool ReadValue() {
        isFirst_ = false;
        // Most values are texts.
        if (*at_ == '"') {
            return ReadText();
        }
        switch (*at_) {
            case '{':
                return Open(JSON_NODE);
            case '[':
                return Open(JSON_ARRAY);
            case 't':
                return ReadWord(JSON_BOOL, "true");
            case 'f':
                return ReadWord(JSON_BOOL, "false");
            case 'n':
                return ReadWord(JSON_NULL, "null");
            default:
                return *at_ == '-' || IsDigit(*at_) ? ReadNumber() : Fail("a value is missing here");
        }
    }

    bool Open(char type) {
        ++at_;
        open_.push_back(type);
        isFirst_ = true;
        sink_.Open(type);
        return true;
    }

    bool Close() {
        ++at_;
        open_.pop_back();
        isFirst_ = false;
        sink_.Close();
        return true;
    }

    bool ReadWord(char type, std::string_view word) {
        const char* const start = at_;
        for (const char character : word) {
            if (*at_ != character) {
                return FailAt(start, "this word is not a value: only true, false and null are");
            }
            ++at_;
        }
        sink_.Value(type, word);
        return true;
    }

    bool ReadNumber() {
        const NumberScan number = ScanNumber(at_, end_);
        if (number.fault != nullptr) {
            return FailAt(number.end, number.fault);
        }
        sink_.Value(JSON_NUMBER, {at_, static_cast<std::size_t>(number.end - at_)});
        at_ = number.end;
        return true;
    }

    /// The first character of a string, from a place on, that is not plain; or the end of the text.
    const char* SkipPlain(const char* at) const noexcept {
        for (; end_ - at >= static_cast<std::ptrdiff_t>(kBlock); at += kBlock) {
            if (const std::uint32_t mask = ReadMask(at)) {
                return at + std::countr_zero(mask);
            }
        }
        while (at != end_ && !EndsReadRun(static_cast<unsigned char>(*at))) {
            ++at;
        }
        return at;
    }

    bool ReadText() {
        const char* const first = at_ + 1;
        at_ = SkipPlain(first);
        if (*at_ == '"') {
            const auto length = static_cast<std::size_t>(at_ - first);
            ++at_;
            sink_.Value(JSON_STRING, {first, length});
            return true;
        }
        std::string_view text;
        if (!ReadEscaped(first, text)) {
            return false;
        }
        sink_.Value(JSON_STRING, text);
        return true;
    }

    /// Reads a string from its opening quote on. The result points into the text itself where nothing is
    /// escaped.
    bool ReadString(std::string_view& result) {
        const char* const first = at_ + 1;
        const char* const past = SkipPlain(first);
        at_ = past;
        if (*past != '"') {
            return ReadEscaped(first, result);
        }
        result = {first, static_cast<std::size_t>(past - first)};
        at_ = past + 1;
        return true;
    }

    /// Goes on after the first plain characters of a string.
    bool ReadEscaped(const char* first, std::string_view& result) {
        unescaped_.assign(first, at_);
        while (*at_ != '"') {
            if (*at_ != '\\') {
                return FailHere("a control character must be escaped in a string", kEndsInString);
            }
            if (!ReadEscape()) {
                return false;
            }
            const char* const run = at_;
            at_ = SkipPlain(run);
            unescaped_.append(run, at_);
        }
        ++at_;
        result = unescaped_;
        return true;
    }

    bool ReadEscape() {
        const char letter = at_[1];
        switch (letter) {
            case '"':
            case '\\':
            case '/':
                unescaped_.push_back(letter);
                break;
            case 'b':
                unescaped_.push_back('\b');
                break;
            case 'f':
                unescaped_.push_back('\f');
                break;
            case 'n':
                unescaped_.push_back('\n');
                break;
            case 'r':
                unescaped_.push_back('\r');
                break;
            case 't':
                unescaped_.push_back('\t');
                break;
            case 'u':
                return ReadCodeEscape();
            default:
                if (at_ + 1 == end_) {
                    return FailAt(end_, kEndsInString);
                }
                return Fail("a backslash must be followed by one of \" \\ / b f n r t u");
        }
        at_ += 2;
        return true;
    }

    /// Reads \uXXXX, or two of them that make one code point.
    bool ReadCodeEscape() {
        std::uint32_t code = 0;
        if (!ReadHexadecimal(code)) {
            return false;
        }
        if (IsHighSurrogate(code) && at_[0] == '\\' && at_[1] == 'u') {
            const char* const second = at_;
            std::uint32_t low = 0;
            if (!ReadHexadecimal(low)) {
                return false;
            }
            if (IsLowSurrogate(low)) {
                code =
                    kFirstSupplementary + ((code - kFirstHighSurrogate) << 10) + (low - kFirstLowSurrogate);
            } else {
                at_ = second;
            }
        }
        AppendCode(code);
        return true;
    }

    bool ReadHexadecimal(std::uint32_t& code) {
        const char* const start = at_;
        at_ += 2;
        for (int digit = 0; digit < 4; ++digit, ++at_) {
            const int value = HexadecimalValue(*at_);
            if (value < 0) {
                return at_ == end_ ? Fail(kEndsInString)
                                   : FailAt(start, "\\u must be followed by four hexadecimal digits");
            }
            code = code << 4 | static_cast<std::uint32_t>(value);
        }
        return true;
    }

    static int HexadecimalValue(char character) noexcept {
        if (IsDigit(character)) {
            return character - '0';
        }
        if (character >= 'a' && character <= 'f') {
            return character - 'a' + 10;
        }
        return character >= 'A' && character <= 'F' ? character - 'A' + 10 : -1;
    }

    void AppendCode(std::uint32_t code) {
        const bool isByte = units_ == text_units::bytes ? code <= 0xFF : IsStrayByteEscape(code);
        if (isByte) {
            unescaped_.push_back(static_cast<char>(static_cast<unsigned char>(code & 0xFF)));
            return;
        }
        std::array<char, 4> sequence;
        unescaped_.append(sequence.data(), WriteUtf8(code, sequence.data()));
    }

    static constexpr const char* kEndsInObject = "the text ends inside an object";
    static constexpr const char* kEndsInArray = "the text ends inside an array";
    static constexpr const char* kEndsInString = "the text ends inside a string";

    const char* at_;
    const char* const end_;
    const text_units units_;
    Sink& sink_;
    const char* reason_ = nullptr;
    /// The types of the containers around the place.
    std::string open_;
    /// Whether the innermost container has no child yet.
    bool isFirst_ = false;
    std::string unescaped_;
};

}  // namespace libjson::detail
