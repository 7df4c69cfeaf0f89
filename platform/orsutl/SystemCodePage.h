#pragma once

#include "AnsiCodePage.h"

namespace orsutl::detail {

/// A code page of Windows other than UTF-8, by the system's own tables and without its best-fit substitutes:
/// a character that the code page does not have is one '?', even if it takes two wide characters.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted by its base.
class SystemCodePage final : public AnsiCodePage {
public:
    /// The number of one of the system's ANSI code pages, such as 1252 or 932.
    explicit constexpr SystemCodePage(unsigned int number) noexcept : number_(number) {}

    std::size_t WidenedLength(std::string_view text) const override;
    void Widen(std::string_view text, wchar_t* wide) const override;
    std::size_t NarrowedLength(std::wstring_view text) const override;
    void Narrow(std::wstring_view text, char* narrow) const override;
    bool KeepsEveryByte() const noexcept override { return false; }

private:
    std::size_t Convert(std::wstring_view text, char* narrow, std::size_t room) const;

    unsigned int number_;
};

}  // namespace orsutl::detail
