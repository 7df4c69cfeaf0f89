// Reads any text as a condition of `find` and sees which objects meet it. The lines of the input are: a
// condition, a field, two values to compare it with, and objects, each with name, value and unit parted by
// tabs. What conditions of the field and the values say is compared with a second reading, and with what must
// hold between them.

#include <OuString.h>
#include <korvaneexchange/Text.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "Expect.h"
#include "host/document/ObjectWalk.h"
#include "host/query/Condition.h"
#include "host/query/Field.h"
#include "host/query/ObjectTable.h"
#include "host/query/Quantity.h"
#include "host/query/SortKey.h"
#include "host/query/TextMatch.h"
#include "host/query/Units.h"
#include "host/system/Notes.h"
#include "host/system/Text.h"
#include "support/ModelBuilders.h"

namespace {

using korvane::exchange::FromUtf8;

constexpr std::size_t kMostObjects = 10;
/// The second reading of patterns fills a table of pattern and text.
constexpr std::size_t kLongest = 200;

std::string_view TakeUntil(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

/// Goes through a pattern and a text at once and tries everything that a star may stand for.
class SecondReading {
public:
    SecondReading(std::string_view pattern, host::GlobStyle style, std::string_view text)
        : pattern_(CharactersOf(pattern)),
          text_(CharactersOf(text)),
          isPath_(style == host::GlobStyle::Path),
          known_((pattern_.size() + 1) * (text_.size() + 1), kUnknown) {}

    bool Fits() { return FitsFrom(0, 0); }

private:
    static constexpr char kUnknown = 2;

    static std::u32string CharactersOf(std::string_view utf8) {
        const OuString text = FromUtf8(host::FoldCase(utf8));
        const std::wstring_view units(text.GetBuffer(), static_cast<std::size_t>(text.GetLength()));
        return {units.begin(), units.end()};
    }

    bool FitsFrom(std::size_t place, std::size_t from) {
        const std::size_t index = place * (text_.size() + 1) + from;
        if (known_[index] == kUnknown) {
            const bool fits = Find(place, from);
            known_[index] = fits ? 1 : 0;
        }
        return known_[index] == 1;
    }

    bool FitsStars(std::size_t place, std::size_t from) {
        const std::size_t end = std::min(pattern_.find_first_not_of(U'*', place), pattern_.size());
        const bool isWithinName = isPath_ && end - place == 1;
        const bool isBeforeName = isPath_ && !isWithinName && pattern_.substr(end).starts_with(U'/');
        const bool isName = from == 0 || text_[from - 1] == '/';
        return (isBeforeName ? isName && FitsFrom(end + 1, from) : FitsFrom(end, from)) ||
               (from < text_.size() && !(isWithinName && text_[from] == '/') && FitsFrom(place, from + 1));
    }

    /// What a bracket that is closed at `end` says about a character.
    bool SetHas(std::u32string_view set, char32_t character) const {
        const bool isNegative = set.starts_with(U'!') || set.starts_with(U'^');
        set.remove_prefix(isNegative ? 1 : 0);
        bool has = false;
        while (!set.empty()) {
            const std::size_t length = set.size() >= 3 && set[1] == '-' ? 3 : 1;
            has = has || (set.front() <= character && character <= set[length - 1]);
            set.remove_prefix(length);
        }
        return has != isNegative;
    }

    bool Find(std::size_t place, std::size_t from) {
        if (place == pattern_.size()) {
            return from == text_.size();
        }
        if (pattern_[place] == '*') {
            return FitsStars(place, from);
        }
        if (from == text_.size()) {
            return false;
        }
        const bool mayBeAny = !isPath_ || text_[from] != '/';
        if (pattern_[place] == '?') {
            return mayBeAny && FitsFrom(place + 1, from + 1);
        }
        const std::u32string_view rest = std::u32string_view(pattern_).substr(place);
        if (rest.front() == '[') {
            const bool isNegative = rest.size() > 1 && (rest[1] == '!' || rest[1] == '^');
            const std::size_t end = rest.find(U']', isNegative ? 3 : 2);
            if (end != std::u32string_view::npos) {
                return mayBeAny && SetHas(rest.substr(1, end - 1), text_[from]) &&
                       FitsFrom(place + end + 1, from + 1);
            }
        }
        return rest.front() == text_[from] && FitsFrom(place + 1, from + 1);
    }

    std::u32string pattern_;
    std::u32string text_;
    bool isPath_;
    std::vector<char> known_;
};

void ExpectQuantity(std::string_view text) {
    const std::optional<host::Quantity> quantity = host::ParseQuantity(text);
    if (!quantity) {
        return;
    }
    Expect(std::isfinite(quantity->value), "a number has an end");
    const std::string trimmed(host::Trim(text));
    Expect(std::strtod(trimmed.c_str(), nullptr) == quantity->value || trimmed.find_first_of("xX") == 1 ||
               trimmed.find_first_of("xX") == 2,
           "a number is the one that C reads");
    Expect(quantity->unit == host::Trim(quantity->unit), "a unit has no blanks around it");
    const std::optional<host::Quantity> again =
        host::ParseQuantity(host::FormatNumber(quantity->value) + " " + quantity->unit);
    Expect(again && again->value == quantity->value && again->unit == quantity->unit,
           "a number with its unit reads back");
}

std::optional<host::Condition> ParseCondition(const std::string& text) {
    auto parsed = host::Condition::Parse(text);
    return std::holds_alternative<std::string>(parsed)
               ? std::nullopt
               : std::optional(std::get<host::Condition>(std::move(parsed)));
}

std::vector<std::string_view> PartsOf(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    std::size_t begin = 0;
    for (std::size_t place = 0; place <= text.size(); ++place) {
        if (place == text.size() || text[place] == separator) {
            parts.push_back(host::Trim(text.substr(begin, place - begin)));
            begin = place + 1;
        }
    }
    return parts;
}

/// All comparisons of one field with one value. Not every field takes all of them.
class Comparisons {
public:
    /// Nothing if the texts would make other conditions.
    static std::optional<Comparisons> Parse(std::string_view field, std::string_view value) {
        if (host::Trim(field).empty() || field.find_first_of("!=~<>") != std::string_view::npos) {
            return std::nullopt;
        }
        // Two signs in a row are none.
        const std::string text = " " + std::string(value);
        Comparisons comparisons(host::FieldOf(host::Trim(field)), host::Trim(value));
        const std::string name(field);
        comparisons.equal_ = ParseCondition(name + "=" + text);
        comparisons.unequal_ = ParseCondition(name + "!=" + text);
        comparisons.fits_ = ParseCondition(name + "~" + text);
        comparisons.unfit_ = ParseCondition(name + "!~" + text);
        comparisons.less_ = ParseCondition(name + "<" + text);
        comparisons.lessOrEqual_ = ParseCondition(name + "<=" + text);
        comparisons.greater_ = ParseCondition(name + ">" + text);
        comparisons.greaterOrEqual_ = ParseCondition(name + ">=" + text);
        Expect(comparisons.equal_.has_value() == comparisons.unequal_.has_value() &&
                   comparisons.fits_.has_value() == comparisons.unfit_.has_value() &&
                   comparisons.less_.has_value() == comparisons.greaterOrEqual_.has_value(),
               "opposites take the same values");
        return comparisons;
    }

    bool Equal(const host::WalkedObject& walked, host::Units& units) const {
        return equal_ && IsMet(*equal_, walked, units);
    }
    bool Less(const host::WalkedObject& walked, host::Units& units) const {
        return less_ && IsMet(*less_, walked, units);
    }

    void ExpectAgreement(const host::WalkedObject& walked, host::Units& units) const {
        const std::vector<host::FieldValue> values = host::ValuesOf(field_, walked);
        const bool isLong = std::ranges::any_of(
            values, [](const host::FieldValue& one) { return one.text.size() > kLongest; });
        if (isLong || value_.size() > kLongest) {
            return;
        }
        if (equal_) {
            Expect(Equal(walked, units) != IsMet(*unequal_, walked, units), "= and != are opposites");
            Expect(Equal(walked, units) == IsEqual(values, units), "what is equal is read alike twice");
        }
        if (fits_) {
            Expect(IsMet(*fits_, walked, units) != IsMet(*unfit_, walked, units), "~ and !~ are opposites");
            Expect(IsMet(*fits_, walked, units) == Fits(values), "a pattern is read alike twice");
        }
        if (less_) {
            const auto holds = [&](auto isWanted) {
                return std::ranges::any_of(values, [&](const host::FieldValue& one) {
                    const std::optional<int> order = OrderOf(one, units);
                    return order && isWanted(*order);
                });
            };
            Expect(IsMet(*less_, walked, units) == holds([](int order) { return order < 0; }) &&
                       IsMet(*lessOrEqual_, walked, units) == holds([](int order) { return order <= 0; }) &&
                       IsMet(*greater_, walked, units) == holds([](int order) { return order > 0; }) &&
                       IsMet(*greaterOrEqual_, walked, units) == holds([](int order) { return order >= 0; }),
                   "numbers are compared in the unit of the condition, texts by their letters");
        }
    }

private:
    Comparisons(host::Field field, std::string_view value) : field_(std::move(field)), value_(value) {
        if (field_.IsMeasured()) {
            quantity_ = host::ParseQuantity(value_);
        }
    }

    static bool IsMet(const host::Condition& condition, const host::WalkedObject& walked,
                      host::Units& units) {
        host::Notes notes;
        return condition.IsMet(walked, units, notes);
    }

    /// The texts of the values, and of the parts of lists where the value of the condition is not a number.
    std::vector<std::string> TextsOf(const std::vector<host::FieldValue>& values) const {
        std::vector<std::string> texts;
        const bool isSolver = host::FoldCase(field_.name) == host::FoldCase("Solver");
        for (const host::FieldValue& one : values) {
            texts.push_back(one.text);
            if (field_.kind != host::FieldKind::Metadata || quantity_) {
                continue;
            }
            for (const std::string_view part : PartsOf(one.text, ',')) {
                texts.emplace_back(part);
                for (const std::string_view solver : PartsOf(part, '/')) {
                    texts.emplace_back(isSolver ? solver : part);
                }
            }
        }
        return texts;
    }
    bool Fits(const std::vector<host::FieldValue>& values) const {
        const host::GlobStyle style =
            field_.kind == host::FieldKind::Path ? host::GlobStyle::Path : host::GlobStyle::Name;
        return std::ranges::any_of(TextsOf(values), [&](const std::string& text) {
            return SecondReading(value_, style, text).Fits();
        });
    }
    bool IsEqual(const std::vector<host::FieldValue>& values, host::Units& units) const {
        if (field_.kind == host::FieldKind::Path) {
            return Fits(values);
        }
        if (quantity_) {
            return std::ranges::any_of(values, [&](const host::FieldValue& one) {
                return host::ParseValue(one.text, one.unit)
                           ? OrderOf(one, units) == 0
                           : host::FoldCase(one.text) == host::FoldCase(value_);
            });
        }
        return std::ranges::any_of(TextsOf(values), [&](const std::string& text) {
            return host::FoldCase(text) == host::FoldCase(value_);
        });
    }
    /// -1, 0 or 1; nothing if the two cannot be compared.
    std::optional<int> OrderOf(const host::FieldValue& one, host::Units& units) const {
        const std::optional<host::Quantity> left =
            field_.IsMeasured() ? host::ParseValue(one.text, one.unit) : std::nullopt;
        if (left.has_value() != quantity_.has_value()) {
            return std::nullopt;
        }
        if (!left) {
            const int order = host::FoldCase(one.text).compare(host::FoldCase(value_));
            return order < 0 ? -1 : order > 0 ? 1 : 0;
        }
        double number = left->value;
        double tolerance = 0;
        if (!quantity_->unit.empty() && left->unit != quantity_->unit) {
            const std::optional<double> converted = units.Convert(number, left->unit, quantity_->unit);
            if (!converted) {
                return std::nullopt;
            }
            Expect(std::isfinite(*converted), "a number that was converted has an end");
            number = *converted;
            tolerance = 1e-9 * std::max(std::abs(number), std::abs(quantity_->value));
        }
        const double distance = number - quantity_->value;
        return std::abs(distance) <= tolerance ? 0 : distance < 0 ? -1 : 1;
    }

    host::Field field_;
    std::string value_;
    std::optional<host::Quantity> quantity_;
    std::optional<host::Condition> equal_;
    std::optional<host::Condition> unequal_;
    std::optional<host::Condition> fits_;
    std::optional<host::Condition> unfit_;
    std::optional<host::Condition> less_;
    std::optional<host::Condition> lessOrEqual_;
    std::optional<host::Condition> greater_;
    std::optional<host::Condition> greaterOrEqual_;
};

/// The units, read again from time to time, since conversions are kept.
host::Units& SharedUnits() {
    constexpr int kMostRuns = 2000;
    static std::unique_ptr<host::Units> units;
    static int runs = 0;
    if (units == nullptr || ++runs % kMostRuns == 0) {
        units = std::make_unique<host::Units>();
    }
    return *units;
}

/// Two values are not both less than each other, and what equals both is where both are.
void ExpectOrder(std::string_view value, std::string_view other, host::Units& units) {
    const std::optional<host::Quantity> left = host::ParseQuantity(value);
    const std::optional<host::Quantity> right = host::ParseQuantity(other);
    const auto toLeft = Comparisons::Parse("Mass", value);
    const auto toRight = Comparisons::Parse("Mass", other);
    if (!left || !right || !toLeft || !toRight) {
        return;
    }
    // A frequency becomes less when the duration becomes more.
    const std::optional<double> one = units.Convert(1, left->unit, right->unit);
    const std::optional<double> two = units.Convert(2, left->unit, right->unit);
    TestProject project;
    CAEObject& first = project.Add(CAE_PART, L"first");
    CAEObject& second = project.Add(CAE_PART, L"second");
    SetMetadata(first, L"Mass", FromUtf8(value));
    SetMetadata(second, L"Mass", FromUtf8(other));
    bool isFirstLess = false;
    bool isSecondLess = false;
    host::WalkObjects(*project, [&](const host::WalkedObject& walked) {
        isFirstLess = isFirstLess || (&walked.object == &first && toRight->Less(walked, units));
        isSecondLess = isSecondLess || (&walked.object == &second && toLeft->Less(walked, units));
        if (toLeft->Equal(walked, units) && toRight->Equal(walked, units) && left->unit == right->unit) {
            const double largest = std::max(std::abs(left->value), std::abs(right->value));
            Expect(std::abs(left->value - right->value) <= 3e-9 * largest, "a value is equal to one number");
        }
    });
    Expect(!(isFirstLess && isSecondLess) || !one || !two || *one > *two, "of two values only one is less");
}

/// The cells of comma-separated values, line by line.
std::vector<std::size_t> CountCells(std::string_view csv) {
    std::vector<std::size_t> counts;
    std::size_t cells = 1;
    bool isQuoted = false;
    for (std::size_t place = 0; place < csv.size(); ++place) {
        isQuoted = isQuoted != (csv[place] == '"');
        cells += !isQuoted && csv[place] == ',' ? 1 : 0;
        if (!isQuoted && csv.substr(place).starts_with("\r\n")) {
            counts.push_back(cells);
            cells = 1;
            ++place;
        }
    }
    Expect(!isQuoted && cells == 1, "the last line has an end");
    return counts;
}

void ExpectTable(CAEProject& project, const host::Field& field) {
    const host::ObjectTable table({field});
    std::vector<host::ObjectTable::Row> forPeople;
    std::vector<host::ObjectTable::Row> forPrograms;
    host::WalkObjects(project, [&](const host::WalkedObject& walked) {
        forPeople.push_back(table.RowForPeople(walked));
        forPrograms.push_back(table.RowForPrograms(walked));
    });
    const std::string lines = host::ObjectTable::Lines(forPeople);
    Expect(static_cast<std::size_t>(std::ranges::count(lines, '\n')) == forPeople.size(),
           "every object has one line");
    const std::vector<std::size_t> cells = CountCells(table.Csv(forPrograms));
    Expect(cells.size() == forPrograms.size() + 1 &&
               std::ranges::all_of(cells, [&](std::size_t count) { return count == cells.front(); }),
           "every object has one record with all columns");
}

void ExpectSorted(CAEProject& project, const host::Field& field, host::Units& units) {
    std::vector<host::SortKey> keys;
    std::vector<std::string> given;
    host::WalkObjects(project, [&](const host::WalkedObject& walked) {
        keys.emplace_back(field, walked);
        if (const std::optional<std::string> unit = keys.back().Unit()) {
            given.push_back(*unit);
        }
    });
    const std::string common = host::CommonUnit(given, units);
    for (host::SortKey& key : keys) {
        key.ConvertTo(common, units);
    }
    std::ranges::stable_sort(keys, [](const auto& left, const auto& right) { return left < right; });
    for (std::size_t left = 0; left < keys.size(); ++left) {
        for (std::size_t right = left; right < keys.size(); ++right) {
            Expect(!(keys[right] < keys[left]), "keys have an order");
        }
    }
}

void AddObjects(TestProject& project, const host::Field& field, std::string_view text) {
    CAEObject* above = &*project;
    for (std::size_t count = 0; count < kMostObjects && !text.empty(); ++count) {
        std::string_view line = TakeUntil(text, '\n');
        const OuString name = FromUtf8(TakeUntil(line, '\t'));
        const std::string_view value = TakeUntil(line, '\t');
        CAEObject& added = project.Add(*above, kObjectKinds[count % std::size(kObjectKinds)], name);
        SetMetadata(added, field.entry, FromUtf8(value), FromUtf8(line));
        if (count % 3 == 1 && dynamic_cast<CAEPart*>(&added) == nullptr) {
            added.setDBKey(FromUtf8(value));
        }
        above = count % 2 == 0 ? &added : &*project;
    }
    project.AddFile(*project, field.entry, CAE_FILE_CAD);
}

void ExpectParsed(std::string_view text, TestProject& project, host::Units& units) {
    const auto parsed = host::Condition::Parse(text);
    if (const auto* const complaint = std::get_if<std::string>(&parsed)) {
        Expect(!complaint->empty(), "a complaint says what is wrong");
        return;
    }
    host::WalkObjects(*project, [&](const host::WalkedObject& walked) {
        const auto& condition = std::get<host::Condition>(parsed);
        host::Notes notes;
        const bool isMet = condition.IsMet(walked, units, notes);
        Expect(isMet == condition.IsMet(walked, units, notes), "a condition says the same twice");
        Expect(!host::ShownText(condition.GetField(), walked).empty() ||
                   host::ExactText(condition.GetField(), walked).empty(),
               "what programs see is shown to people");
    });
}

}  // namespace

/// UDUNITS forgets some bytes of a text that is not a unit.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() {
    return "leak:utlex";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    // Neither command lines nor texts of objects have NULs.
    text = text.substr(0, text.find('\0'));
    const std::string_view condition = TakeUntil(text, '\n');
    const std::string_view name = TakeUntil(text, '\n');
    const std::string_view value = TakeUntil(text, '\n');
    const std::string_view other = TakeUntil(text, '\n');
    const host::Field field = host::FieldOf(host::Trim(name));
    host::Units& units = SharedUnits();
    TestProject project;
    AddObjects(project, field, text);
    ExpectParsed(condition, project, units);
    ExpectQuantity(value);
    ExpectQuantity(other);
    ExpectOrder(value, other, units);
    for (const std::string_view one : {value, other}) {
        if (const auto comparisons = Comparisons::Parse(name, one)) {
            host::WalkObjects(*project, [&](const host::WalkedObject& walked) {
                comparisons->ExpectAgreement(walked, units);
            });
        }
    }
    ExpectTable(*project, field);
    ExpectSorted(*project, field, units);
    return 0;
}
