#pragma once

#include <cstddef>
#include <string_view>

namespace orsutl::detail {

/// One code page, which converts between narrow and wide texts. In every code page ASCII stays as it is.
///
/// Lengths are asked for first, so that the caller can provide the memory: the converting operations write
/// exactly as many characters as the measuring operation returns for the same text, and no NUL after them.
class AnsiCodePage {
public:
    AnsiCodePage(const AnsiCodePage&) = delete;
    AnsiCodePage& operator=(const AnsiCodePage&) = delete;

    virtual std::size_t WidenedLength(std::string_view text) const = 0;
    virtual void Widen(std::string_view text, wchar_t* wide) const = 0;

    /// A character that the code page lacks counts as one '?'.
    virtual std::size_t NarrowedLength(std::wstring_view text) const = 0;
    virtual void Narrow(std::wstring_view text, char* narrow) const = 0;

    /// Whether every narrow text comes back as it was when it has been widened.
    virtual bool KeepsEveryByte() const noexcept = 0;

protected:
    constexpr AnsiCodePage() noexcept = default;
    // Neither virtual nor public: code pages are still asked while the process ends, so none may need a
    // destructor that runs then.
    ~AnsiCodePage() = default;
};

/// The code page of the process. It lives until the process ends; ask once per text, because another thread
/// may set another one at any time.
const AnsiCodePage& CurrentAnsiCodePage();

/// UTF-8, as Utf8CodePage.h describes it.
const AnsiCodePage& Utf8AnsiCodePage() noexcept;

}  // namespace orsutl::detail
