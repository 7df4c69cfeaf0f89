#pragma once

#include <string>
#include <string_view>

namespace host {

/// The units that a comment or a title says without a doubt: a list behind the word "Units", or at least
/// three units in parentheses. `** Units: N, mm, s` and `Bracket (mm, N, t, s)` do; the list is returned with
/// a comma and a blank between its units. Empty for any other text.
std::string StatedUnits(std::string_view text);

/// The list if nothing but units is in it, and as many as `fewest`; otherwise empty.
std::string UnitList(std::string_view list, std::size_t fewest);

}  // namespace host
