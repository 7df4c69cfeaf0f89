#include "Condition.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/system/NearestWord.h"
#include "host/system/Text.h"

namespace host {
namespace {

struct Operator {
    std::string_view text;
    Comparison comparison;
    bool isNegated = false;
};
/// Those of two characters first: each begins with one that is an operator itself, or with `!`.
constexpr Operator kOperators[] = {
    {"!=", Comparison::Equal, true}, {"!~", Comparison::Fits, true},
    {"<=", Comparison::LessOrEqual}, {">=", Comparison::GreaterOrEqual},
    {"=", Comparison::Equal},        {"~", Comparison::Fits},
    {"<", Comparison::Less},         {">", Comparison::Greater},
};

/// The operator that begins at the place.
const Operator* OperatorAt(std::string_view text, std::size_t place) {
    for (const Operator& known : kOperators) {
        if (text.substr(place).starts_with(known.text)) {
            return &known;
        }
    }
    return nullptr;
}

std::string Listed(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

/// What is wrong with a value that must be one of a few words; empty if nothing is.
std::string UnknownWord(std::string_view condition, std::string_view value, std::string_view what,
                        const std::vector<std::string>& words, std::size_t mostListed) {
    const std::string folded = FoldCase(value);
    if (std::ranges::any_of(words, [&](const std::string& word) { return FoldCase(word) == folded; })) {
        return {};
    }
    const std::string nearest = DidYouMean(NearestWord(value, words));
    const std::vector<std::string> listed(
        words.begin(), words.begin() + static_cast<long>(std::min(words.size(), mostListed)));
    return "the condition " + Quoted(condition) + " names no " + std::string(what) +
           (nearest.empty() ? "." : nearest) + " There are " + Listed(listed);
}

/// Whether a text is a number but for a comma in the place of the decimal point.
bool HasDecimalComma(std::string_view value) {
    const std::size_t comma = value.find(',');
    if (comma == std::string_view::npos || comma == 0) {
        return false;
    }
    std::string withPoint(value);
    withPoint[comma] = '.';
    return ParseQuantity(withPoint).has_value();
}

/// What is wrong with two signs in a row.
std::string SignComplaint(std::string_view condition, std::string_view signs, std::string_view value) {
    return "the condition " + Quoted(condition) + " has the sign " + Quoted(signs) +
           ", which is none of = != ~ !~ < <= > >=; a value that begins with " + Quoted(value.substr(0, 1)) +
           " has a blank in front of it";
}

/// What is wrong with what stands behind `<`, `<=`, `>` or `>=`; empty if nothing is.
std::string OrderComplaint(std::string_view text, std::string_view value) {
    if (value.empty()) {
        return "the condition " + Quoted(text) + " has no value to compare with";
    }
    if (HasDecimalComma(value)) {
        return "the condition " + Quoted(text) + " has a comma in its number; the decimal sign is a point";
    }
    return {};
}

/// What is wrong with a condition whose parts were found; empty if nothing is.
std::string Complaint(std::string_view text, const Field& field, Comparison comparison,
                      std::string_view value) {
    if (field.IsMeasured() && comparison != Comparison::Equal && comparison != Comparison::Fits) {
        return OrderComplaint(text, value);
    }
    if (field.kind == FieldKind::Has && comparison != Comparison::Equal) {
        return "the condition " + Quoted(text) + " can only use = or !=, like has=mesh or has!=cad";
    }
    if (field.kind == FieldKind::Has) {
        return UnknownWord(text, value, "file, type of file or key", HasWords(), HasWords().size());
    }
    if (field.kind == FieldKind::Kind && comparison == Comparison::Equal) {
        // The names of the format are long, and mean the same.
        const std::vector<std::string> words = KindWords();
        const auto study = std::ranges::find(words, "Study");
        return UnknownWord(text, value, "kind of object", words,
                           static_cast<std::size_t>(study - words.begin()) + 1);
    }
    return {};
}

/// What stands between the separators, without blanks around it.
std::vector<std::string> PartsOf(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        parts.emplace_back(Trim(text.substr(begin, end - begin)));
        begin = end + 1;
    }
    return parts;
}

/// The values, and for a metadata entry that is a list the parts between its commas, too. Solvers that share
/// a syntax are alternatives with a slash between them, each of which is a part.
std::vector<FieldValue> ValuesWithParts(const Field& field, const WalkedObject& walked) {
    std::vector<FieldValue> values = ValuesOf(field, walked);
    if (field.kind != FieldKind::Metadata || values.empty()) {
        return values;
    }
    const std::string whole = values.front().text;
    const auto add = [&](const std::string& part) {
        if (part != whole) {
            values.push_back({part});
        }
    };
    const bool hasAlternatives = FoldCase(field.name) == FoldCase("Solver");
    for (const std::string& part : PartsOf(whole, ',')) {
        add(part);
        if (hasAlternatives) {
            std::ranges::for_each(PartsOf(part, '/'), add);
        }
    }
    return values;
}

/// Conversions are not exact.
bool IsNear(double left, double right) {
    constexpr double kTolerance = 1e-9;
    return std::abs(left - right) <= kTolerance * std::max(std::abs(left), std::abs(right));
}

}  // namespace

std::string ConditionForm() {
    return "a condition is a name, one of = != ~ !~ < <= > >=, and a value: kind=Part, name~bracket*, "
           "'Mass>2 kg' (in quotes, because the shell takes > for itself)";
}

Condition::Condition(Field field, Comparison comparison, bool isNegated, std::string_view value)
    : field_(std::move(field)),
      comparison_(comparison),
      isNegated_(isNegated),
      folded_(FoldCase(value)),
      quantity_(field_.IsMeasured() ? ParseQuantity(value) : std::nullopt) {
    const bool isPath = field_.kind == FieldKind::Path;
    if (comparison == Comparison::Fits || (isPath && comparison == Comparison::Equal)) {
        glob_.emplace(value, isPath ? GlobStyle::Path : GlobStyle::Name);
    }
}

std::variant<Condition, std::string> Condition::Parse(std::string_view text) {
    for (std::size_t place = 0; place < text.size(); ++place) {
        const Operator* const found = OperatorAt(text, place);
        if (found == nullptr) {
            continue;
        }
        const std::string_view name = Trim(text.substr(0, place));
        const std::string_view rest = text.substr(place + found->text.size());
        const std::string_view value = Trim(rest);
        if (name.empty()) {
            break;
        }
        if (rest.find_first_of("=~<>") == 0) {
            return SignComplaint(text, text.substr(place, found->text.size() + 1), value);
        }
        Field field = FieldOf(name);
        if (std::string complaint = Complaint(text, field, found->comparison, value); !complaint.empty()) {
            return complaint;
        }
        return Condition(std::move(field), found->comparison, found->isNegated, value);
    }
    return Quoted(text) + " is not a condition; " + ConditionForm();
}

bool Condition::HoldsOfOrder(int order) const {
    switch (comparison_) {
        case Comparison::Equal:
        case Comparison::Fits:
            return order == 0;
        case Comparison::Less:
            return order < 0;
        case Comparison::LessOrEqual:
            return order <= 0;
        case Comparison::Greater:
            return order > 0;
        case Comparison::GreaterOrEqual:
            return order >= 0;
    }
    return false;
}

bool Condition::HoldsOfNumbers(double left, double right, bool isExact) const {
    const bool isEqual = isExact ? left == right : IsNear(left, right);
    return HoldsOfOrder(isEqual ? 0 : left < right ? -1 : 1);
}

bool Condition::HoldsOfTexts(const FieldValue& value, Notes& notes) const {
    if (IsOrdering() && field_.IsMeasured()) {
        if (quantity_) {
            notes.AddQuoted(
                "values of " + Quoted(field_.name) + " that are not numbers, as that of the condition is",
                value.text);
            return false;
        }
        if (ParseValue(value.text, value.unit)) {
            notes.AddQuoted(
                "values of " + Quoted(field_.name) + " that are numbers, as that of the condition is not",
                value.text);
            return false;
        }
    }
    return HoldsOfOrder(FoldCase(value.text).compare(folded_));
}

bool Condition::Holds(const FieldValue& value, Units& units, Notes& notes) const {
    if (glob_) {
        return glob_->Fits(value.text);
    }
    const std::optional<Quantity> number = quantity_ ? ParseValue(value.text, value.unit) : std::nullopt;
    if (!number) {
        return HoldsOfTexts(value, notes);
    }
    if (quantity_->unit.empty() || quantity_->unit == number->unit) {
        return HoldsOfNumbers(number->value, quantity_->value, true);
    }
    const std::optional<double> converted = units.Convert(number->value, number->unit, quantity_->unit);
    if (!converted) {
        const std::string kind = "values of " + Quoted(field_.name) + " whose unit cannot be converted to " +
                                 Quoted(quantity_->unit);
        if (number->unit.empty()) {
            notes.AddQuoted(kind, "without a unit");
        } else {
            notes.AddName(kind, number->unit);
        }
        return false;
    }
    return HoldsOfNumbers(*converted, quantity_->value, false);
}

bool Condition::IsMet(const WalkedObject& walked, Units& units, Notes& notes) const {
    const bool isInParts = !IsOrdering() && !quantity_;
    const std::vector<FieldValue> values =
        isInParts ? ValuesWithParts(field_, walked) : ValuesOf(field_, walked);
    const bool isHeld =
        std::ranges::any_of(values, [&](const FieldValue& value) { return Holds(value, units, notes); });
    return isHeld != isNegated_;
}

std::variant<std::vector<Condition>, std::string> ParseConditions(const std::vector<std::string>& texts) {
    std::vector<Condition> conditions;
    for (const std::string& text : texts) {
        std::variant<Condition, std::string> parsed = Condition::Parse(text);
        if (const auto* const complaint = std::get_if<std::string>(&parsed)) {
            return *complaint;
        }
        conditions.push_back(std::get<Condition>(std::move(parsed)));
    }
    return conditions;
}

}  // namespace host
