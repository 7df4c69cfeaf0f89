#pragma once

#include <CAETypes.h>

#include <string_view>

namespace host {

/// Tells text from binary data by the first bytes of a file: CAE_FORMAT_ASCII or CAE_FORMAT_BINARY.
///
/// Text is what a solver or an editor reads as text in any 8-bit encoding, UTF-8 and Latin-1 included: bytes
/// without control characters other than white space, backspace, escape and the end mark of old editors
/// (0x1A). An empty file is text. UTF-16 and UTF-32 are binary, with or without a byte order mark: no solver
/// reads them, and a transfer that converts line ends would damage them. PDF is binary too, although it
/// begins like text.
_tagFileFormat DetectFormat(std::string_view head);

}  // namespace host
