#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "AnsiCodePage.h"

namespace orsutl::detail {

/// A code page with ASCII and one or two bytes per character, as all of Windows' ANSI code pages but UTF-8
/// are.
///
/// iconv says what the bytes mean, once for each of them, and the tables that this gives do the work: iconv's
/// own conversion would join characters that Windows leaves apart and stop at a byte that it refuses. A byte
/// from 80 to 9F without a meaning is the control character of the same number, as on Windows. Any other byte
/// without a meaning in its place becomes the lone surrogate U+DC00 plus the byte and comes back as that
/// byte, so that the rest of the text is read on and nothing is lost.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted by its base.
class TableCodePage final : public AnsiCodePage {
public:
    /// The code page that iconv knows by the name; null where it knows none or one of another kind.
    static std::unique_ptr<const TableCodePage> Make(const std::string& iconvName);

    std::size_t WidenedLength(std::string_view text) const override;
    void Widen(std::string_view text, wchar_t* wide) const override;
    std::size_t NarrowedLength(std::wstring_view text) const override;
    void Narrow(std::wstring_view text, char* narrow) const override;
    bool KeepsEveryByte() const noexcept override { return false; }

private:
    class Converter;
    /// One or two bytes; two where there is a lead byte.
    struct Bytes {
        unsigned char lead = 0;
        unsigned char last = 0;
    };

    bool ReadTables(const std::string& iconvName);
    bool ReadTrails(Converter& converter, unsigned char lead);
    void Learn(char32_t codePoint, Bytes bytes, Converter& back);

    char32_t Decode(std::string_view text, std::size_t& index) const;
    Bytes Encode(char32_t codePoint) const;

    /// The code point of a byte that is a character by itself; kNothing for any other.
    std::array<char32_t, 256> singles_{};
    /// The code points of two bytes, 256 for each lead byte that there is.
    std::array<std::vector<char32_t>, 256> doubles_;
    std::unordered_map<char32_t, Bytes> bytesOf_;
};

}  // namespace orsutl::detail
