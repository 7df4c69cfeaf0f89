#pragma once

#include <string>
#include <vector>

#include "DescriptionProblem.h"
#include "Toml.h"

namespace host {

TextPlace PlaceOf(const toml::source_position& position);

/// The table of a text without the lines that are not TOML, each of which becomes a problem with what may
/// have been meant. Throws toml::parse_error if there are many, or if the rest may mean something else
/// without such a line; std::logic_error for damage that the parser itself does not expect.
toml::table ParseLines(std::string text, std::vector<DescriptionProblem>& problems);

}  // namespace host
