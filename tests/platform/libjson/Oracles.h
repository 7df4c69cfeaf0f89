#pragma once

#include <string>
#include <string_view>

/// What two packaged readers, RapidJSON and nlohmann-json, say about a text, and how libjson does against
/// them.
struct OracleVerdict {
    bool bothAccept = false;
    bool bothRefuse = false;
    /// Empty when libjson accepts what both accept, with the same values, and refuses what both refuse; the
    /// difference otherwise.
    std::string difference;
};

/// Reads the text with all three. The text units have to be UTF-8. Both oracles refuse some texts that the
/// grammar allows and that have a meaning here, which does not count as a difference: numbers that do not fit
/// into a double, bytes that are not UTF-8 and lone surrogates. Values are not compared where an object has a
/// name twice: the oracles keep different ones of its members.
OracleVerdict AskOracles(std::string_view text);
