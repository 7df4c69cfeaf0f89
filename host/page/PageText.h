#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "host/system/OutputFile.h"

namespace host {

/// The text of a page on its way to the output, in pieces.
///
/// Texts of a project can be anything, and the page is HTML in UTF-8: they are written so that they end
/// neither a string nor an element. Bytes that are not UTF-8 become U+FFFD.
class PageText {
public:
    explicit PageText(const WritePiece& put) : put_(put) {}

    /// Text that is written as it is.
    void Add(std::string_view text);
    /// A text between tags, or in an attribute with double quotes.
    void AddHtml(std::string_view utf8);
    /// A JSON string with its quotes, for the content of a script element.
    void AddJson(std::string_view utf8);
    void AddNumber(std::int64_t number);
    /// A member of a JSON object, with a comma before it unless it is the first. The name needs no escapes.
    void AddName(std::string_view name, bool isFirst = false);
    /// A member with a text; nothing if that is empty.
    void AddMember(std::string_view name, std::string_view utf8);

    /// Writes what is left.
    void Finish();

    /// Ends the writing where the output takes no more.
    struct Ended {
        std::error_code error;
    };

private:
    /// Calls `add` with each character that is well-formed, and with U+FFFD for each byte that is not.
    template <typename AddCharacter>
    static void ForEachCharacter(std::string_view utf8, const AddCharacter& add);

    const WritePiece& put_;
    std::string buffer_;
};

}  // namespace host
