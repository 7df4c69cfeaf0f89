#include <korvaneexchange/PrintableText.h>
#include <korvaneexchange/Text.h>

#include "Comparison.h"
#include "NodeText.h"
#include "format/MemberNames.h"

namespace member = format::member;

namespace korvane::exchange {
namespace {

/// How many bytes of a value with a unit are shown.
constexpr std::size_t kLongestValue = 80;

}  // namespace

void Comparison::CompareMetadata(const Pair& pair) {
    const std::size_t begin = first_.tree.nodes[pair.first].metadata;
    const std::size_t end = first_.tree.EndOfMetadata(pair.first);
    const std::vector<CarriedEntry>& entries = first_.tree.metadata;
    for (std::size_t entry = begin; entry < end; ++entry) {
        entryOfName_[entries[entry].comparedName] = entry;
    }
    std::vector<bool> isFound(end - begin, false);
    std::size_t last = begin;
    bool isInOrder = true;
    for (std::size_t entry = second_.tree.nodes[pair.second].metadata;
         entry < second_.tree.EndOfMetadata(pair.second); ++entry) {
        const CarriedEntry& second = second_.tree.metadata[entry];
        const std::size_t partner = entryOfName_[second.comparedName];
        // The number may be that of an entry of another node.
        if (partner < begin || partner >= end || entries[partner].comparedName != second.comparedName) {
            ReportValue(pair, second, "added");
            continue;
        }
        isFound[partner - begin] = true;
        isInOrder = isInOrder && partner >= last;
        last = partner;
        CompareEntry(pair, entries[partner], second);
    }
    for (std::size_t entry = begin; entry < end; ++entry) {
        if (!isFound[entry - begin]) {
            ReportValue(pair, entries[entry], "removed");
        }
    }
    if (!isInOrder) {
        ReportOrder(pair);
    }
}

void Comparison::CompareEntry(const Pair& pair, const CarriedEntry& first, const CarriedEntry& second) {
    if (first.name != second.name) {
        ReportOldName(pair, second, first.name);
    }
    if (first.value == second.value) {
        return;
    }
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(Reason::kChanged);
        return;
    }
    const ExcerptPair values = ValueTexts(pair, first, second);
    AddEntry(pair, second, "changed from " + values.first + " to " + values.second);
}

void Comparison::ReportValue(const Pair& pair, const CarriedEntry& entry, const char* what) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(Reason::kChanged);
        return;
    }
    const std::string value = Utf8OfAnsi(texts_.TextOf(entry.value));
    const std::string unit = UnitOf(pair, entry);
    AddEntry(pair, entry, std::string(what) + " " + (unit.empty() ? Excerpt(value) : Shown(value, unit)));
}

void Comparison::ReportOldName(const Pair& pair, const CarriedEntry& entry, TextId name) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(Reason::kChanged);
        return;
    }
    AddEntry(pair, entry, "was called " + Excerpt(Utf8OfAnsi(texts_.TextOf(name))));
}

std::string Comparison::UnitIn(const Side& side, NodeIndex node, const OuString& name) {
    CAEObject* object = side.tree.object;
    if (object != nullptr && node > 0) {
        CAEProject* const project = object->getProject();
        object = project == nullptr ? nullptr : project->getCAEObject(side.tree.nodes[node].identifier);
    }
    OuString unit;
    if (object != nullptr) {
        object->getMetadataUnitString(name, unit);
    }
    if (object != nullptr && unit.IsEmpty()) {
        object->getMetadataType(name, unit);
    }
    return ToUtf8(unit);
}

std::string Comparison::UnitOf(const Pair& pair, const CarriedEntry& entry) const {
    if (options_.shownValue == nullptr) {
        return {};
    }
    const OuString name(std::string(texts_.TextOf(entry.name)).c_str(), 0);
    std::string unit = UnitIn(second_, pair.second, name);
    return unit.empty() ? UnitIn(first_, pair.first, name) : unit;
}

std::string Comparison::Shown(const std::string& value, const std::string& unit) const {
    return Printable(options_.shownValue(CutUtf8(value, kLongestValue), unit));
}

ExcerptPair Comparison::ValueTexts(const Pair& pair, const CarriedEntry& first,
                                   const CarriedEntry& second) const {
    const std::string from = Utf8OfAnsi(texts_.TextOf(first.value));
    const std::string to = Utf8OfAnsi(texts_.TextOf(second.value));
    const std::string unit = UnitOf(pair, second);
    if (unit.empty()) {
        return ExcerptsOf(from, to);
    }
    ExcerptPair values = {Shown(from, unit), Shown(to, unit)};
    if (values.first != values.second) {
        return values;
    }
    // A size with two digits may hide what has changed.
    const ExcerptPair excerpts = ExcerptsOf(from, to);
    const std::string shownUnit = " " + Printable(unit);
    return {excerpts.first + shownUnit, excerpts.second + shownUnit};
}

void Comparison::AddEntry(const Pair& pair, const CarriedEntry& entry, const std::string& sentence) {
    const std::string name = Utf8OfAnsi(texts_.TextOf(entry.name));
    Add(Reason::kChanged, second_, pair.second, PointerTo(member::kMetaData.View()) + PointerTo(name),
        IdentifierOf(pair), "metadata " + Excerpt(name) + " " + sentence);
}

void Comparison::ReportOrder(const Pair& pair) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(Reason::kChanged);
        return;
    }
    Add(Reason::kChanged, second_, pair.second, PointerTo(member::kMetaData.View()), IdentifierOf(pair),
        "metadata in another order");
}

}  // namespace korvane::exchange
