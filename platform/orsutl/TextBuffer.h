#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "ReferenceCount.h"

namespace orsutl::detail {

class TextBuffer;

struct ReleaseTextBuffer {
    void operator()(TextBuffer* buffer) const noexcept;
};

/// One reference to a buffer. The empty text is null.
using TextBufferPointer = std::unique_ptr<TextBuffer, ReleaseTextBuffer>;

/// What copies of a text share: a counter, the wide characters in the same block of memory, and the ANSI
/// form. That is in the block as well if it was known when the text was made (a text in ASCII, or a narrow
/// text in UTF-8), and otherwise in a block of its own from when it is first asked for. In the block it comes
/// first: who asks for it has the counter's cache line at hand.
///
/// A buffer that has more than one reference never changes, except that the ANSI form is added.
class TextBuffer {
public:
    /// A copy of the text. A text in pure ASCII carries its ANSI form from the start.
    static TextBufferPointer FromWide(std::wstring_view text);
    /// The text in the ANSI code page, widened.
    static TextBufferPointer FromNarrow(std::string_view text);
    /// The text with every code point replaced by its simple upper-case mapping.
    static TextBufferPointer FromWideInUpperCase(std::wstring_view text);
    /// Both texts, one after the other, with room to append more.
    static TextBufferPointer Joined(std::wstring_view text, std::wstring_view other);

    void AddReference() noexcept { references_.Add(); }
    void ReleaseReference() noexcept {
        if (references_.Release()) {
            Destroy();
        }
    }
    bool HasOneReference() const noexcept { return references_.IsOne(); }

    std::wstring_view Text() const noexcept { return {Characters(), length_}; }
    /// Ended by a NUL.
    const wchar_t* Characters() const noexcept {
        return reinterpret_cast<const wchar_t*>(reinterpret_cast<const char*>(this + 1) + ansiRoom_);
    }
    wchar_t* Characters() noexcept { return const_cast<wchar_t*>(std::as_const(*this).Characters()); }

    /// The ANSI form, ended by a NUL. Any number of threads may ask at once.
    const char* AnsiForm();

    /// Appends the other text, which may lie in this buffer; false, with nothing changed, where the buffer
    /// has more than one reference or no room.
    bool AppendInPlace(std::wstring_view other) noexcept;
    /// Appends the other text to a buffer in a large block, which may move; false, with nothing changed,
    /// where the buffer is small, has more than one reference, or holds the other text. Throws
    /// std::bad_alloc, and then nothing has changed.
    static bool AppendInLargeBlock(TextBuffer*& buffer, std::wstring_view other);

    /// For those who provide the memory after the object; `ansiRoom` bytes of it come before the characters.
    TextBuffer(std::size_t length, std::size_t capacity, std::size_t ansiRoom) noexcept
        : length_(length), capacity_(capacity), ansiRoom_(ansiRoom) {}
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;
    ~TextBuffer() { DropAnsiForm(); }

private:
    /// `ansiRoom` bytes, or a few more, are reserved before the characters; the caller writes there and says
    /// so.
    static TextBufferPointer Create(std::size_t length, std::size_t capacity, std::size_t ansiRoom);
    void Destroy() noexcept;
    char* AnsiRoom() noexcept { return reinterpret_cast<char*>(this + 1); }
    bool HasAnsiFormInBlock() noexcept { return ansi_.load(std::memory_order_relaxed) == AnsiRoom(); }
    void KeepAnsiFormOfBlock(std::size_t length) noexcept;
    /// Writes and keeps the ANSI form of characters that are all in ASCII.
    void KeepAsciiForm() noexcept;
    void DropAnsiForm() noexcept;
    /// Whether this stands in a large block.
    bool IsLarge() const noexcept;

    ReferenceCount references_;
    std::size_t length_;
    std::size_t capacity_;
    std::atomic<char*> ansi_{nullptr};
    std::size_t ansiRoom_;
};

}  // namespace orsutl::detail
