#include "TextEmitter.h"

#include <algorithm>
#include <bit>

#include "CopyRun.h"
#include "PlainRun.h"
#include "TextUnits.h"

namespace libjson::detail {
namespace {

constexpr std::size_t kMostTabs = 64;

/// The letter of the two-character escape of a byte; NUL where it has none.
constexpr char LetterOfEscape(unsigned char byte) noexcept {
    switch (byte) {
        case '"':
        case '\\':
        case '/':
            return static_cast<char>(byte);
        case '\b':
            return 'b';
        case '\t':
            return 't';
        case '\n':
            return 'n';
        case '\f':
            return 'f';
        case '\r':
            return 'r';
        default:
            return '\0';
    }
}

}  // namespace

TextEmitter::TextEmitter(TextPages& pages, bool isFormatted)
    : pages_(pages), isFormatted_(isFormatted), isUtf8_(get_text_units() == text_units::utf8) {
    NextPage();
}

void TextEmitter::NextPage() {
    page_ = pages_.Next();
    at_ = page_;
    // Strings are written in whole blocks, whose last characters may not count.
    end_ = page_ + TextPages::kPageBytes - kBlock;
}

void TextEmitter::PutRaw(std::string_view characters) {
    while (!characters.empty()) {
        const std::size_t length = std::min(characters.size(), kMostRoom);
        char* const to = Room(length);
        std::memcpy(to, characters.data(), length);
        Advance(to + length);
        characters.remove_prefix(length);
    }
}

void TextEmitter::PutPlainName(std::string_view name) {
    if (name.size() > kMostRoom - 5) {
        Put('"');
        PutRaw(name);
        Put('"');
        PutColon();
        return;
    }
    char* to = Room(name.size() + 5);
    *to++ = '"';
    std::memcpy(to, name.data(), name.size());
    to += name.size();
    *to++ = '"';
    Advance(to);
    PutColon();
}

void TextEmitter::PutColon() {
    if (isFormatted_) {
        PutRaw(" : ");
    } else {
        Put(':');
    }
}

void TextEmitter::BreakLine() {
    const std::size_t tabs = std::min(isArray_.size(), kMostTabs);
    char* const to = Room(1 + tabs);
    *to = '\n';
    std::memset(to + 1, '\t', tabs);
    Advance(to + 1 + tabs);
}

void TextEmitter::BeginMember(std::string_view name) {
    if (isFormatted_ || name.size() > kBlock) {
        BeginElement();
        PutPlainName(name);
        return;
    }
    char* to = Room(kBlock + 4);
    if (needsComma_) {
        *to++ = ',';
    }
    needsComma_ = true;
    *to++ = '"';
    CopyRun(to, name.data(), name.size());
    to += name.size();
    *to++ = '"';
    *to++ = ':';
    Advance(to);
}

void TextEmitter::PutString(std::string_view text) {
    // Most are short and need no escape.
    if (text.size() <= kBlock) {
        char* const to = Room(text.size() + 2);
        if (CopyRun(to + 1, text.data(), text.size()) == 0) {
            to[0] = '"';
            to[1 + text.size()] = '"';
            Advance(to + text.size() + 2);
            return;
        }
    }
    PutLongString(text);
}

/// Every block is copied whole and then looked at: what stands after an escape is overwritten.
void TextEmitter::PutLongString(std::string_view text) {
    Put('"');
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const std::size_t length = std::min(kBlock, static_cast<std::size_t>(end - at));
        char* const to = Room(kBlock);
        const std::uint32_t special = CopyRun(to, at, length);
        const std::size_t plain = special == 0 ? length : static_cast<std::size_t>(std::countr_zero(special));
        Advance(to + plain);
        at += plain;
        if (special != 0) {
            at = PutSpecial(at, end);
        }
    }
    Put('"');
}

void TextEmitter::PutNodeString(std::string_view text) {
    Put('"');
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const std::size_t offset = OffsetInBlock(at);
        const std::size_t length = std::min(kBlock - offset, static_cast<std::size_t>(end - at));
        const std::uint32_t special = FirstOf(WriteMask(at - offset) >> offset, length);
        const std::size_t plain = special == 0 ? length : static_cast<std::size_t>(std::countr_zero(special));
        char* const to = Room(plain);
        std::memcpy(to, at, plain);
        Advance(to + plain);
        at += plain;
        if (special != 0) {
            at = PutSpecial(at, end);
        }
    }
    Put('"');
}

/// Writes the character there as an escape, or several that belong together, and returns the place after
/// them.
const char* TextEmitter::PutSpecial(const char* at, const char* end) {
    const auto byte = static_cast<unsigned char>(*at);
    if (byte >= 0x80 && isUtf8_) {
        return PutUtf8Special(at, end);
    }
    const char letter = LetterOfEscape(byte);
    if (letter == '\0') {
        PutCode(byte);
    } else {
        char* const to = Room(2);
        to[0] = '\\';
        to[1] = letter;
        Advance(to + 2);
    }
    return at + 1;
}

const char* TextEmitter::PutUtf8Special(const char* at, const char* end) {
    const Utf8Sequence sequence = ReadUtf8(at, end);
    if (IsHighSurrogate(sequence.code)) {
        return PutHighSurrogates(at, end);
    }
    if (sequence.length == 0 || IsStrayByteEscape(sequence.code)) {
        PutCode(kStrayByteEscapes + static_cast<unsigned char>(*at));
        return at + 1;
    }
    if (sequence.code >= kFirstSupplementary) {
        const std::uint32_t offset = sequence.code - kFirstSupplementary;
        PutCode(kFirstHighSurrogate + (offset >> 10));
        PutCode(kFirstLowSurrogate + (offset & 0x3FF));
    } else {
        PutCode(sequence.code);
    }
    return at + sequence.length;
}

/// Writes three-byte forms of high surrogates up to the last one that follows. Where an escape of a low
/// surrogate comes next, a reader would join it to the last of them: they are written as bytes then.
const char* TextEmitter::PutHighSurrogates(const char* at, const char* end) {
    const char* past = at;
    Utf8Sequence next = ReadUtf8(past, end);
    while (IsHighSurrogate(next.code)) {
        past += next.length;
        next = ReadUtf8(past, end);
    }
    const bool wouldJoin = past != end && (next.length == 0 || IsLowSurrogate(next.code));
    while (at != past) {
        if (wouldJoin) {
            PutCode(kStrayByteEscapes + static_cast<unsigned char>(*at));
            ++at;
        } else {
            const Utf8Sequence sequence = ReadUtf8(at, past);
            PutCode(sequence.code);
            at += sequence.length;
        }
    }
    return past;
}

/// \uXXXX
void TextEmitter::PutCode(std::uint32_t code) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    char* to = Room(6);
    *to++ = '\\';
    *to++ = 'u';
    for (int shift = 12; shift >= 0; shift -= 4) {
        *to++ = kDigits[code >> shift & 0xF];
    }
    Advance(to);
}

}  // namespace libjson::detail
