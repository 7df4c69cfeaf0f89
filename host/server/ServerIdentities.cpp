#include "ServerIdentities.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "ServerSiblings.h"
#include "ServerTables.h"
#include "host/document/DocumentNode.h"
#include "host/system/CheckedInsert.h"

namespace host {
namespace {

constexpr std::string_view kKeyOfAnotherKind =
    "\"dbkey\" not used, because it is the key of an object of another kind";
constexpr std::string_view kKeyOfAnotherProject =
    "\"dbkey\" not used, because it is the key of an object of another project";
constexpr std::string_view kByOrder =
    "may have the key of another one: recognised by the order among equal siblings, of which there were more "
    "or fewer before";
constexpr std::string_view kKeyInUse =
    "\"dbkey\" not used, because another object of the document has the same";

/// Finds the objects that the nodes of a document belong to, and creates new ones.
class Identification {
public:
    Identification(Database& database, std::vector<StoredNode>& nodes, RowSum& sum, StoreReport& report);

    /// Gives every node its ordinal, its object and its key.
    void Run(const StoreRequest& request);

private:
    void TakeRoot(const StoreRequest& request);
    void TakeByKeys();
    void TakeByKey(std::size_t index);
    bool IsOfProject(std::size_t index, const KnownObject& known);
    void LinkViewItems();
    void JoinNodesOfFile(std::size_t index);
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
    ProjectOfDocument project_;
    /// For each node the project that it comes from, if it is or is below an object that was stored alone
    /// before and has its place in a whole project now. 0 for all other nodes.
    std::vector<std::int64_t> cameFrom_;
    std::unordered_map<std::int64_t, bool> isWhole_;
    /// View items with the keys of assemblies, and these.
    std::vector<std::pair<std::size_t, KnownObject>> viewItems_;
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
      byKey_(database, "SELECT number, key, type, project FROM object WHERE key = ?"),
      ownedBy_(database, StoredSiblings::kOwnedBy),
      cameFrom_(nodes.size()) {}

void Identification::Run(const StoreRequest& request) {
    TakeRoot(request);
    // Keys first: an object with a key must not go to a node that only has the same path.
    TakeByKeys();
    TakeByPaths();
    Make(project_.number);
    LinkByGivenKeys();
}

void Identification::Take(StoredNode& stored, const KnownObject& known) {
    taken_.insert(known.object);
    stored.object = known.object;
    stored.key = known.key;
}

/// Takes the root by its key, and finds the project of the document, as far as that is known then.
void Identification::TakeRoot(const StoreRequest& request) {
    StoredNode& root = nodes_.front();
    TakeByKey(0);
    project_ = root.object != 0 ? FindProjectOfRoot(database_, root, request)
                                : FindProjectByName(database_, root, request, sum_);
}

void Identification::TakeByKeys() {
    for (std::size_t index = 0; index < nodes_.size(); ++index) {
        if (index != 0) {
            cameFrom_[index] = cameFrom_[nodes_[index].above];
            TakeByKey(index);
        }
        if (nodes_[index].IsFile()) {
            JoinNodesOfFile(index);
        }
    }
    LinkViewItems();
    StoredNode& root = nodes_.front();
    if (root.object != 0) {
        return;
    }
    if (const auto found = FindRootByName(database_, project_, root, taken_)) {
        Take(root, *found);
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

void Identification::TakeByKey(std::size_t index) {
    StoredNode& stored = nodes_[index];
    if (stored.givenKey.empty() || !byKey_.Begin(stored.givenKey).Next()) {
        return;
    }
    const KnownObject known{byKey_.Number(0), byKey_.Text(1), byKey_.Text(2), byKey_.Number(3)};
    byKey_.Reset();
    StoredNode found;
    found.type = known.type;
    if (stored.IsViewItem() && found.IsMasterAssembly()) {
        viewItems_.emplace_back(index, known);
    } else if (KeyPrefix(stored.type) != KeyPrefix(known.type)) {
        report_.notes.Add(kKeyOfAnotherKind, [&] { return Describe(stored.node); });
    } else if (!IsFree(known.object) && !stored.IsFile()) {
        report_.notes.Add(kKeyInUse, [&] { return Describe(stored.node); });
    } else if (index != 0 && !IsOfProject(index, known)) {
        report_.notes.Add(kKeyOfAnotherProject, [&] { return Describe(stored.node); });
    } else {
        Take(stored, known);
    }
}

/// Another project must not lose an object. But one that was stored alone, before the whole that it is a part
/// of, loses nothing: it comes with all that is below it.
bool Identification::IsOfProject(std::size_t index, const KnownObject& known) {
    if (known.project == project_.number || known.project == cameFrom_[index] || !IsFree(known.object)) {
        return true;
    }
    const auto [isWhole, isFirst] = isWhole_.try_emplace(known.project);
    if (isFirst) {
        isWhole->second = HasWhole(database_, known.project);
    }
    if (isWhole->second || !IsStoredRoot(database_, known.object)) {
        return false;
    }
    cameFrom_[index] = known.project;
    return true;
}

/// A view item shows an assembly of its own project, which may come after it in the document.
void Identification::LinkViewItems() {
    for (const auto& [index, assembly] : viewItems_) {
        if (assembly.project == project_.number || !IsFree(assembly.object)) {
            nodes_[index].shown = assembly.object;
        } else {
            report_.notes.Add(kKeyOfAnotherProject, [&, at = index] { return Describe(nodes_[at].node); });
        }
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
    std::vector<std::pair<std::size_t, std::string>> taken;
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
                taken.emplace_back(element, name);
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
    // A document does not carry what would tell equal siblings apart, such as the paths of files.
    for (const auto& [element, name] : taken) {
        if (const std::int64_t before = siblings->CountOf(name); before != 0 && before != counts.Of(name)) {
            report_.notes.Add(kByOrder, [&, at = element] { return Describe(nodes_[at].node); });
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
