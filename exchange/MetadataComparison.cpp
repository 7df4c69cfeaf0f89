#include <korvaneexchange/PrintableText.h>

#include "Comparison.h"
#include "NodeText.h"
#include "format/MemberNames.h"

namespace member = format::member;

namespace korvane::exchange {

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
            ReportEntry(pair, second, "added", second.value);
            continue;
        }
        isFound[partner - begin] = true;
        isInOrder = isInOrder && partner >= last;
        last = partner;
        CompareEntry(pair, entries[partner], second);
    }
    for (std::size_t entry = begin; entry < end; ++entry) {
        if (!isFound[entry - begin]) {
            ReportEntry(pair, entries[entry], "removed", entries[entry].value);
        }
    }
    if (!isInOrder) {
        ReportOrder(pair);
    }
}

void Comparison::CompareEntry(const Pair& pair, const CarriedEntry& first, const CarriedEntry& second) {
    if (first.name != second.name) {
        ReportEntry(pair, second, "was called", first.name);
    }
    if (first.value == second.value) {
        return;
    }
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(Reason::kChanged);
        return;
    }
    const ExcerptPair values =
        ExcerptsOf(Utf8OfAnsi(texts_.TextOf(first.value)), Utf8OfAnsi(texts_.TextOf(second.value)));
    AddEntry(pair, second, "changed from " + values.first + " to " + values.second);
}

void Comparison::ReportEntry(const Pair& pair, const CarriedEntry& entry, const char* what, TextId text) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(Reason::kChanged);
        return;
    }
    AddEntry(pair, entry, std::string(what) + " " + Excerpt(Utf8OfAnsi(texts_.TextOf(text))));
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
