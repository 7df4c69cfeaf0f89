#include "SortKey.h"

#include <tuple>
#include <vector>

#include "Quantity.h"
#include "TextMatch.h"

namespace host {

SortKey::SortKey(const Field& field, const WalkedObject& walked) {
    const std::vector<FieldValue> values = ValuesOf(field, walked);
    if (values.empty()) {
        return;
    }
    rank_ = Rank::Text;
    text_ = FoldCase(values.front().text);
    const std::optional<Quantity> quantity =
        field.IsMeasured() ? ParseValue(values.front().text, values.front().unit) : std::nullopt;
    if (quantity) {
        rank_ = Rank::Number;
        number_ = quantity->value;
        unit_ = quantity->unit;
    }
}

std::optional<std::string> SortKey::Unit() const {
    return rank_ == Rank::Number ? std::optional(unit_) : std::nullopt;
}

void SortKey::ConvertTo(const std::string& unit, Units& units) {
    if (rank_ != Rank::Number) {
        return;
    }
    if (const std::optional<double> converted = units.Convert(number_, unit_, unit)) {
        number_ = *converted;
        unit_ = unit;
    } else {
        rank_ = Rank::Text;
        number_ = 0;
    }
}

bool SortKey::operator<(const SortKey& other) const {
    return rank_ == Rank::Number && other.rank_ == Rank::Number
               ? number_ < other.number_
               : std::tie(rank_, text_) < std::tie(other.rank_, other.text_);
}

}  // namespace host
