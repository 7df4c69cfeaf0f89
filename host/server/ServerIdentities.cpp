#include "ServerIdentities.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "ServerTables.h"
#include "host/document/NodeWalker.h"
#include "host/system/CheckedInsert.h"

namespace host {
namespace {

/// What identifies a node in its project: its identifier, or its place. `above` is null for a root.
std::string IdentifierOf(const StoredNode& stored, const StoredNode* above) {
    if (stored.identifier) {
        return "id " + *stored.identifier;
    }
    return above == nullptr ? "root"
                            : "place " + std::to_string(above->object) + "/" +
                                  SectionOf(stored.place).c_str() + "/" + std::to_string(stored.position);
}

/// Finds the objects that the nodes of a document belong to, and creates new ones.
class Identification {
public:
    Identification(Database& database, const std::string& project, std::size_t count, RowSum& sum,
                   StoreReport& report);

    /// Gives every node its object and its key.
    void Run(std::vector<StoredNode>& nodes);

private:
    struct Known {
        std::int64_t object;
        std::string key;
        std::string type;
    };

    std::int64_t FindProject(Database& database, const std::string& name);
    void TakeByKey(StoredNode& stored);
    void TakeByIdentity(StoredNode& stored, const StoredNode& above);
    void Make(StoredNode& stored, const std::string& identifier, std::int64_t occurrence);
    void LinkByGivenKeys(std::vector<StoredNode>& nodes);
    /// Gives the object to the node, if it may have it, and returns whether it may. An object is given once,
    /// a file as often as it occurs.
    bool Take(StoredNode& stored, const Known& known);
    static Known Row(const Statement& statement) {
        return {statement.Number(0), statement.Text(1), statement.Text(2)};
    }

    StoreReport& report_;
    Statement byKey_;
    Statement byIdentity_;
    CheckedInsert insertProject_;
    CheckedInsert insert_;
    Statement retype_;
    /// Whether the database had no object of the project before.
    bool isNewProject_ = false;
    std::int64_t project_;
    std::int64_t nextObject_;
    std::string origin_;
    std::unordered_set<std::int64_t> taken_;
    /// For identifiers that occurred before, which object with the identifier is next.
    std::unordered_map<std::string, std::int64_t> nextOccurrence_;
};

Identification::Identification(Database& database, const std::string& project, std::size_t count, RowSum& sum,
                               StoreReport& report)
    : report_(report),
      byKey_(database, "SELECT number, key, type FROM object WHERE key = ?"),
      byIdentity_(database,
                  "SELECT number, key, type FROM object"
                  " WHERE project = ? AND identifier = ? AND occurrence = ?"),
      insertProject_(database, "project", 2, true, sum),
      insert_(database, "object", 6, true, sum),
      retype_(database, "UPDATE object SET type = ? WHERE number = ?"),
      project_(FindProject(database, project)),
      nextObject_(NextNumber(database, "object", count)) {
    Statement origin(database, "SELECT text FROM origin");
    if (!origin.Begin().Next()) {
        RefuseDamaged("it does not say how its keys end");
    }
    origin_ = origin.Text(0);
}

std::int64_t Identification::FindProject(Database& database, const std::string& name) {
    Statement find(database, "SELECT number FROM project WHERE name = ?");
    if (find.Begin(name).Next()) {
        return find.Number(0);
    }
    find.Reset();
    isNewProject_ = true;
    const std::int64_t number = NextNumber(database, "project", 1);
    insertProject_.Run(number, name);
    return number;
}

void Identification::Run(std::vector<StoredNode>& nodes) {
    // Keys first: an object with a key must not go to a node that has only the same identifier.
    for (StoredNode& stored : nodes) {
        if (!stored.givenKey.empty()) {
            TakeByKey(stored);
        }
    }
    for (StoredNode& stored : nodes) {
        if (stored.object == 0) {
            TakeByIdentity(stored, nodes[stored.above]);
        }
    }
    LinkByGivenKeys(nodes);
}

bool Identification::Take(StoredNode& stored, const Known& known) {
    if (!taken_.insert(known.object).second && !stored.IsFile()) {
        return false;
    }
    stored.object = known.object;
    stored.key = known.key;
    if (stored.type != known.type) {
        retype_.Run(stored.type, known.object);
    }
    return true;
}

void Identification::TakeByKey(StoredNode& stored) {
    if (!byKey_.Begin(stored.givenKey).Next()) {
        return;
    }
    const Known known = Row(byKey_);
    byKey_.Reset();
    StoredNode found;
    found.type = known.type;
    if (stored.IsViewItem() && found.IsMasterAssembly()) {
        stored.shown = known.object;
    } else if (stored.IsViewItem() == found.IsViewItem() && stored.IsFile() == found.IsFile()) {
        Take(stored, known);
    }
}

void Identification::TakeByIdentity(StoredNode& stored, const StoredNode& above) {
    const std::string identifier = IdentifierOf(stored, &stored == &above ? nullptr : &above);
    const auto [next, isFirst] = nextOccurrence_.emplace(identifier, 0);
    std::int64_t& occurrence = next->second;
    if (isFirst && isNewProject_) {
        Make(stored, identifier, occurrence);
        return;
    }
    while (byIdentity_.Begin(project_, identifier, occurrence).Next()) {
        const Known known = Row(byIdentity_);
        if (known.type == stored.type && Take(stored, known)) {
            byIdentity_.Reset();
            return;
        }
        ++occurrence;
    }
    byIdentity_.Reset();
    Make(stored, identifier, occurrence);
}

void Identification::Make(StoredNode& stored, const std::string& identifier, std::int64_t occurrence) {
    stored.object = nextObject_++;
    stored.key = MakeKey(stored.type, stored.object, origin_);
    insert_.Run(stored.object, stored.key, stored.type, project_, identifier, occurrence);
    taken_.insert(stored.object);
    ++report_.newKeys;
}

void Identification::LinkByGivenKeys(std::vector<StoredNode>& nodes) {
    // Keys of another server connect view items with their assemblies in the document.
    std::unordered_map<std::string, std::int64_t> assemblies;
    for (const StoredNode& stored : nodes) {
        if (stored.IsMasterAssembly() && !stored.givenKey.empty() && stored.givenKey != stored.key) {
            assemblies.emplace(stored.givenKey, stored.object);
        }
    }
    for (StoredNode& stored : nodes) {
        const auto found =
            stored.IsViewItem() && !stored.shown ? assemblies.find(stored.givenKey) : assemblies.end();
        if (found != assemblies.end()) {
            stored.shown = found->second;
        }
    }
}

}  // namespace

void IdentifyNodes(Database& database, const std::string& project, std::vector<StoredNode>& nodes,
                   RowSum& sum, StoreReport& report) {
    Identification(database, project, nodes.size(), sum, report).Run(nodes);
}

}  // namespace host
