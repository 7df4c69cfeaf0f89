#include "ServerIdentities.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "ServerSiblings.h"
#include "ServerTables.h"
#include "host/document/DocumentNode.h"
#include "host/system/CheckedInsert.h"

namespace host {
namespace {

constexpr std::string_view kKeyOfAnotherKind =
    "\"dbkey\" not used, because it is the key of an object of another kind";
constexpr std::string_view kKeyInUse =
    "\"dbkey\" not used, because another object of the document has the same";

/// Finds the objects that the nodes of a document belong to, and creates new ones.
class Identification {
public:
    Identification(Database& database, std::vector<StoredNode>& nodes, RowSum& sum, StoreReport& report);

    /// Gives every node its ordinal, its object and its key.
    void Run(const StoreRequest& request);

private:
    void TakeByKeys();
    void TakeByKey(StoredNode& stored);
    void JoinNodesOfFile(std::size_t index);
    void FindProject(const StoreRequest& request);
    void TakeByPaths();
    void TakeBelow(std::size_t owner);
    void Make(std::int64_t project);
    void LinkByGivenKeys();
    void Take(StoredNode& stored, const KnownObject& known);
    bool IsFree(std::int64_t object) const { return !taken_.contains(object); }
    /// The node that a file has its object from, if it has not got one by its own key.
    StoredNode& FirstOf(const StoredNode& stored) { return nodes_[stored.first]; }

    Database& database_;
    std::vector<StoredNode>& nodes_;
    RowSum& sum_;
    StoreReport& report_;
    Statement byKey_;
    Statement ownedBy_;
    std::int64_t project_ = 0;
    std::unordered_set<std::int64_t> taken_;
    /// The first nodes of the files that have keys, and the other nodes of the files that have several.
    std::unordered_map<std::int64_t, std::size_t> fileOfObject_;
    std::unordered_map<std::size_t, std::vector<std::size_t>> otherNodes_;
};

Identification::Identification(Database& database, std::vector<StoredNode>& nodes, RowSum& sum,
                               StoreReport& report)
    : database_(database),
      nodes_(nodes),
      sum_(sum),
      report_(report),
      byKey_(database, "SELECT number, key, type FROM object WHERE key = ?"),
      ownedBy_(database, StoredSiblings::kOwnedBy) {}

void Identification::Run(const StoreRequest& request) {
    // Keys first: an object with a key must not go to a node that only has the same path.
    TakeByKeys();
    FindProject(request);
    TakeByPaths();
    Make(project_);
    LinkByGivenKeys();
}

void Identification::Take(StoredNode& stored, const KnownObject& known) {
    taken_.insert(known.object);
    stored.object = known.object;
    stored.key = known.key;
}

void Identification::TakeByKeys() {
    for (std::size_t index = 0; index < nodes_.size(); ++index) {
        StoredNode& stored = nodes_[index];
        if (!stored.givenKey.empty()) {
            TakeByKey(stored);
        }
        if (stored.IsFile()) {
            JoinNodesOfFile(index);
        }
    }
}

/// Nodes with the same identifier are one file, but for those that have keys of different files.
void Identification::JoinNodesOfFile(std::size_t index) {
    StoredNode& stored = nodes_[index];
    stored.first = FirstOf(stored).first;
    if (stored.object != 0) {
        if (const StoredNode& first = FirstOf(stored); first.object != 0 && first.object != stored.object) {
            stored.first = index;
        }
        stored.first = fileOfObject_.emplace(stored.object, stored.first).first->second;
        FirstOf(stored).object = stored.object;
        FirstOf(stored).key = stored.key;
    }
    if (stored.first != index) {
        otherNodes_[stored.first].push_back(index);
    }
}

void Identification::TakeByKey(StoredNode& stored) {
    if (!byKey_.Begin(stored.givenKey).Next()) {
        return;
    }
    const KnownObject known{byKey_.Number(0), byKey_.Text(1), byKey_.Text(2)};
    byKey_.Reset();
    StoredNode found;
    found.type = known.type;
    if (stored.IsViewItem() && found.IsMasterAssembly()) {
        stored.shown = known.object;
    } else if (KeyPrefix(stored.type) != KeyPrefix(known.type)) {
        report_.notes.Add(kKeyOfAnotherKind, [&] { return Describe(stored.node); });
    } else if (!IsFree(known.object) && !stored.IsFile()) {
        report_.notes.Add(kKeyInUse, [&] { return Describe(stored.node); });
    } else {
        Take(stored, known);
    }
}

void Identification::FindProject(const StoreRequest& request) {
    StoredNode& root = nodes_.front();
    if (root.object != 0) {
        project_ = FindProjectOfRoot(database_, root, request).number;
        return;
    }
    const ProjectOfDocument found = FindProjectByName(database_, root, request, taken_, sum_);
    project_ = found.number;
    if (found.root) {
        Take(root, *found.root);
    }
}

void Identification::TakeByPaths() {
    // First what is below objects only: a file can be recognised wherever it is attached, and what is below a
    // file follows when that is done.
    std::vector<bool> isInFile(nodes_.size());
    for (std::size_t index = 0; index < nodes_.size(); ++index) {
        const StoredNode& stored = nodes_[index];
        isInFile[index] = stored.IsFile() || (index != 0 && isInFile[stored.above]);
        if (!isInFile[index]) {
            TakeBelow(index);
        }
    }
    for (std::size_t index = 0; index < nodes_.size(); ++index) {
        if (isInFile[index] && nodes_[index].first == index) {
            TakeBelow(index);
        }
    }
}

/// Gives all that is in the nodes of one object its ordinals, and its objects if the database has them.
void Identification::TakeBelow(std::size_t owner) {
    std::optional<StoredSiblings> siblings;
    SiblingCounts counts;
    const auto takeAll = [&](const std::vector<std::size_t>& elements) {
        for (const std::size_t element : elements) {
            StoredNode& stored = nodes_[element];
            const std::string name = stored.Name().Text();
            stored.ordinal = counts.Count(name);
            StoredNode& first = FirstOf(stored);
            if (nodes_[owner].object == 0 || stored.object != 0 || first.object != 0) {
                continue;
            }
            if (!siblings) {
                siblings.emplace(ownedBy_, nodes_[owner].object);
            }
            if (const KnownObject* const known = siblings->Find(
                    name, stored.ordinal, [&](std::int64_t object) { return IsFree(object); })) {
                Take(first, *known);
            }
        }
    };
    const auto takeNode = [&](const StoredNode& node) {
        takeAll(node.children);
        takeAll(node.files);
    };
    takeNode(nodes_[owner]);
    if (const auto others = otherNodes_.find(owner); others != otherNodes_.end()) {
        for (const std::size_t other : others->second) {
            takeNode(nodes_[other]);
        }
    }
}

void Identification::Make(std::int64_t project) {
    Statement origin(database_, "SELECT text FROM origin");
    if (!origin.Begin().Next()) {
        RefuseDamaged("it does not say how its keys end");
    }
    const std::string endOfKeys = origin.Text(0);
    std::int64_t next = NextNumber(database_, "object", nodes_.size());
    CheckedInsert insert(database_, "object", 4, true, sum_);
    for (StoredNode& stored : nodes_) {
        if (const StoredNode& first = FirstOf(stored); stored.object == 0 && first.object != 0) {
            stored.object = first.object;
            stored.key = first.key;
        }
        if (stored.object != 0) {
            continue;
        }
        stored.object = next++;
        stored.key = MakeKey(stored.type, stored.object, endOfKeys);
        insert.Run(stored.object, stored.key, stored.type, project);
        ++report_.newKeys;
    }
}

void Identification::LinkByGivenKeys() {
    // Keys of another server connect view items with their assemblies in the document.
    std::unordered_map<std::string, std::int64_t> assemblies;
    for (const StoredNode& stored : nodes_) {
        if (stored.IsMasterAssembly() && !stored.givenKey.empty() && stored.givenKey != stored.key) {
            assemblies.emplace(stored.givenKey, stored.object);
        }
    }
    for (StoredNode& stored : nodes_) {
        const auto found =
            stored.IsViewItem() && !stored.shown ? assemblies.find(stored.givenKey) : assemblies.end();
        if (found != assemblies.end()) {
            stored.shown = found->second;
        }
    }
}

}  // namespace

void IdentifyNodes(Database& database, const StoreRequest& request, std::vector<StoredNode>& nodes,
                   RowSum& sum, StoreReport& report) {
    Identification(database, nodes, sum, report).Run(request);
}

}  // namespace host
