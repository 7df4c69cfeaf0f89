#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string_view>

namespace orsutl::detail {

class TextBuffer;

struct ReleaseTextBuffer {
    void operator()(TextBuffer* buffer) const noexcept;
};

/// One reference to a buffer. The empty text is null.
using TextBufferPointer = std::unique_ptr<TextBuffer, ReleaseTextBuffer>;

/// What copies of a text share: a counter, the wide characters in the same block of memory, and the ANSI
/// form. That is in the block as well if it was known when the text was made (a text in ASCII, or a narrow
/// text in UTF-8), and otherwise in a block of its own from when it is first asked for.
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

    void AddReference() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void ReleaseReference() noexcept;
    bool HasOneReference() const noexcept { return references_.load(std::memory_order_acquire) == 1; }

    std::wstring_view Text() const noexcept { return {Characters(), length_}; }
    /// Ended by a NUL.
    const wchar_t* Characters() const noexcept { return reinterpret_cast<const wchar_t*>(this + 1); }
    wchar_t* Characters() noexcept { return reinterpret_cast<wchar_t*>(this + 1); }

    /// The ANSI form, ended by a NUL. Any number of threads may ask at once.
    const char* AnsiForm();

    /// Appends the other text, which may lie in this buffer; false, with nothing changed, where the buffer
    /// has more than one reference or no room.
    bool AppendInPlace(std::wstring_view other) noexcept;
    /// Appends the other text to a buffer in a large block, which may move; false, with nothing changed,
    /// where the buffer is small, has more than one reference, or holds the other text. Throws
    /// std::bad_alloc, and then nothing has changed.
    static bool AppendInLargeBlock(TextBuffer*& buffer, std::wstring_view other);

    /// For those who provide the memory after the object.
    TextBuffer(std::size_t length, std::size_t capacity, bool isLarge) noexcept
        : length_(length), capacity_(capacity), isLarge_(isLarge) {}
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;
    ~TextBuffer() { DropAnsiForm(); }

private:
    /// `ansiRoom` bytes are reserved after the characters; the caller writes there and says so.
    static TextBufferPointer Create(std::size_t length, std::size_t capacity, std::size_t ansiRoom);
    char* AnsiRoom() noexcept { return reinterpret_cast<char*>(Characters() + capacity_ + 1); }
    void KeepAnsiFormOfBlock(std::size_t length) noexcept;
    /// Writes and keeps the ANSI form of characters that are all in ASCII.
    void KeepAsciiForm() noexcept;
    void DropAnsiForm() noexcept;

    std::atomic<std::size_t> references_{1};
    std::size_t length_;
    std::size_t capacity_;
    std::atomic<char*> ansi_{nullptr};
    bool ansiStandsInBlock_ = false;
    /// Whether this stands in a large block.
    bool isLarge_;
};

}  // namespace orsutl::detail
