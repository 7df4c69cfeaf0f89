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

/// Reads the text with all three, with UTF-8 as text units (the caller sets them).
/// Both oracles refuse what is within the grammar and has its meaning here, which is no difference then:
/// numbers that no double holds, bytes that are no UTF-8 and lone surrogates. Values are not compared where
/// an object has a name twice: the oracles keep different ones of its members.
OracleVerdict AskOracles(std::string_view text);
