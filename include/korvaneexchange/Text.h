#pragma once

// The suite's text. Where its header has another name, whoever includes this one includes that first.
#if __has_include(<OuString.h>)
#include <OuString.h>
#endif

#include <string>
#include <string_view>

#include "Export.h"

class OuString;

namespace korvane::exchange {

/// The text in UTF-8, whole, NUL characters included, whatever the ANSI code page is. Lone surrogates U+DC80
/// to U+DCFF, which stand for bytes that are no text, become these bytes again. Throws std::bad_alloc.
KORVANEEXCHANGE_API std::string ToUtf8(const OuString& text);

/// The text of UTF-8, up to its first NUL, where texts of the object model end. Each byte that is no UTF-8
/// becomes a lone surrogate U+DC80 to U+DCFF, so that ToUtf8 gives the same bytes again. Throws
/// std::bad_alloc.
KORVANEEXCHANGE_API OuString FromUtf8(std::string_view text);

}  // namespace korvane::exchange
