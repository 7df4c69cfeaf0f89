#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Field.h"
#include "Quantity.h"
#include "TextMatch.h"
#include "Units.h"
#include "host/document/ObjectWalk.h"
#include "host/system/Notes.h"

namespace host {

enum class Comparison { Equal, Fits, Less, LessOrEqual, Greater, GreaterOrEqual };

/// A condition that objects meet or do not: a field, a comparison (`=`, `!=`, `~`, `!~`, `<`, `<=`, `>`,
/// `>=`) and a value.
///
/// Texts are compared without regard to letter case; `~` takes a pattern, and so does `=` for a path. If both
/// sides of a metadata entry are numbers, the numbers are compared, in the unit of the condition: a value
/// whose unit cannot be converted to it does not meet the condition. A condition without a unit takes values
/// of any unit. A number is neither less nor greater than a text. An object with several values (files, the
/// parts of a list) meets a condition if one of them does. `!=` and `!~` are met where `=` and `~` are not,
/// so also by an object without the value.
class Condition {
public:
    /// The condition, or what is wrong with the text.
    static std::variant<Condition, std::string> Parse(std::string_view text);

    /// Whether the object meets it. Values that cannot be compared are noted.
    bool IsMet(const WalkedObject& walked, Units& units, Notes& notes) const;

    const Field& GetField() const { return field_; }

private:
    Condition(Field field, Comparison comparison, bool isNegated, std::string_view value);
    bool Holds(const FieldValue& value, Units& units, Notes& notes) const;
    bool HoldsOfNumbers(double left, double right, bool isExact) const;
    bool HoldsOfOrder(int order) const;
    bool HoldsOfTexts(const FieldValue& value, Notes& notes) const;
    bool IsOrdering() const { return comparison_ != Comparison::Equal && comparison_ != Comparison::Fits; }

    Field field_;
    Comparison comparison_;
    bool isNegated_;
    std::string folded_;
    std::optional<Quantity> quantity_;
    std::optional<Glob> glob_;
};

/// What conditions look like, for messages and help.
std::string ConditionForm();

/// The conditions of the texts, or what is wrong with the first bad one.
std::variant<std::vector<Condition>, std::string> ParseConditions(const std::vector<std::string>& texts);

}  // namespace host
