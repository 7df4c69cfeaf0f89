#include <cstdlib>
#include <string>

#include "CarriedTree.h"
#include "format/MemberNames.h"
#include "objectjson/DocumentWriter.h"
#include "objectjson/Sections.h"

namespace member = format::member;
using format::Kind;

namespace korvane::exchange {
namespace {

std::string_view ViewOf(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

/// Takes the document of an object as it is written, member by member.
class TreeReader final : public DocumentWriter {
public:
    TreeReader(CAEObject& object, DistinctTexts& texts, const CountNode& count, CarriedTree& tree);

    using DocumentWriter::Text;
    void Text(format::MemberName name, const char* value) override;
    void OpenObject(format::MemberName name) override;
    void OpenArray(format::MemberName name) override;
    void OpenObject(const char* name) override;
    void OpenElement() override;
    void End() override;

private:
    enum class What { kNode, kSection, kMetadata, kEntry };
    /// Something that is open. A section has the node that it belongs to.
    struct Open {
        What what;
        NodeIndex node;
        NodePlace placeOfElements = NodePlace::Child;
        std::uint32_t nextElement = 0;
    };

    void OpenInside(What what, NodePlace placeOfElements = NodePlace::Child) {
        open_.push_back({what, open_.back().node, placeOfElements});
    }
    void ReadHeaderMember(format::MemberName name, const char* value);
    void ReadType(const char* type);
    void EndRecord(NodeIndex record);

    CarriedTreeBuilder builder_;
    const CountNode& count_;
    std::vector<Open> open_;
    /// How many openings are open that nothing is read from.
    std::size_t skipped_ = 0;
    std::string entryName_;
};

TreeReader::TreeReader(CAEObject& object, DistinctTexts& texts, const CountNode& count, CarriedTree& tree)
    : builder_(tree, texts), count_(count) {
    count_();
    builder_.Add(kNoNode, NodePlace::Root, 0).kind = KindOf(object);
    open_.push_back({What::kNode, builder_.Last()});
}

void TreeReader::Text(format::MemberName name, const char* value) {
    if (skipped_ > 0) {
        return;
    }
    if (open_.back().what != What::kEntry) {
        ReadHeaderMember(name, value);
    } else if (name == member::kValue) {
        builder_.SetEntry(entryName_, ViewOf(value));
    }
}

void TreeReader::ReadHeaderMember(format::MemberName name, const char* value) {
    CarriedNode& node = builder_[open_.back().node];
    const auto read = [&] { return builder_.Texts().IdOf(ViewOf(value)); };
    if (name == member::kId) {
        node.identifier = std::atoi(value);
    } else if (name == member::kName) {
        node.name = read();
    } else if (name == member::kCreatedDate) {
        node.createdDate = read();
    } else if (name == member::kStudyTypeName) {
        node.studyTypeName = read();
    } else if (name == member::kDatabaseKey) {
        node.key = read();
    } else if (name == member::kType) {
        ReadType(value);
    } else if (node.place == NodePlace::FileRecord) {
        const auto found = std::ranges::find(kCarriedFileMembers, name);
        if (found != kCarriedFileMembers.end()) {
            const auto number = static_cast<std::size_t>(found - kCarriedFileMembers.begin());
            builder_.FileTextsOf(open_.back().node)[number] = read();
        }
    }
}

void TreeReader::ReadType(const char* type) {
    CarriedNode& node = builder_[open_.back().node];
    node.type = builder_.Texts().IdOf(ViewOf(type));
    if (node.place != NodePlace::Child) {
        return;
    }
    node.kind = format::KindOfType(ViewOf(type));
    if (node.kind == Kind::kUnknown) {
        // An import leaves it out with everything below it.
        builder_.RemoveLast();
        open_.pop_back();
        skipped_ = 1;
    }
}

void TreeReader::OpenObject(format::MemberName) {
    if (skipped_ > 0) {
        ++skipped_;
        return;
    }
    // Metadata comes when all of the header is there.
    builder_.FinishHeader(open_.back().node);
    OpenInside(What::kMetadata);
}

void TreeReader::OpenObject(const char* name) {
    if (skipped_ > 0) {
        ++skipped_;
        return;
    }
    entryName_ = ViewOf(name);
    OpenInside(What::kEntry);
}

void TreeReader::OpenArray(format::MemberName name) {
    const bool isBelowRecord = skipped_ == 0 && builder_[open_.back().node].place == NodePlace::FileRecord;
    if (skipped_ > 0 || isBelowRecord) {
        // What is below a record has no effect.
        ++skipped_;
        return;
    }
    OpenInside(What::kSection, name == member::kFiles ? NodePlace::FileRecord : NodePlace::Child);
}

void TreeReader::OpenElement() {
    if (skipped_ > 0) {
        ++skipped_;
        return;
    }
    count_();
    Open& section = open_.back();
    builder_.Add(section.node, section.placeOfElements, section.nextElement++);
    open_.push_back({What::kNode, builder_.Last()});
}

void TreeReader::End() {
    if (skipped_ > 0) {
        --skipped_;
        return;
    }
    const Open closed = open_.back();
    open_.pop_back();
    if (closed.what == What::kNode && builder_[closed.node].place == NodePlace::FileRecord &&
        !builder_.FinishRecord(closed.node)) {
        builder_.RemoveLast();
    }
}

}  // namespace

void ReadTree(CAEObject& object, DistinctTexts& texts, const CountNode& count, CarriedTree& tree) {
    tree.object = &object;
    TreeReader reader(object, texts, count, tree);
    WriteObject(object, ExportMode::kEverything, reader);
}

}  // namespace korvane::exchange
