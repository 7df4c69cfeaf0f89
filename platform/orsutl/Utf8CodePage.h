#pragma once

#include "AnsiCodePage.h"

namespace orsutl::detail {

/// UTF-8 that loses no byte. A byte that belongs to no well-formed sequence becomes the lone surrogate U+DC80
/// to U+DCFF (U+DC00 plus the byte) and comes back as that byte; an encoded surrogate is not well-formed, so
/// it counts as three such bytes. Any other lone surrogate in a wide text becomes its three-byte form, and a
/// wide character beyond U+10FFFF becomes '?'.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted by its base.
class Utf8CodePage final : public AnsiCodePage {
public:
    std::size_t WidenedLength(std::string_view text) const override;
    void Widen(std::string_view text, wchar_t* wide) const override;
    std::size_t NarrowedLength(std::wstring_view text) const override;
    void Narrow(std::wstring_view text, char* narrow) const override;
    bool KeepsEveryByte() const noexcept override { return true; }
};

}  // namespace orsutl::detail
