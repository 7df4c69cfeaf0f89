#include "TextBuffer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <functional>
#include <limits>
#include <new>

#include "AnsiCodePage.h"
#include "CaseMapping.h"
#include "LargeBlocks.h"
#include "WideText.h"

namespace orsutl::detail {

namespace {

bool IsAscii(std::string_view text) {
    // Documents of many megabytes pass through here, so eight bytes are looked at together.
    std::uint64_t word = 0;
    for (; text.size() >= sizeof(word); text.remove_prefix(sizeof(word))) {
        std::memcpy(&word, text.data(), sizeof(word));
        if ((word & 0x8080808080808080U) != 0) {
            return false;
        }
    }
    return std::all_of(text.begin(), text.end(), [](char character) { return (character & 0x80) == 0; });
}

bool IsAscii(std::wstring_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](wchar_t character) { return CodePoint(character) < 0x80; });
}

constexpr std::size_t kLongest =
    std::numeric_limits<std::size_t>::max() / (2 * sizeof(wchar_t)) - sizeof(TextBuffer);

/// What a buffer takes, with room for an ANSI form or without.
constexpr std::size_t BytesFor(std::size_t capacity, std::size_t ansiRoom = 0) {
    return sizeof(TextBuffer) + ansiRoom + (capacity + 1) * sizeof(wchar_t);
}

/// Half as much again keeps the cost of a text that grows piece by piece in proportion to its length.
constexpr std::size_t CapacityToGrow(std::size_t length) {
    return length + length / 2;
}

struct ReleaseBytes {
    void operator()(char* bytes) const noexcept { ::operator delete(bytes); }
};
using Bytes = std::unique_ptr<char, ReleaseBytes>;

}  // namespace

void ReleaseTextBuffer::operator()(TextBuffer* buffer) const noexcept {
    buffer->ReleaseReference();
}

bool TextBuffer::IsLarge() const noexcept {
    return BytesFor(capacity_, ansiRoom_) >= kLargeBlock;
}

void TextBuffer::Destroy() noexcept {
    const bool isLarge = IsLarge();
    std::destroy_at(this);
    if (isLarge) {
        FreeLargeBlock(this);
    } else {
        ::operator delete(static_cast<void*>(this));
    }
}

TextBufferPointer TextBuffer::Create(std::size_t length, std::size_t capacity, std::size_t ansiRoom) {
    static_assert(sizeof(TextBuffer) % alignof(wchar_t) == 0);
    if (length == 0) {
        return nullptr;
    }
    if (capacity > kLongest || ansiRoom > kLongest) {
        throw std::bad_alloc();
    }
    const std::size_t alignedRoom = (ansiRoom + alignof(wchar_t) - 1) / alignof(wchar_t) * alignof(wchar_t);
    const std::size_t bytes = BytesFor(capacity, alignedRoom);
    void* memory = bytes >= kLargeBlock ? AllocateLargeBlock(bytes) : ::operator new(bytes);
    TextBufferPointer buffer(
        std::construct_at(static_cast<TextBuffer*>(memory), length, capacity, alignedRoom));
    buffer->Characters()[length] = L'\0';
    return buffer;
}

void TextBuffer::KeepAnsiFormOfBlock(std::size_t length) noexcept {
    AnsiRoom()[length] = '\0';
    ansi_.store(AnsiRoom(), std::memory_order_relaxed);
}

void TextBuffer::DropAnsiForm() noexcept {
    // Only who holds the one reference comes here.
    char* const ansi = ansi_.load(std::memory_order_relaxed);
    if (ansi != AnsiRoom()) {
        ::operator delete(ansi);
    }
    ansi_.store(nullptr, std::memory_order_relaxed);
}

void TextBuffer::KeepAsciiForm() noexcept {
    const std::wstring_view text = Text();
    std::transform(text.begin(), text.end(), AnsiRoom(),
                   [](wchar_t character) { return static_cast<char>(character); });
    KeepAnsiFormOfBlock(text.size());
}

TextBufferPointer TextBuffer::FromWide(std::wstring_view text) {
    const bool ascii = IsAscii(text);
    TextBufferPointer buffer = Create(text.size(), text.size(), ascii ? text.size() + 1 : 0);
    if (buffer) {
        std::copy(text.begin(), text.end(), buffer->Characters());
        if (ascii) {
            buffer->KeepAsciiForm();
        }
    }
    return buffer;
}

TextBufferPointer TextBuffer::FromWideInUpperCase(std::wstring_view text) {
    const bool ascii = IsAscii(text);
    TextBufferPointer buffer = Create(text.size(), text.size(), ascii ? text.size() + 1 : 0);
    if (buffer) {
        wchar_t* place = buffer->Characters();
        for (std::size_t index = 0; index < text.size();) {
            const std::size_t start = index;
            const char32_t upper = ToUpper(NextCodePoint(text, index));
            // A pair in 32-bit characters stays a pair; no mapping leaves the plane that it starts in.
            place = index - start == 2 ? PutPair(upper, place) : PutWide(upper, place);
        }
        if (ascii) {
            buffer->KeepAsciiForm();
        }
    }
    return buffer;
}

TextBufferPointer TextBuffer::FromNarrow(std::string_view text) {
    if (IsAscii(text)) {
        TextBufferPointer buffer = Create(text.size(), text.size(), text.size() + 1);
        if (buffer) {
            std::copy(text.begin(), text.end(), buffer->Characters());
            std::copy(text.begin(), text.end(), buffer->AnsiRoom());
            buffer->KeepAnsiFormOfBlock(text.size());
        }
        return buffer;
    }
    const AnsiCodePage& codePage = CurrentAnsiCodePage();
    const std::size_t length = codePage.WidenedLength(text);
    TextBufferPointer buffer = Create(length, length, codePage.KeepsEveryByte() ? text.size() + 1 : 0);
    if (!buffer) {
        return buffer;
    }
    codePage.Widen(text, buffer->Characters());
    if (codePage.KeepsEveryByte()) {
        std::copy(text.begin(), text.end(), buffer->AnsiRoom());
        buffer->KeepAnsiFormOfBlock(text.size());
    }
    return buffer;
}

TextBufferPointer TextBuffer::Joined(std::wstring_view text, std::wstring_view other) {
    if (other.size() > std::numeric_limits<std::size_t>::max() / 2 - text.size()) {
        throw std::bad_alloc();
    }
    const std::size_t length = text.size() + other.size();
    const std::size_t capacity = CapacityToGrow(length);
    // The ANSI form of a large text is made only for those who ask for it.
    const bool ascii = BytesFor(capacity) < kLargeBlock && IsAscii(text) && IsAscii(other);
    TextBufferPointer buffer = Create(length, capacity, ascii ? capacity + 1 : 0);
    if (buffer) {
        std::copy(other.begin(), other.end(), std::copy(text.begin(), text.end(), buffer->Characters()));
        if (ascii) {
            buffer->KeepAsciiForm();
        }
    }
    return buffer;
}

bool TextBuffer::AppendInPlace(std::wstring_view other) noexcept {
    if (!HasOneReference() || other.size() > capacity_ - length_) {
        return false;
    }
    // Only what Joined has made has room, so an ANSI form in the block is one in ASCII, and has the same
    // room.
    const bool staysAscii = HasAnsiFormInBlock() && IsAscii(other);
    if (!staysAscii) {
        DropAnsiForm();
    }
    wchar_t* end = Characters() + length_;
    std::wmemmove(end, other.data(), other.size());
    if (staysAscii) {
        std::transform(end, end + other.size(), AnsiRoom() + length_,
                       [](wchar_t character) { return static_cast<char>(character); });
        AnsiRoom()[length_ + other.size()] = '\0';
    }
    length_ += other.size();
    Characters()[length_] = L'\0';
    return true;
}

bool TextBuffer::AppendInLargeBlock(TextBuffer*& buffer, std::wstring_view other) {
    const std::wstring_view text = buffer->Text();
    const std::less<> isBefore;
    const bool isInside =
        !isBefore(other.data(), text.data()) && isBefore(other.data(), text.data() + text.size());
    // With room for an ANSI form, which is not made for large texts, the characters would have to move.
    if (!buffer->IsLarge() || isInside || buffer->ansiRoom_ != 0 || !buffer->HasOneReference()) {
        return false;
    }
    if (other.size() > kLongest / 2 - text.size()) {
        throw std::bad_alloc();
    }
    const std::size_t length = text.size() + other.size();
    const std::size_t capacity = CapacityToGrow(length);
    char* const ansi = buffer->ansi_.load(std::memory_order_relaxed);
    void* const memory = ResizeLargeBlock(buffer, BytesFor(capacity));
    ::operator delete(ansi);
    buffer = std::construct_at(static_cast<TextBuffer*>(memory), text.size(), capacity, std::size_t{0});
    buffer->AppendInPlace(other);
    return true;
}

const char* TextBuffer::AnsiForm() {
    char* kept = ansi_.load(std::memory_order_acquire);
    if (kept != nullptr) {
        return kept;
    }
    const AnsiCodePage& codePage = CurrentAnsiCodePage();
    const std::size_t length = codePage.NarrowedLength(Text());
    Bytes made(static_cast<char*>(::operator new(length + 1)));
    codePage.Narrow(Text(), made.get());
    made.get()[length] = '\0';
    // Another thread may have been faster; then its form stays, because somebody may use it already.
    if (ansi_.compare_exchange_strong(kept, made.get(), std::memory_order_acq_rel,
                                      std::memory_order_acquire)) {
        return made.release();
    }
    return kept;
}

}  // namespace orsutl::detail
