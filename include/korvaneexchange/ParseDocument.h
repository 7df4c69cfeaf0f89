#pragma once

#include <libjson.h>

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Export.h"

namespace korvane::exchange {

/// A text is not a JSON document.
class KORVANEEXCHANGE_API DocumentError : public std::runtime_error {
public:
    DocumentError(std::size_t line, std::size_t column, std::size_t offset, const std::string& reason);
    DocumentError(const DocumentError& other);
    DocumentError& operator=(const DocumentError& other);
    ~DocumentError() override;

    /// Counted from 1; columns are bytes, and a line ends with a line feed, a carriage return, or both. The
    /// place is that of the byte that shows the fault; at the end of a text that ends too early it is the one
    /// after the last. An installed JSON library may not tell it: both are 0 then, and the reason says what
    /// it says.
    std::size_t Line() const { return line_; }
    std::size_t Column() const { return column_; }
    /// Bytes before the fault.
    std::size_t Offset() const { return offset_; }
    /// What is wrong there, without the place. `what` has both.
    const std::string& Reason() const { return reason_; }

private:
    std::size_t line_;
    std::size_t column_;
    std::size_t offset_;
    std::string reason_;
};

/// The document of the text, as libjson reads it: one value, in UTF-8, with blanks around it. The text need
/// not live longer than the call. Throws DocumentError for a text that is not JSON, and std::bad_alloc.
KORVANEEXCHANGE_API JSONNode ParseDocument(std::string_view text);

/// The document in the file. Throws std::filesystem::filesystem_error for a file that cannot be read, and
/// what ParseDocument throws.
KORVANEEXCHANGE_API JSONNode ReadDocument(const std::filesystem::path& file);

}  // namespace korvane::exchange
