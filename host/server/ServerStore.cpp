#include "ServerStore.h"

#include <cstdint>
#include <optional>
#include <vector>

#include "ServerCarryOver.h"
#include "ServerDocument.h"
#include "ServerIdentities.h"
#include "ServerTables.h"
#include "host/document/DocumentNode.h"
#include "host/system/CheckedInsert.h"

namespace host {
namespace {

/// Replaces what the database has for the objects of a document by the nodes of the document.
class Placement {
public:
    Placement(Database& database, RowSum& sum) : database_(database), sum_(sum) {}

    /// Takes the old nodes out, and puts the new ones in.
    void Replace(std::vector<StoredNode>& nodes, StoreReport& report, Console& console);
    /// The same in a database that has no nodes yet.
    void Fill(std::vector<StoredNode>& nodes, Console& console) { Insert(nodes, {}, console); }

private:
    /// Where a node is.
    struct Place {
        std::optional<std::int64_t> above;
        std::int64_t section = 0;
        std::int64_t position = 0;
        std::optional<std::int64_t> owner;
        std::int64_t ordinal = 0;
    };

    void ListStored(const std::vector<StoredNode>& nodes);
    void UpdateProjects(const StoredNode& root);
    Place FindRoot(const StoredNode& root);
    std::size_t RemoveOld();
    void UpdateFile(StoredNode& root, const Place& place);
    void UpdateFilesElsewhere(const std::vector<StoredNode>& nodes);
    void Insert(std::vector<StoredNode>& nodes, const Place& root, Console& console);

    Database& database_;
    RowSum& sum_;
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

/// What was stored alone before, and is a part of this project now, is of this project.
void Placement::UpdateProjects(const StoredNode& root) {
    Statement update(database_,
                     "UPDATE object SET project = (SELECT project FROM object WHERE number = ?1)"
                     " WHERE number IN (SELECT object FROM temp.stored)"
                     " AND project <> (SELECT project FROM object WHERE number = ?1)");
    update.Run(root.object);
}

/// The place that the root has below an object that is not in the document, or had when it was detached.
Placement::Place Placement::FindRoot(const StoredNode& root) {
    Statement find(database_,
                   "SELECT above, section, position, owner, ordinal FROM node WHERE object = ?"
                   " AND (above IS NULL OR above NOT IN (SELECT number FROM temp.stored_node))"
                   " ORDER BY above IS NULL, above, section, position, number DESC");
    Place place;
    if (find.Begin(root.object).Next()) {
        place = {OptionalNumber(find, 0), find.Number(1), find.Number(2), OptionalNumber(find, 3),
                 find.Number(4)};
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
    const std::int64_t detached = changes.Number(0);
    changes.Reset();
    // A file stays attached to objects that the document does not have.
    Statement remove(database_,
                     "DELETE FROM node WHERE number IN (SELECT number FROM temp.stored_node)"
                     " AND (above IS NULL OR above IN (SELECT number FROM temp.stored_node)"
                     " OR object IN (SELECT object FROM temp.stored WHERE NOT is_file))");
    remove.Run();
    return static_cast<std::size_t>(detached);
}

/// Files that stay attached to other objects get the members from the document.
void Placement::UpdateFilesElsewhere(const std::vector<StoredNode>& nodes) {
    Statement count(database_,
                    "SELECT count(*) FROM node WHERE number IN (SELECT number FROM temp.stored_node)");
    if (count.Begin().Next() && count.Number(0) == 0) {
        return;
    }
    count.Reset();
    Statement update(database_,
                     "UPDATE node SET members = ?, name = ?, file_type = ? WHERE object = ? AND section = ?");
    for (std::size_t index = 1; index < nodes.size(); ++index) {
        if (nodes[index].IsFile()) {
            const NodeName name = nodes[index].Name();
            update.Run(KeptMembers(nodes[index], false), name.name, name.fileType, nodes[index].object,
                       NumberOfSection(nodes[index].place));
        }
    }
}

/// A file that is stored alone stays attached where it is. Its document does not have the members of a file
/// record, so its records keep them.
void Placement::UpdateFile(StoredNode& root, const Place& place) {
    Statement update(database_,
                     "UPDATE node SET members = ?, name = ?, file_type = ? WHERE object = ? AND section = ?");
    const auto updateAll = [&](const StoredNode& file, NodePlace section) {
        const NodeName name = file.Name();
        update.Run(KeptMembers(file, true), name.name, name.fileType, file.object, NumberOfSection(section));
    };
    updateAll(root, NodePlace::Child);
    Statement find(database_, "SELECT members FROM node WHERE object = ? AND section = ? ORDER BY number");
    if (find.Begin(root.object, NumberOfSection(NodePlace::FileRecord)).Next()) {
        StoredNode record = root;
        AddMissingMembers(record.node, find.Text(0));
        find.Reset();
        updateAll(record, NodePlace::FileRecord);
        if (PlaceOfSection(place.section) == NodePlace::FileRecord) {
            root.node = record.node;
        }
    }
    // The new node of the root takes the place of this one.
    Statement(database_, "DELETE FROM node WHERE object = ? AND above IS ? AND section = ? AND position = ?")
        .Run(root.object, place.above, place.section, place.position);
}

void Placement::Replace(std::vector<StoredNode>& nodes, StoreReport& report, Console& console) {
    ListStored(nodes);
    UpdateProjects(nodes.front());
    const Place root = FindRoot(nodes.front());
    report.detached = RemoveOld();
    UpdateFilesElsewhere(nodes);
    if (nodes.front().IsFile()) {
        UpdateFile(nodes.front(), root);
    }
    Insert(nodes, root, console);
}

void Placement::Insert(std::vector<StoredNode>& nodes, const Place& root, Console& console) {
    std::int64_t number = NextNumber(database_, "node", nodes.size());
    CheckedInsert insert(database_, "node", 11, true, sum_);
    for (std::size_t index = 0; index < nodes.size(); ++index) {
        StoredNode& stored = nodes[index];
        const StoredNode& above = nodes[stored.above];
        const bool isRoot = index == 0;
        const Place place = isRoot ? root
                                   : Place{above.number, NumberOfSection(stored.place), stored.position,
                                           above.object, stored.ordinal};
        const NodeName name = stored.Name();
        const std::string members = KeptMembers(stored, isRoot);
        stored.number = number++;
        insert.Run(stored.number, stored.object, place.above, place.section, place.position, stored.shown,
                   place.owner, name.name, name.fileType, place.ordinal, members);
        console.ShowProgress("Storing the document", index, nodes.size());
    }
}

}  // namespace

JSONNode StoreDocument(Database& database, const JSONNode& document, const StoreRequest& request,
                       StoreReport& report, Console& console) {
    JSONNode taken = document;
    RemoveNullKeys(taken, report.notes);
    std::vector<StoredNode> nodes = ListNodes(taken, report.notes);
    // In a new database the sum has every row.
    RowSum sum;
    if (HasTables(database)) {
        console.ShowProgress("Checking the database", 0, 0);
        CheckServerTables(database, CheckDepth::ForChanging);
        report.isCarriedOver = HasOlderTables(database);
        if (report.isCarriedOver) {
            CarryOver(database);
        }
        IdentifyNodes(database, request, nodes, sum, report);
        Placement(database, sum).Replace(nodes, report, console);
        WriteChecksum(database, kServerKind);
    } else {
        CreateServerTables(database, sum);
        IdentifyNodes(database, request, nodes, sum, report);
        Placement(database, sum).Fill(nodes, console);
        CreateServerIndexes(database);
        WriteChecksum(database, kServerKind, static_cast<std::int64_t>(sum.Value()));
    }
    for (std::size_t index = 0; index < nodes.size(); ++index) {
        if (!nodes[index].IsFile()) {
            ++report.objects;
        } else if (nodes[index].first == index) {
            ++report.files;
        }
    }
    console.ClearProgress();
    return MakeAnswer(nodes);
}

}  // namespace host
