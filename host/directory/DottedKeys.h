#pragma once

#include <string_view>

#include "TextPlace.h"

namespace host {

/// Whether a key of the TOML text has more dots than anybody writes, and where its line is. Each of them
/// makes a table in a table, and tables in each other take stack when they are freed.
bool HasKeyWithManyDots(std::string_view toml, TextPlace& place);

}  // namespace host
