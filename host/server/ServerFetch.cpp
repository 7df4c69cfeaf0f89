#include "ServerFetch.h"

#include <libjson.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "MembersText.h"
#include "NodeRows.h"
#include "ServerTables.h"
#include "TextPieces.h"
#include "format/MemberNames.h"
#include "format/Values.h"
#include "host/system/DatabaseCheck.h"

namespace member = format::member;

namespace host {
namespace {

/// A text with quotes and escapes.
std::string JsonText(std::string_view text) {
    JSONNode array(JSON_ARRAY);
    array.push_back(JSONNode("", std::string(text).c_str()));
    const auto written = array.write();
    return {written.c_str() + 1, written.size() - 2};
}

/// A node whose text is written up to the nodes in one of its sections.
struct OpenNode {
    NodePlace section;
    bool isFirst;
    /// Its nodes in `below_`, and the next of them.
    std::size_t firstBelow;
    std::size_t nextBelow;
    /// What follows the section, in `rests_`, and how far it is written.
    std::size_t rest;
    std::size_t written;
    /// The sections in the rest, in `sections_`, and the next of them.
    std::size_t firstSection;
    std::size_t nextSection;
};

/// Writes a document, each node's text when it comes. What is to be written after the nodes that are in it
/// waits on the heap, so the depth needs no stack.
class Fetching {
public:
    Fetching(Database& database, const WritePiece& write, Console& console);

    std::error_code Run(const FetchedRoot& root);

private:
    struct SectionInRest {
        std::size_t place;
        NodePlace section;
    };

    void GoOn();
    void Close();
    void WriteNode(std::int64_t number, const std::string* keyOfRoot);
    void SetKey(std::string_view key);
    void WriteMembers(std::string_view members, bool isRoot);
    void WriteEdit(const MembersEdit& edit);
    void WriteSection(NodePlace section);
    /// Writes the text, or keeps it if there are nodes to be written before it.
    void Put(std::string_view text) {
        if (isOpened_) {
            rests_.append(text);
        } else {
            pieces_.Put(text);
        }
    }

    NodeRows rows_;
    NodesBelow nodesBelow_;
    MembersText membersText_;
    TextPieces pieces_;
    Console& console_;
    std::int64_t nodeCount_ = 0;
    std::int64_t entered_ = 0;

    // The node that is written now.
    MembersLayout layout_;
    /// With the comma before it.
    std::string keyMember_;
    std::size_t firstBelow_ = 0;
    /// Whether a section has begun whose nodes come next.
    bool isOpened_ = false;

    std::vector<OpenNode> open_;
    std::vector<NodeBelow> below_;
    std::vector<SectionInRest> sections_;
    std::string rests_;
    const std::string beforeKey_ = "," + JsonText(member::kDatabaseKey.View()) + ":";
    const std::string subType_ =
        "," + JsonText(member::kSubType.View()) + ":" + JsonText(format::kSubTypeValue);
};

Fetching::Fetching(Database& database, const WritePiece& write, Console& console)
    : rows_(database), nodesBelow_(database), pieces_(write), console_(console) {
    Statement count(database, "SELECT count(*) FROM node");
    count.Begin().Next();
    nodeCount_ = count.Number(0);
}

std::error_code Fetching::Run(const FetchedRoot& root) {
    WriteNode(root.node, &root.key);
    while (!open_.empty() && !pieces_.HasFailed()) {
        GoOn();
    }
    console_.ClearProgress();
    return pieces_.Finish();
}

/// Writes the next node that is in the innermost open one, or what follows the section.
void Fetching::GoOn() {
    OpenNode& node = open_.back();
    const auto isNext = [&](const NodeBelow& below) { return below.place == node.section; };
    const auto next =
        std::find_if(below_.begin() + static_cast<std::ptrdiff_t>(node.nextBelow), below_.end(), isNext);
    if (next != below_.end()) {
        if (!node.isFirst) {
            pieces_.Put(",");
        }
        node.isFirst = false;
        node.nextBelow = static_cast<std::size_t>(next - below_.begin()) + 1;
        WriteNode(next->number, nullptr);
        return;
    }
    pieces_.Put("]");
    const bool hasSection = node.nextSection < sections_.size();
    const std::size_t end = hasSection ? sections_[node.nextSection].place : rests_.size();
    pieces_.Put(std::string_view(rests_).substr(node.written, end - node.written));
    if (!hasSection) {
        Close();
        return;
    }
    pieces_.Put("[");
    node.section = sections_[node.nextSection++].section;
    node.isFirst = true;
    node.nextBelow = node.firstBelow;
    node.written = end;
}

void Fetching::Close() {
    const OpenNode& node = open_.back();
    below_.resize(node.firstBelow);
    sections_.resize(node.firstSection);
    rests_.resize(node.rest);
    open_.pop_back();
}

void Fetching::WriteNode(std::int64_t number, const std::string* keyOfRoot) {
    if (++entered_ > nodeCount_) {
        RefuseDamaged("a node contains itself");
    }
    rows_.GoTo(number);
    firstBelow_ = below_.size();
    nodesBelow_.AddTo(below_, number);
    isOpened_ = false;
    // The document of a view item has the key that was asked for.
    SetKey(keyOfRoot != nullptr ? *keyOfRoot : rows_.Key());
    WriteMembers(rows_.Members(), keyOfRoot != nullptr);
    if (!isOpened_) {
        below_.resize(firstBelow_);
    }
    console_.ShowProgress("Fetching the document", static_cast<std::uint64_t>(entered_), 0);
}

void Fetching::SetKey(std::string_view key) {
    keyMember_ = beforeKey_;
    if (NeedsNoEscape(key)) {
        keyMember_ += '"';
        keyMember_ += key;
        keyMember_ += '"';
    } else {
        keyMember_ += JsonText(key);
    }
}

void Fetching::WriteMembers(std::string_view members, bool isRoot) {
    const std::string_view text = membersText_.Read(members, layout_);
    std::size_t written = 0;
    for (const MembersEdit& edit : layout_.edits) {
        Put(text.substr(written, edit.begin - written));
        WriteEdit(edit);
        written = edit.end;
    }
    Put(text.substr(written, text.size() - 1 - written));
    if (!layout_.hasKey && !layout_.hasType) {
        Put(std::string_view(keyMember_).substr(layout_.isEmpty ? 1 : 0));
    }
    if (isRoot && !layout_.hasSubType) {
        Put(subType_);
    }
    Put("}");
}

void Fetching::WriteEdit(const MembersEdit& edit) {
    switch (edit.kind) {
        case MembersEdit::Kind::AfterType:
            if (!layout_.hasKey) {
                Put(keyMember_);
            }
            break;
        case MembersEdit::Kind::Key:
            Put(std::string_view(keyMember_).substr(beforeKey_.size()));
            break;
        case MembersEdit::Kind::RepeatedKey:
            break;
        case MembersEdit::Kind::Children:
            WriteSection(NodePlace::Child);
            break;
        case MembersEdit::Kind::Files:
            WriteSection(NodePlace::FileRecord);
            break;
    }
}

void Fetching::WriteSection(NodePlace section) {
    const bool isEmpty = std::none_of(below_.begin() + static_cast<std::ptrdiff_t>(firstBelow_), below_.end(),
                                      [&](const NodeBelow& below) { return below.place == section; });
    if (isEmpty) {
        Put("[]");
    } else if (isOpened_) {
        sections_.push_back({rests_.size(), section});
    } else {
        Put("[");
        open_.push_back({section, true, firstBelow_, firstBelow_, rests_.size(), rests_.size(),
                         sections_.size(), sections_.size()});
        isOpened_ = true;
    }
}

}  // namespace

std::optional<FetchedRoot> FindRoot(Database& database, const std::string& key) {
    CheckServerTables(database, CheckDepth::ForReading);
    const ReadingLimits limits(database);
    Statement find(database,
                   "SELECT node.number FROM node JOIN object ON object.number = node.object"
                   " WHERE object.key = ? ORDER BY node.above IS NULL, node.section DESC, node.number");
    if (!find.Begin(key).Next()) {
        return std::nullopt;
    }
    return FetchedRoot{find.Number(0), key};
}

std::error_code FetchDocument(Database& database, const FetchedRoot& root, const WritePiece& write,
                              Console& console) {
    const ReadingLimits limits(database);
    try {
        return Fetching(database, write, console).Run(root);
    } catch (const std::invalid_argument& error) {
        RefuseDamaged(std::string("the members of a node cannot be read: ") + error.what());
    }
}

}  // namespace host
