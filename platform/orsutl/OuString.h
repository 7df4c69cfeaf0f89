#pragma once

#include <cstdarg>
#include <cstddef>
#include <utility>

#include "OrsutlExport.h"

namespace orsutl::detail {
class TextBuffer;
}

/// A wide-character text that shares its buffer between copies.
///
/// Copying allocates nothing; a change through one copy never shows in another. Copies may be used and
/// destroyed on different threads at the same time; one and the same OuString may not be changed by one
/// thread while another uses it. A text may hold NUL characters, but everything that takes a plain pointer
/// ends at the first one. Memory exhaustion throws std::bad_alloc and leaves the text as it was.
class ORSUTL_API OuString {
public:
    OuString() noexcept = default;
    /// The wide text up to its NUL; null gives the empty text.
    OuString(const wchar_t* text);
    /// The first `length` characters of the wide text, NUL characters included.
    OuString(const wchar_t* text, std::size_t length);
    /// The narrow text up to its NUL, in the ANSI code page; null gives the empty text. `flags` is reserved:
    /// 0.
    OuString(const char* text, int flags);
    OuString(const OuString& other) noexcept : buffer_(other.buffer_) {
        if (buffer_ != nullptr) {
            AddReference();
        }
    }
    OuString(OuString&& other) noexcept : buffer_(std::exchange(other.buffer_, nullptr)) {}
    ~OuString() {
        if (buffer_ != nullptr) {
            ReleaseReference();
        }
    }

    OuString& operator=(const OuString& other) noexcept {
        OuString copy(other);
        std::swap(buffer_, copy.buffer_);
        return *this;
    }
    OuString& operator=(OuString&& other) noexcept {
        OuString taken(std::move(other));
        std::swap(buffer_, taken.buffer_);
        return *this;
    }
    OuString& operator=(const wchar_t* text);
    /// Takes a narrow text in the ANSI code page, as the constructor does.
    OuString& operator=(const char* text);

    /// The characters, ended by a NUL; valid until this text is changed or destroyed.
    const wchar_t* GetBuffer() const noexcept;
    /// The text in the ANSI code page, ended by a NUL; a character that the code page lacks becomes one '?'.
    /// Made when first asked for, or with the text where that costs no memory of its own, and kept; valid
    /// until this text is changed or destroyed. A narrow text comes back as it was where the code page is
    /// UTF-8, whatever its bytes are: one that does not belong to a well-formed sequence is kept in the wide
    /// text as the lone surrogate U+DC00 plus the byte.
    const char* GetAnsiBuffer() const;
    /// The length in wide characters (16-bit units on Windows).
    std::size_t GetLength() const noexcept;
    bool IsEmpty() const noexcept { return buffer_ == nullptr; }

    /// The first `length` bytes of a narrow text in the ANSI code page, NUL characters included.
    static OuString FromAnsi(const char* text, std::size_t length);

    /// Whether both are copies of one text and neither was changed since: equal, without a look at the
    /// characters.
    bool IsCopyOf(const OuString& other) const noexcept { return buffer_ == other.buffer_; }

    /// Appends `length` characters of the text, or the whole of it up to its NUL when `length` is 0. The text
    /// may lie in this one's own buffer; null appends nothing.
    void Append(const wchar_t* text, std::size_t length);

    /// Less than, equal to or greater than zero if this text comes before the other, is equal to it or comes
    /// after it, unit by unit. A null pointer counts as the empty text, here and in the operators.
    int Compare(const OuString& other) const noexcept;
    int Compare(const wchar_t* other) const noexcept;
    /// The same with letter case folded by Unicode's simple mappings, whatever the locale, code point by code
    /// point.
    int CompareNoCase(const OuString& other) const noexcept;
    int CompareNoCase(const wchar_t* other) const noexcept;

    /// Upper-cases every character by Unicode's simple mappings, whatever the locale; the length never
    /// changes.
    void MakeUpper();

    /// Replaces the text by the formatted one, however long it is. The format and its arguments are those of
    /// std::swprintf, with these differences, the same on every platform: "%s" and "%ls" take a wide text,
    /// "%S" and "%hs" a narrow one in the ANSI code page (whose precision counts bytes), "%c" and "%lc" a
    /// wide character, "%C" and "%hc" a narrow one; a null text is "(null)". This text's own buffer may be an
    /// argument. A null format, one with a conversion that does not exist, and "%n" give the empty text.
    void Format(const wchar_t* format, ...);

    /// The same with the arguments as a list, which is not usable afterwards.
    void FormatV(const wchar_t* format, std::va_list arguments);

    /// Splits the text at the first occurrence of the separator: returns true, and what is before and after
    /// it. Without a separator in the text: returns false, the whole text as `before` and an empty `after`.
    /// An empty or null separator is never found. This text itself may be one of the two.
    bool Split(const wchar_t* separator, OuString& before, OuString& after) const;

    /// The number that the text begins with (blanks and other white space of ASCII, a sign, the digits 0 to
    /// 9; the limits of int instead of overflow), or `otherwise` where there are no digits. What follows does
    /// not matter.
    int ToInt(int otherwise) const noexcept;

private:
    // Of the buffer, which must not be null.
    void AddReference() const noexcept;
    void ReleaseReference() const noexcept;

    /// Null for the empty text.
    orsutl::detail::TextBuffer* buffer_ = nullptr;
};

ORSUTL_API bool operator==(const OuString& left, const OuString& right) noexcept;
ORSUTL_API bool operator==(const OuString& left, const wchar_t* right) noexcept;
ORSUTL_API bool operator<(const OuString& left, const OuString& right) noexcept;

/// Chooses the ANSI code page of the process by an iconv name ("UTF-8", "CP1252", "CP932", ...; letter case
/// does not matter) and returns whether there is one of that name. Call it before texts are made: an ANSI
/// form that a text keeps is not made again. UTF-8 unless set. On Windows the code page is the process's own
/// and the call returns false for any other.
///
/// A code page other than UTF-8 holds ASCII and has one or two bytes per character; iconv's further kinds are
/// refused. A byte from 80 to 9F without a meaning in the code page is the control character of that number,
/// as on Windows; any other byte without a meaning, such as a lead byte without its trail, is kept in the
/// wide text as the lone surrogate U+DC00 plus the byte, comes back as that byte, and does not harm the text
/// around it.
///
/// Only texts follow this choice. A JSON library that writes them into documents does not know about it: a
/// program that chooses a code page other than the process's own has to set the text units of its documents
/// as well (with the embedded libjson, libjson::set_text_units to bytes for any code page but UTF-8).
ORSUTL_API bool OuSetAnsiCodePage(const char* name);
