#include "Utf8CodePage.h"

#include "WideText.h"

namespace orsutl::detail {

namespace {

constexpr bool IsEscapedByte(char32_t codePoint) {
    return codePoint >= kEscapeBase + 0x80 && codePoint <= kEscapeBase + 0xFF;
}

constexpr char32_t Byte(char character) {
    return static_cast<unsigned char>(character);
}

/// What may follow a lead byte: how many continuation bytes, and the range of the first of them (the rest are
/// 80 to BF). A length of 0 marks a byte that leads nothing.
struct Lead {
    std::size_t continuations;
    char32_t first;
    char32_t last;
};

constexpr Lead LeadOf(char32_t byte) {
    if (byte < 0xC2 || byte > 0xF4) {
        return {0, 0, 0};
    }
    if (byte < 0xE0) {
        return {1, 0x80, 0xBF};
    }
    if (byte < 0xF0) {
        return {2, byte == 0xE0 ? 0xA0U : 0x80U, byte == 0xED ? 0x9FU : 0xBFU};
    }
    return {3, byte == 0xF0 ? 0x90U : 0x80U, byte == 0xF4 ? 0x8FU : 0xBFU};
}

/// The code point at an index below the text's length, or the escape of the one byte there; moves the index
/// on.
char32_t Decode(std::string_view text, std::size_t& index) {
    const char32_t byte = Byte(text[index]);
    if (byte < 0x80) {
        ++index;
        return byte;
    }
    const Lead lead = LeadOf(byte);
    if (lead.continuations == 0 || text.size() - index <= lead.continuations) {
        ++index;
        return kEscapeBase + byte;
    }
    const char32_t second = Byte(text[index + 1]);
    if (second < lead.first || second > lead.last) {
        ++index;
        return kEscapeBase + byte;
    }
    char32_t codePoint = ((byte & (0x3FU >> lead.continuations)) << 6) | (second & 0x3F);
    for (std::size_t i = 2; i <= lead.continuations; ++i) {
        const char32_t next = Byte(text[index + i]);
        if ((next & 0xC0) != 0x80) {
            ++index;
            return kEscapeBase + byte;
        }
        codePoint = (codePoint << 6) | (next & 0x3F);
    }
    index += lead.continuations + 1;
    return codePoint;
}

constexpr bool IsBeyondUnicode(char32_t codePoint) {
    return codePoint > 0x10FFFF;
}

constexpr std::size_t EncodedLength(char32_t codePoint) {
    if (codePoint < 0x80 || IsEscapedByte(codePoint) || IsBeyondUnicode(codePoint)) {
        return 1;
    }
    return codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
}

char* Encode(char32_t codePoint, char* narrow) {
    const auto put = [&narrow](char32_t byte) {
        *narrow++ = static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (IsEscapedByte(codePoint)) {
        put(codePoint - kEscapeBase);
    } else if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else if (!IsBeyondUnicode(codePoint)) {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(U'?');
    }
    return narrow;
}
}  // namespace

std::size_t Utf8CodePage::WidenedLength(std::string_view text) const {
    std::size_t length = 0;
    for (std::size_t index = 0; index < text.size();) {
        length += WideLength(Decode(text, index));
    }
    return length;
}

void Utf8CodePage::Widen(std::string_view text, wchar_t* wide) const {
    for (std::size_t index = 0; index < text.size();) {
        wide = PutWide(Decode(text, index), wide);
    }
}

std::size_t Utf8CodePage::NarrowedLength(std::wstring_view text) const {
    std::size_t length = 0;
    for (std::size_t index = 0; index < text.size();) {
        length += EncodedLength(NextCodePoint(text, index));
    }
    return length;
}

void Utf8CodePage::Narrow(std::wstring_view text, char* narrow) const {
    for (std::size_t index = 0; index < text.size();) {
        narrow = Encode(NextCodePoint(text, index), narrow);
    }
}

const AnsiCodePage& Utf8AnsiCodePage() noexcept {
    static constinit const Utf8CodePage utf8;
    return utf8;
}

}  // namespace orsutl::detail
