#include "ServerFetch.h"

#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

#include "ServerDocument.h"
#include "ServerTables.h"
#include "format/MemberNames.h"
#include "format/Values.h"
#include "objectjson/NodeReading.h"

namespace member = format::member;

namespace host {
namespace {

constexpr const char* kColumns =
    "SELECT node.number, node.members, coalesce(assembly.key, object.key), node.section FROM node"
    " LEFT JOIN object ON object.number = node.object LEFT JOIN object AS assembly ON assembly.number = "
    "node.shown ";

/// A node of the database, and the children and files that are complete so far.
struct FetchedNode {
    std::int64_t number;
    std::string members;
    std::string key;
    NodePlace place;
    std::vector<FetchedNode> inner;
    std::size_t nextInner = 0;
    JSONNode children;
    JSONNode files;
};

FetchedNode ReadRow(const Statement& row) {
    if (row.IsNull(2)) {
        RefuseDamaged("a node has no object");
    }
    return {row.Number(0),
            row.Text(1),
            row.Text(2),
            PlaceOfSection(row.Number(3)),
            {},
            0,
            NamedArray(member::kChildren),
            NamedArray(member::kFiles)};
}

class Fetching {
public:
    Fetching(Database& database, Console& console)
        : console_(console),
          find_(database, (std::string(kColumns) +
                           "WHERE object.key = ? ORDER BY node.above IS NULL, node.section DESC, node.number")
                              .c_str()),
          below_(
              database,
              (std::string(kColumns) + "WHERE node.above = ? ORDER BY node.section, node.position").c_str()),
          count_(database, "SELECT count(*) FROM node") {
        count_.Begin().Next();
        nodeCount_ = count_.Number(0);
        count_.Reset();
    }

    bool Run(const std::string& key, JSONNode& document);

private:
    void Enter(FetchedNode node);

    Console& console_;
    Statement find_;
    Statement below_;
    Statement count_;
    std::int64_t nodeCount_ = 0;
    std::int64_t entered_ = 0;
    std::vector<FetchedNode> open_;
};

void Fetching::Enter(FetchedNode node) {
    if (++entered_ > nodeCount_) {
        RefuseDamaged("a node contains itself");
    }
    below_.Begin(node.number);
    while (below_.Next()) {
        node.inner.push_back(ReadRow(below_));
    }
    below_.Reset();
    open_.push_back(std::move(node));
    console_.ShowProgress("Fetching the document", static_cast<std::uint64_t>(entered_), 0);
}

bool Fetching::Run(const std::string& key, JSONNode& document) {
    if (!find_.Begin(key).Next()) {
        return false;
    }
    FetchedNode root = ReadRow(find_);
    // The document of a view item has the key that was asked for.
    root.key = key;
    find_.Reset();
    Enter(std::move(root));
    for (;;) {
        FetchedNode& innermost = open_.back();
        if (innermost.nextInner < innermost.inner.size()) {
            Enter(std::move(innermost.inner[innermost.nextInner++]));
            continue;
        }
        const JSONNode node =
            RestoreNode(innermost.members, innermost.key, innermost.children, innermost.files);
        const NodePlace place = innermost.place;
        open_.pop_back();
        if (open_.empty()) {
            document = node;
            console_.ClearProgress();
            return true;
        }
        FetchedNode& above = open_.back();
        (place == NodePlace::FileRecord ? above.files : above.children).push_back(node);
    }
}

}  // namespace

bool FetchDocument(Database& database, const std::string& key, JSONNode& document, Console& console) {
    CheckServerTables(database, CheckDepth::ForReading);
    const ReadingLimits limits(database);
    try {
        if (!Fetching(database, console).Run(key, document)) {
            return false;
        }
    } catch (const std::invalid_argument& error) {
        RefuseDamaged(std::string("the members of a node cannot be read: ") + error.what());
    }
    if (FindMember(document, member::kSubType) == nullptr) {
        document.push_back(JSONNode(member::kSubType.c_str(), format::kSubTypeValue));
    }
    return true;
}

}  // namespace host
