#include "Comparison.h"

#include <korvaneexchange/PrintableText.h>

#include <utility>

#include "NodeText.h"
#include "format/MemberNames.h"

namespace member = format::member;

namespace korvane::exchange {
namespace {

std::string CountText(std::size_t count, const char* one, const char* several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string BelowText(std::size_t objects, std::size_t files) {
    std::string text;
    if (objects > 0) {
        text = CountText(objects, "object", "objects");
    }
    if (files > 0) {
        text += (objects > 0 ? " and " : "") + CountText(files, "file", "files");
    }
    return text.empty() ? text : ", with " + text + " below it";
}

}  // namespace

Comparison::Comparison(const CarriedTree& first, const CarriedTree& second, const DistinctTexts& texts,
                       const Alignment& alignment, const CompareOptions& options, CompareReport& report)
    : first_{first, false},
      second_{second, true},
      texts_(texts),
      alignment_(alignment),
      options_(options),
      report_(report),
      builder_(report),
      removedBelow_(CountAlone(first_)),
      addedBelow_(CountAlone(second_)),
      entryOfName_(texts.size()) {}

bool Comparison::IsAlone(const Side& side, NodeIndex node) const {
    return (side.isSecond ? alignment_.OfSecond(node) : alignment_.OfFirst(node)) == kNoNode;
}

bool Comparison::IsTopAlone(const Side& side, NodeIndex node) const {
    return IsAlone(side, node) && !IsAlone(side, side.tree.nodes[node].parent);
}

/// Empty where every node has a partner.
std::vector<Comparison::Count> Comparison::CountAlone(const Side& side) const {
    std::vector<Count> below;
    for (NodeIndex node = side.tree.size(); node-- > 1;) {
        if (!IsAlone(side, node)) {
            continue;
        }
        below.resize(side.tree.size());
        const CarriedNode& carried = side.tree.nodes[node];
        Count& above = below[carried.parent];
        above.objects += below[node].objects + (carried.IsFile() ? 0 : 1);
        above.files += below[node].files + (carried.IsFile() ? 1 : 0);
    }
    return below;
}

void Comparison::CompareNode(NodeIndex second) {
    const Pair pair = {alignment_.OfSecond(second), second};
    if (pair.first == kNoNode) {
        if (IsTopAlone(second_, second)) {
            ReportAlone(second_, second, Reason::kAdded, addedBelow_);
        }
        return;
    }
    ++(first_.tree.nodes[pair.first].IsFile() ? report_.files : report_.objects);
    if (options_.pairs) {
        options_.pairs(first_.tree.nodes[pair.first].identifier, second_.tree.nodes[second].identifier);
    }
    if (alignment_.HasOtherParent(second) || alignment_.HasOtherPlace(second)) {
        ReportMoved(pair);
    }
    CompareMembers(pair);
    for (const NodePlace place : {NodePlace::Child, NodePlace::FileRecord}) {
        NodeIndex below = alignment_.FirstBelow(false, pair.first, place);
        for (; below != kNoNode; below = alignment_.NextBelow(false, below)) {
            if (IsAlone(first_, below)) {
                ReportAlone(first_, below, Reason::kRemoved, removedBelow_);
            }
        }
    }
}

void Comparison::ReportAlone(const Side& side, NodeIndex node, Reason reason,
                             const std::vector<Count>& below) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(reason);
        return;
    }
    const char* const what = reason == Reason::kAdded ? "added" : "removed";
    Add(reason, side, node, "", side.tree.nodes[node].identifier,
        what + BelowText(below[node].objects, below[node].files));
}

void Comparison::ReportMoved(const Pair& pair) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(Reason::kMoved);
        return;
    }
    std::string sentence;
    if (alignment_.HasOtherParent(pair.second)) {
        sentence = "moved from " + PathOf(first_.tree, texts_, pair.first);
    } else {
        const CarriedNode& moved = second_.tree.nodes[pair.second];
        const bool isRecord = moved.place == NodePlace::FileRecord;
        sentence = "moved from place " + std::to_string(first_.tree.nodes[pair.first].position + 1) + " to " +
                   std::to_string(moved.position + 1) + (isRecord ? " of the files" : " of the children");
    }
    Add(Reason::kMoved, second_, pair.second, "", IdentifierOf(pair), sentence);
}

void Comparison::CompareMembers(const Pair& pair) {
    const CarriedNode& first = first_.tree.nodes[pair.first];
    const CarriedNode& second = second_.tree.nodes[pair.second];
    CompareType(pair);
    CompareNames(pair);
    CompareStudyTypes(pair);
    if (!options_.ignoreDates) {
        CompareTexts(pair, member::kCreatedDate, first.createdDate, second.createdDate);
    }
    if (!options_.ignoreKeys) {
        CompareTexts(pair, member::kDatabaseKey, first.key, second.key);
    }
    CompareMetadata(pair);
    CompareFileMembers(pair);
}

void Comparison::CompareType(const Pair& pair) {
    const CarriedNode& first = first_.tree.nodes[pair.first];
    const CarriedNode& second = second_.tree.nodes[pair.second];
    if (first.type == second.type && first.IsProject() != second.IsProject()) {
        // The type of a project may be any text.
        const auto what = [](const CarriedNode& node) {
            return node.IsProject() ? "a project" : "an object";
        };
        ReportChange(pair, member::kType.View(), "kind", what(first), what(second));
    } else {
        CompareTexts(pair, member::kType, first.type, second.type);
    }
}

void Comparison::CompareNames(const Pair& pair) {
    const CarriedNode& first = first_.tree.nodes[pair.first];
    const CarriedNode& second = second_.tree.nodes[pair.second];
    const auto isFileObject = [](const CarriedNode& node) {
        return node.IsFile() && node.place != NodePlace::FileRecord;
    };
    if (first.IsProject() != second.IsProject()) {
        return;
    }
    // A file among the children is named after its path, and an imported one has none.
    const bool isLost = (isFileObject(first) || isFileObject(second)) &&
                        (first.name == kEmptyText || second.name == kEmptyText);
    if (isLost || (first.IsProject() && IsProjectNameTaken(pair))) {
        return;
    }
    CompareTexts(pair, member::kName, first.name, second.name);
}

bool Comparison::IsProjectNameTaken(const Pair& pair) const {
    const bool areDocuments = first_.tree.object == nullptr && second_.tree.object == nullptr;
    if (areDocuments || options_.displayNameOf == nullptr) {
        return true;
    }
    return IsDisplayedAs(second_, pair.second, first_.tree.nodes[pair.first].name) ||
           IsDisplayedAs(first_, pair.first, second_.tree.nodes[pair.second].name);
}

bool Comparison::IsDisplayedAs(const Side& side, NodeIndex project, TextId name) const {
    CAEProject* const all = side.tree.object == nullptr ? nullptr : side.tree.object->getProject();
    if (all == nullptr) {
        return false;
    }
    auto* const found = dynamic_cast<CAEProject*>(all->getCAEObject(side.tree.nodes[project].identifier));
    return found != nullptr && options_.displayNameOf(*found) == Utf8OfAnsi(texts_.TextOf(name));
}

void Comparison::CompareStudyTypes(const Pair& pair) {
    const CarriedNode& first = first_.tree.nodes[pair.first];
    const CarriedNode& second = second_.tree.nodes[pair.second];
    if (first.studyTypeName == kNoText || second.studyTypeName == kNoText) {
        return;
    }
    // It is the name of the study, whose change is reported there.
    const auto follows = [](const CarriedTree& tree, const CarriedNode& node) {
        return tree.nodes[tree.nodes[node.parent].parent].name == node.studyTypeName;
    };
    if (!follows(first_.tree, first) || !follows(second_.tree, second)) {
        CompareTexts(pair, member::kStudyTypeName, first.studyTypeName, second.studyTypeName);
    }
}

void Comparison::CompareFileMembers(const Pair& pair) {
    const CarriedNode& first = first_.tree.nodes[pair.first];
    const CarriedNode& second = second_.tree.nodes[pair.second];
    if (first.place != NodePlace::FileRecord || second.place != NodePlace::FileRecord) {
        return;
    }
    for (std::size_t index = 0; index < kCarriedFileMemberCount; ++index) {
        CompareTexts(pair, kCarriedFileMembers[index], first_.tree.FileTextsOf(first)[index],
                     second_.tree.FileTextsOf(second)[index]);
    }
}

void Comparison::CompareTexts(const Pair& pair, format::MemberName member, TextId first, TextId second) {
    if (first != second) {
        ReportChange(pair, member.View(), std::string(member.View()), texts_.TextOf(first),
                     texts_.TextOf(second));
    }
}

void Comparison::ReportChange(const Pair& pair, std::string_view member, const std::string& what,
                              std::string_view first, std::string_view second) {
    if (!builder_.IsListing()) {
        builder_.CountUnlisted(Reason::kChanged);
        return;
    }
    const ExcerptPair values = ExcerptsOf(Utf8OfAnsi(first), Utf8OfAnsi(second));
    Add(Reason::kChanged, second_, pair.second, PointerTo(member), IdentifierOf(pair),
        what + " changed from " + values.first + " to " + values.second);
}

void Comparison::Add(Reason reason, const Side& side, NodeIndex node, const std::string& memberPointer,
                     int identifier, const std::string& sentence) {
    std::string path = PathOf(side.tree, texts_, node);
    std::string whole = path + ": " + sentence;
    builder_.Add(reason, PointerOf(side.tree, texts_, node) + memberPointer, identifier, std::move(path),
                 std::move(whole));
}

int Comparison::IdentifierOf(const Pair& pair) const {
    const CAEObject* const second = second_.tree.object;
    return second != nullptr ? second_.tree.nodes[pair.second].identifier
                             : first_.tree.nodes[pair.first].identifier;
}

}  // namespace korvane::exchange
