#include "TextUnits.h"

#include <atomic>

#include "libjson.h"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace libjson {
namespace {

enum class Choice { kNone, kBytes, kUtf8 };

constinit std::atomic<Choice> choice{Choice::kNone};

text_units UnitsOfCodePage() noexcept {
#if defined(_WIN32)
    return GetACP() == CP_UTF8 ? text_units::utf8 : text_units::bytes;
#else
    return text_units::utf8;
#endif
}

}  // namespace

void set_text_units(text_units units) noexcept {
    choice.store(units == text_units::utf8 ? Choice::kUtf8 : Choice::kBytes, std::memory_order_relaxed);
}

text_units get_text_units() noexcept {
    switch (choice.load(std::memory_order_relaxed)) {
        case Choice::kBytes:
            return text_units::bytes;
        case Choice::kUtf8:
            return text_units::utf8;
        default:
            return UnitsOfCodePage();
    }
}

}  // namespace libjson

namespace libjson::detail {
namespace {

struct SequenceForm {
    std::size_t length;
    std::uint32_t smallest;
    unsigned char leadMask;
    unsigned char leadBits;
};

constexpr SequenceForm kForms[] = {
    {1, 0, 0x80, 0x00}, {2, 0x80, 0xE0, 0xC0}, {3, 0x800, 0xF0, 0xE0}, {4, kFirstSupplementary, 0xF8, 0xF0}};
constexpr std::uint32_t kLastCodePoint = 0x10FFFF;

}  // namespace

Utf8Sequence ReadUtf8(const char* bytes, const char* end) noexcept {
    if (bytes == end) {
        return {0, 0};
    }
    const auto lead = static_cast<unsigned char>(*bytes);
    for (const SequenceForm& form : kForms) {
        if ((lead & form.leadMask) != form.leadBits) {
            continue;
        }
        if (static_cast<std::size_t>(end - bytes) < form.length) {
            return {0, 0};
        }
        std::uint32_t code = lead & ~static_cast<std::uint32_t>(form.leadMask);
        for (std::size_t index = 1; index < form.length; ++index) {
            const auto byte = static_cast<unsigned char>(bytes[index]);
            if ((byte & 0xC0) != 0x80) {
                return {0, 0};
            }
            code = code << 6 | (byte & 0x3FU);
        }
        return code < form.smallest || code > kLastCodePoint ? Utf8Sequence{0, 0}
                                                             : Utf8Sequence{code, form.length};
    }
    return {0, 0};
}

char* WriteUtf8(std::uint32_t code, char* to) noexcept {
    const auto put = [&to](std::uint32_t byte) {
        *to++ = static_cast<char>(static_cast<unsigned char>(byte));
    };
    const auto putRest = [&](int shift) { put(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        putRest(0);
    } else if (code < kFirstSupplementary) {
        put(0xE0 | code >> 12);
        putRest(6);
        putRest(0);
    } else {
        put(0xF0 | code >> 18);
        putRest(12);
        putRest(6);
        putRest(0);
    }
    return to;
}

}  // namespace libjson::detail
