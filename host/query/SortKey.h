#pragma once

#include <optional>
#include <string>

#include "Field.h"
#include "Units.h"
#include "host/document/ObjectWalk.h"

namespace host {

/// What an object is sorted by: numbers in one unit come first, then texts by their letters without regard to
/// case, then what has no value.
class SortKey {
public:
    SortKey(const Field& field, const WalkedObject& walked);

    /// The unit of the number; nothing if it is not a number.
    std::optional<std::string> Unit() const;
    /// Converts the number. One that cannot be converted counts as a text.
    void ConvertTo(const std::string& unit, Units& units);

    bool operator<(const SortKey& other) const;

private:
    enum class Rank { Number, Text, Nothing };
    Rank rank_ = Rank::Nothing;
    double number_ = 0;
    std::string unit_;
    std::string text_;
};

}  // namespace host
