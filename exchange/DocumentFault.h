#pragma once

#include <korvaneexchange/ParseDocument.h>

#include <stdexcept>
#include <string_view>

namespace korvane::exchange {

/// What is wrong with the text that the JSON library refused with the error. One that says no more than its
/// message has the place in that, or none at all.
DocumentError FaultOf(const std::invalid_argument& error, std::string_view text);

/// The same from nothing but the message of the error.
DocumentError FaultOfMessage(std::string_view message, std::string_view text);

}  // namespace korvane::exchange
