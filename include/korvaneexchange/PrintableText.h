#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Export.h"

namespace korvane::exchange {

/// The text for a terminal or a message, in UTF-8 and on one line. Control characters, bytes that are not
/// UTF-8, and characters that change the direction of the text are written as escapes (`\n`, `\xE9`,
/// `\u202E`), so that no name can disguise itself or disturb a terminal.
KORVANEEXCHANGE_API std::string Printable(std::string_view utf8);

/// The beginning of the text: at most that many bytes, without a part of a character at its end.
KORVANEEXCHANGE_API std::string_view CutUtf8(std::string_view utf8, std::size_t most);

/// The printable text in quotation marks, cut to 80 bytes.
KORVANEEXCHANGE_API std::string Excerpt(std::string_view utf8);

}  // namespace korvane::exchange
