#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "UnitDatabase.h"

namespace host {

/// Converts between units: those of UDUNITS-2, where the program has it, and multiples of the byte. The
/// database is read when two units differ for the first time.
class Units {
public:
    /// The value in another unit; nothing if there is no way there, or the value has no end there, as 1e308
    /// km in millimetres. Every unit is itself, known or not.
    std::optional<double> Convert(double value, const std::string& from, const std::string& to);

private:
    const UnitConversion& Find(const std::string& from, const std::string& to);

    // The conversions go before the database does.
    std::unique_ptr<UnitDatabase> database_;
    std::map<std::pair<std::string, std::string>, UnitConversion> conversions_;
};

/// Of units with how often they occur, those that are tried for a common one: the most frequent ones. Rare
/// ones are not tried, so that thousands of different ones take no time without end.
std::vector<std::string> UsualUnits(const std::map<std::string, std::size_t>& counts);

/// The one of the units that most of them can be converted to, of these the one that occurs most often, and
/// of these the first. Empty if there are none.
std::string CommonUnit(const std::vector<std::string>& given, Units& units);

}  // namespace host
