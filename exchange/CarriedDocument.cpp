#include "CarriedTree.h"
#include "format/MemberNames.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {
namespace {

/// A value as text, of which the format carries what stands before the first NUL.
TextId IdOfValue(const JSONNode& value, DistinctTexts& texts) {
    const NodeText text = NodeValue(value);
    return texts.IdOf(UpToNul(text));
}

std::string TextOfMember(const JSONNode& node, format::MemberName name) {
    const JSONNode* const found = FindMember(node, name);
    if (found == nullptr) {
        return {};
    }
    const NodeText text = NodeValue(*found);
    return std::string(UpToNul(text));
}

/// Reads a document as an import does.
class DocumentReader {
public:
    DocumentReader(DistinctTexts& texts, const CountNode& count, CarriedTree& tree)
        : builder_(tree, texts), count_(count) {}

    void Read(const JSONNode& document, Kind rootKind);

private:
    struct State {
        NodeIndex node = kNoNode;
    };
    using Visit = NodeVisit<const JSONNode, State>;

    /// Returns whether there may be something to read below the node.
    bool Enter(const Visit& visit, Kind rootKind);
    void ReadHeader(const JSONNode& node, NodeIndex index);
    void ReadMember(const JSONNode& value, CarriedNode& carried);
    void ReadMetadata(const JSONNode& node);
    bool ReadRecord(const JSONNode& record, NodeIndex index);

    CarriedTreeBuilder builder_;
    const CountNode& count_;
};

void DocumentReader::Read(const JSONNode& document, Kind rootKind) {
    const auto enter = [&](const Visit& visit) { return Enter(visit, rootKind); };
    const auto leave = [](const Visit&) {};
    NodeWalker<State, const JSONNode, decltype(enter), decltype(leave)>(SectionOrder::AsWritten, enter, leave)
        .Walk(document);
}

bool DocumentReader::Enter(const Visit& visit, Kind rootKind) {
    const bool isRecord = visit.place == NodePlace::FileRecord;
    const Kind kind = visit.place == NodePlace::Root
                          ? rootKind
                          : format::KindOfType(TextOfMember(visit.node, member::kType));
    if (!isRecord && visit.place != NodePlace::Root && kind == Kind::kUnknown) {
        // An import leaves it out with everything below it.
        return false;
    }
    count_();
    const NodeIndex parent = visit.above == nullptr ? kNoNode : visit.above->node;
    CarriedNode& carried = builder_.Add(parent, visit.place, visit.position);
    carried.kind = isRecord ? Kind::kFile : kind;
    const NodeIndex index = builder_.Last();
    visit.own.node = index;
    if (visit.section != nullptr && visit.section->type() == JSON_NODE) {
        const NodeText name = NodeName(visit.node);
        builder_.NameElement(index, name);
    }
    ReadHeader(visit.node, index);
    ReadMetadata(visit.node);
    if (isRecord && !ReadRecord(visit.node, index)) {
        builder_.RemoveLast();
    }
    // What is below a record has no effect.
    return !isRecord;
}

void DocumentReader::ReadHeader(const JSONNode& node, NodeIndex index) {
    if (node.type() == JSON_NODE) {
        for (const JSONNode& value : node) {
            ReadMember(value, builder_[index]);
        }
        if (const JSONNode* const type = FindMember(node, member::kType)) {
            builder_[index].type = IdOfValue(*type, builder_.Texts());
        }
    }
    builder_.FinishHeader(index);
}

/// Where a name occurs several times, the last member counts. A key that is null does not count.
void DocumentReader::ReadMember(const JSONNode& value, CarriedNode& carried) {
    const NodeText text = NodeName(value);
    const std::string_view name = text;
    if (name == member::kName.View() || name == member::kDisplayName.View()) {
        carried.name = IdOfValue(value, builder_.Texts());
    } else if (name == member::kCreatedDate.View()) {
        carried.createdDate = IdOfValue(value, builder_.Texts());
    } else if (name == member::kStudyTypeName.View()) {
        carried.studyTypeName = IdOfValue(value, builder_.Texts());
    } else if (name == member::kDatabaseKey.View() && value.type() != JSON_NULL) {
        carried.key = IdOfValue(value, builder_.Texts());
    }
}

void DocumentReader::ReadMetadata(const JSONNode& node) {
    if (node.type() != JSON_NODE) {
        return;
    }
    for (const JSONNode& section : node) {
        const NodeText sectionName = NodeName(section);
        if (member::kMetaData != std::string_view(sectionName)) {
            continue;
        }
        ChildWalk records(section);
        while (const JSONNode* const record = records.Next()) {
            const NodeText name = section.type() == JSON_NODE ? NodeName(*record) : NodeText();
            builder_.SetEntry(UpToNul(name), TextOfMember(*record, member::kValue));
        }
    }
}

/// Of members that only file records have, the first of a name counts.
bool DocumentReader::ReadRecord(const JSONNode& record, NodeIndex index) {
    FileTexts& texts = builder_.FileTextsOf(index);
    const auto members = FindMembers(record, kCarriedFileMembers);
    for (std::size_t number = 0; number < members.size(); ++number) {
        texts[number] =
            members[number] == nullptr ? kEmptyText : IdOfValue(*members[number], builder_.Texts());
    }
    return builder_.FinishRecord(index);
}

}  // namespace

std::string RootType(const JSONNode& document) {
    return TextOfMember(document, member::kType);
}

void ReadDocumentTree(const JSONNode& document, Kind rootKind, DistinctTexts& texts, const CountNode& count,
                      CarriedTree& tree) {
    DocumentReader(texts, count, tree).Read(document, rootKind);
}

}  // namespace korvane::exchange
