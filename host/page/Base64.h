#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// A text of this many bytes, or of a multiple, is written without padding, so that pieces of it can be
/// written one after the other.
inline constexpr std::size_t kBase64Unit = 3;

/// The bytes in base64, with padding at the end.
std::string Base64(std::string_view bytes);

}  // namespace host
