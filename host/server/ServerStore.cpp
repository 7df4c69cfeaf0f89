#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "ServerDocument.h"
#include "ServerState.h"
#include "host/document/DocumentNode.h"

namespace host {
namespace {

/// Finds out which objects the nodes of a document are, and makes the new ones.
class Identification {
public:
    Identification(Database& database, const std::string& project, StoreReport& report);

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
    /// Whether the node may be the object, and takes it if so: objects are taken once, files as often as they
    /// come.
    bool Take(StoredNode& stored, const Known& known);
    static Known Row(const Statement& statement) {
        return {statement.Number(0), statement.Text(1), statement.Text(2)};
    }

    StoreReport& report_;
    Statement byKey_;
    Statement byIdentity_;
    Statement insert_;
    Statement retype_;
    std::int64_t project_;
    std::int64_t nextObject_ = 1;
    std::string origin_;
    std::unordered_set<std::int64_t> taken_;
    /// Of identifiers that came before, the occurrence that is looked at next.
    std::unordered_map<std::string, std::int64_t> nextOccurrence_;
};

Identification::Identification(Database& database, const std::string& project, StoreReport& report)
    : report_(report),
      byKey_(database, "SELECT number, key, type FROM object WHERE key = ?"),
      byIdentity_(database,
                  "SELECT number, key, type FROM object"
                  " WHERE project = ? AND identifier = ? AND occurrence = ?"),
      insert_(database, "INSERT INTO object VALUES (?, ?, ?, ?, ?, ?)"),
      retype_(database, "UPDATE object SET type = ? WHERE number = ?"),
      project_(FindProject(database, project)) {
    Statement next(database, "SELECT coalesce(max(number), 0) + 1, (SELECT text FROM origin) FROM object");
    next.Begin().Next();
    nextObject_ = next.Number(0);
    origin_ = next.Text(1);
}

std::int64_t Identification::FindProject(Database& database, const std::string& name) {
    Statement(database, "INSERT OR IGNORE INTO project (name) VALUES (?)").Run(name);
    Statement find(database, "SELECT number FROM project WHERE name = ?");
    find.Begin(name).Next();
    return find.Number(0);
}

void Identification::Run(std::vector<StoredNode>& nodes) {
    // Keys first: an object that bears its own must not go to one that has only the same identifier.
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
    const bool isRoot = &stored == &above;
    const std::string identifier = stored.identifier ? "id " + *stored.identifier
                                   : isRoot
                                       ? "root"
                                       : "place " + std::to_string(above.object) +
                                             (stored.section == Section::Files ? "/files/" : "/children/") +
                                             std::to_string(stored.position);
    std::int64_t& occurrence = nextOccurrence_[identifier];
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
    // Keys of another server tie view items to their assemblies within the document.
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

/// Puts the nodes of a document in place of what the database has of their objects.
class Placement {
public:
    explicit Placement(Database& database) : database_(database) {}

    void Run(std::vector<StoredNode>& nodes, StoreReport& report, Console& console);

private:
    struct PlaceOfRoot {
        std::optional<std::int64_t> above;
        std::int64_t section = 0;
        std::int64_t position = 0;
    };

    void ListStored(const std::vector<StoredNode>& nodes);
    PlaceOfRoot FindRoot(const StoredNode& root);
    std::size_t RemoveOld();
    void UpdateFilesElsewhere(const std::vector<StoredNode>& nodes);

    Database& database_;
};

void Placement::ListStored(const std::vector<StoredNode>& nodes) {
    database_.Run(
        "CREATE TEMP TABLE IF NOT EXISTS stored (object INTEGER PRIMARY KEY, is_file INTEGER NOT NULL);"
        "CREATE TEMP TABLE IF NOT EXISTS stored_node (number INTEGER PRIMARY KEY);"
        "DELETE FROM temp.stored; DELETE FROM temp.stored_node");
    Statement insert(database_, "INSERT OR IGNORE INTO temp.stored VALUES (?, ?)");
    for (const StoredNode& stored : nodes) {
        insert.Run(stored.object, stored.IsFile());
    }
    database_.Run(
        "INSERT INTO temp.stored_node SELECT number FROM node WHERE object IN (SELECT object FROM "
        "temp.stored)");
}

Placement::PlaceOfRoot Placement::FindRoot(const StoredNode& root) {
    Statement find(database_,
                   "SELECT above, section, position FROM node WHERE object = ? AND above IS NOT NULL"
                   " AND above NOT IN (SELECT number FROM temp.stored_node) ORDER BY number");
    PlaceOfRoot place;
    if (find.Begin(root.object).Next()) {
        place = {find.Number(0), find.Number(1), find.Number(2)};
    }
    return place;
}

std::size_t Placement::RemoveOld() {
    Statement part(database_,
                   "UPDATE node SET above = NULL WHERE above IN (SELECT number FROM temp.stored_node)"
                   " AND object NOT IN (SELECT object FROM temp.stored)");
    part.Run();
    Statement changes(database_, "SELECT changes()");
    changes.Begin().Next();
    const std::int64_t parted = changes.Number(0);
    changes.Reset();
    // A file stays with the objects that the document does not tell about.
    Statement remove(database_,
                     "DELETE FROM node WHERE number IN (SELECT number FROM temp.stored_node)"
                     " AND (above IS NULL OR above IN (SELECT number FROM temp.stored_node)"
                     " OR object IN (SELECT object FROM temp.stored WHERE NOT is_file))");
    remove.Run();
    return static_cast<std::size_t>(parted);
}

/// The files that stay with other objects get the members that the document tells.
void Placement::UpdateFilesElsewhere(const std::vector<StoredNode>& nodes) {
    Statement count(database_,
                    "SELECT count(*) FROM node WHERE number IN (SELECT number FROM temp.stored_node)");
    if (count.Begin().Next() && count.Number(0) == 0) {
        return;
    }
    count.Reset();
    Statement update(database_, "UPDATE node SET members = ? WHERE object = ? AND section = ?");
    for (std::size_t index = 1; index < nodes.size(); ++index) {
        if (nodes[index].IsFile()) {
            update.Run(KeptMembers(nodes[index], false), nodes[index].object,
                       static_cast<int>(nodes[index].section));
        }
    }
}

void Placement::Run(std::vector<StoredNode>& nodes, StoreReport& report, Console& console) {
    ListStored(nodes);
    const PlaceOfRoot root = FindRoot(nodes.front());
    report.parted = RemoveOld();
    Statement next(database_, "SELECT coalesce(max(number), 0) + 1 FROM node");
    next.Begin().Next();
    std::int64_t number = next.Number(0);
    next.Reset();
    UpdateFilesElsewhere(nodes);
    Statement insert(database_, "INSERT INTO node VALUES (?, ?, ?, ?, ?, ?, ?)");
    for (std::size_t index = 0; index < nodes.size(); ++index) {
        StoredNode& stored = nodes[index];
        const bool isRoot = index == 0;
        const std::string members = KeptMembers(stored, isRoot);
        const auto section = static_cast<int>(stored.section);
        stored.number = number++;
        insert.Run(stored.number, stored.object, isRoot ? root.above : nodes[stored.above].number,
                   isRoot ? root.section : section, isRoot ? root.position : stored.position, stored.shown,
                   members);
        console.ShowProgress("Storing the document", index, nodes.size());
    }
}

}  // namespace

JSONNode Server::Store(const JSONNode& document, const std::string& project, StoreReport& report,
                       Console& console) {
    return AsServer([&] {
        JSONNode taken = document;
        RemoveNullKeys(taken, report.notes);
        std::vector<StoredNode> nodes = ListNodes(taken, report.notes);
        Database& database = state_->database;
        Transaction transaction(database);
        state_->leftover.isOurs = true;
        Statement tables(database, "SELECT count(*) FROM sqlite_schema WHERE name = 'object'");
        tables.Begin().Next();
        const bool isNew = tables.Number(0) == 0;
        tables.Reset();
        if (isNew) {
            CreateServerTables(database);
        }
        {
            Identification(database, project, report).Run(nodes);
            Placement(database).Run(nodes, report, console);
        }
        transaction.Commit();
        for (const StoredNode& stored : nodes) {
            ++(stored.IsFile() ? report.files : report.objects);
        }
        console.ClearProgress();
        return MakeAnswer(nodes);
    });
}

}  // namespace host
