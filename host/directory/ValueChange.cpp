#include "ValueChange.h"

#include <korvaneexchange/PrintableText.h>

#include <algorithm>
#include <cstddef>

#include "host/document/FileFacts.h"
#include "host/system/Text.h"

namespace host {
namespace {

using korvane::exchange::CutUtf8;
using korvane::exchange::Excerpt;
using korvane::exchange::Printable;
using Value = ValueChange::Value;

struct ValueNames {
    Value value;
    std::string_view word;
    /// In messages, in front of the name that it has, if it has one.
    std::string_view title;
};
constexpr ValueNames kValueNames[] = {
    {Value::Name, "name", "the name"}, {Value::Place, "place", "the place"},
    {Value::Metadata, "metadata", ""}, {Value::Unit, "unit", "the unit of"},
    {Value::File, "file", "the file"}, {Value::FileOrder, "fileOrder", "the order of the files"},
    {Value::Type, "type", "the type"}, {Value::Format, "format", "the format"},
    {Value::Date, "date", "the date"},
};

const ValueNames& NamesOf(Value value) {
    return *std::ranges::find(kValueNames, value, &ValueNames::value);
}

std::string TitleOf(const ValueChange& change) {
    std::string title(NamesOf(change.value).title);
    if (!change.name.empty()) {
        title += (title.empty() ? "" : " ") + Excerpt(change.name);
    }
    return title;
}

/// The values before and after; one without a unit is a text.
ShownChange ShownValuesOf(const ValueChange& change) {
    const std::string from = change.from.value_or("");
    const std::string to = change.to.value_or("");
    if (change.unit.empty()) {
        return {Excerpt(from), Excerpt(to)};
    }
    constexpr std::size_t kMostBytes = 80;
    ShownChange shown =
        ShownChangeOf(CutUtf8(from, kMostBytes), CutUtf8(to, kMostBytes), CutUtf8(change.unit, kMostBytes));
    return {Printable(shown.from), Printable(shown.to)};
}

}  // namespace

std::string_view WordOf(Value value) {
    return NamesOf(value).word;
}

std::string SentenceOf(const ValueChange& change, const std::string& object) {
    const std::string subject = TitleOf(change) + " of " + object;
    if (!change.from && !change.to) {
        return subject + " changes";
    }
    const ShownChange shown = ShownValuesOf(change);
    if (!change.from) {
        return subject + " is new: " + shown.to;
    }
    if (!change.to) {
        return subject + " is gone: " + shown.from;
    }
    return subject + " changes from " + shown.from + " to " + shown.to;
}

}  // namespace host
