#pragma once

#include <string_view>

#include "libjson.h"

namespace libjson {

/// The text that JSONNode::name returns, without a copy: valid until the node is changed, moved or destroyed,
/// even where other handles share its content, and not ended by a NUL.
LIBJSON_API std::string_view name_view(const JSONNode& node) noexcept;

/// The same for JSONNode::as_string.
LIBJSON_API std::string_view text_view(const JSONNode& node) noexcept;

}  // namespace libjson
