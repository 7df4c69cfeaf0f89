#include "PageNumbers.h"

#include <korvaneexchange/Text.h>

#include <cmath>
#include <optional>

#include "host/document/FileFacts.h"
#include "host/query/Quantity.h"
#include "host/query/TextMatch.h"

namespace host {
namespace {

using korvane::exchange::ToUtf8;

std::optional<Quantity> NumberOf(const korvane::MetadataValues& entry) {
    return ParseValue(ToUtf8(entry.value), ToUtf8(UnitOf(entry)));
}

std::string KeyOf(const korvane::MetadataValues& entry) {
    return FoldCase(ToUtf8(entry.name));
}

}  // namespace

PageNumbers::PageNumbers(const PageContent& content) {
    for (const PageObject& shown : content.objects) {
        if (shown.file < 0) {
            Count(*shown.object);
        }
    }
    for (const PageFile& shown : content.files) {
        Count(*shown.file);
    }
    for (const auto& [name, counts] : counts_) {
        if (counts.size() > 1) {
            usual_.emplace(name, UsualUnits(counts));
        }
    }
    counts_.clear();
}

void PageNumbers::Count(const CAEObject& object) {
    for (const korvane::MetadataValues& entry : korvane::GetMetadata(object)) {
        if (const std::optional<Quantity> number = NumberOf(entry)) {
            ++counts_[KeyOf(entry)][number->unit];
        }
    }
}

std::vector<PageNumbers::Number> PageNumbers::Of(const korvane::MetadataValues& entry) {
    const std::optional<Quantity> number = NumberOf(entry);
    if (!number) {
        return {};
    }
    std::vector<Number> numbers = {{number->unit, number->value}};
    if (const auto found = usual_.find(KeyOf(entry)); found != usual_.end()) {
        for (const std::string& unit : found->second) {
            const std::optional<double> value = units_.Convert(number->value, number->unit, unit);
            // What has no end cannot be written.
            if (unit != number->unit && value && std::isfinite(*value)) {
                numbers.emplace_back(unit, *value);
            }
        }
    }
    const bool isPlain =
        ParseQuantity(ToUtf8(entry.value))->unit.empty() && number->unit == ToUtf8(UnitOf(entry));
    return numbers.size() == 1 && isPlain ? std::vector<Number>() : numbers;
}

}  // namespace host
