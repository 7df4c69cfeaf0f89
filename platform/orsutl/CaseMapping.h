#pragma once

namespace orsutl::detail {

/// The code point's simple upper-case mapping by Unicode; the code point itself where there is none.
char32_t ToUpper(char32_t codePoint) noexcept;

/// The code point's simple case folding by Unicode; the code point itself where there is none.
char32_t FoldCase(char32_t codePoint) noexcept;

}  // namespace orsutl::detail
